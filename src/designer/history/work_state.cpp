#include "designer/history/work_state.h"

#include <algorithm>
#include <array>

#include "designer/model/design_chunks.h"
#include "designer/model/design_records.h"
#include "designer/model/stored_numbers.h"

namespace bw {
namespace {

constexpr uint32_t kContainerReserved = 2;
constexpr auto kCaption = static_cast<uint32_t>(ChunkType::kCaptionText);

// The current places by their chunk types, in the order of writing.
struct PlaceChunk {
    uint32_t type;
    Pos WorkingCopy::*place;
};
constexpr std::array<PlaceChunk, 10> kPlaces = {{
    {17, &WorkingCopy::AttrBytePos},
    {18, &WorkingCopy::AttrCellPos},
    {19, &WorkingCopy::AttrQuadrantPos},
    {20, &WorkingCopy::BkgTilePos},
    {21, &WorkingCopy::BkgPixelPos},
    {22, &WorkingCopy::BkgPalettePos},
    {23, &WorkingCopy::SpTilePos},
    {24, &WorkingCopy::SpPixelPos},
    {25, &WorkingCopy::SpPalettePos},
    {26, &WorkingCopy::SystemPalettePos},
}};
constexpr std::array<PlaceChunk, 3> kMapPlaces = {{
    {30, &WorkingCopy::MapSourcePos},
    {32, &WorkingCopy::NameCellPos},
    {31, &WorkingCopy::MapTargetPos},
}};

void AppendItems(WorkState& state, ChunkType type, const std::vector<TileItem>& items) {
    for (TileItem item : items) {
        item.Index = 0;
        AppendChunk(state, static_cast<uint32_t>(type), StoredTile(item));
    }
}

void AppendPlaces(WorkState& state, std::span<const PlaceChunk> places, const WorkingCopy& copy) {
    for (const PlaceChunk& chunk : places)
        AppendChunk(state, chunk.type, StoredPos(copy.*chunk.place));
}

void ReadPlace(const ChunkView& chunk, std::span<const PlaceChunk> places, WorkingCopy& copy) {
    const auto found = std::ranges::find(places, chunk.type, &PlaceChunk::type);
    if (found == places.end() || chunk.payload.size() < Pos::kStoredSize) return;
    copy.*found->place = ReadStoredPos(chunk.payload.first<Pos::kStoredSize>());
}

void ReadMarks(const ChunkView& chunk, std::array<uint8_t, 256>& marks) {
    std::copy_n(chunk.payload.begin(), std::min(marks.size(), chunk.payload.size()), marks.begin());
}

// The views draw and the tools take tiles at these places, so a foreign state can't move them off
// their fields.
void KeepOnFields(WorkingCopy& copy) {
    const auto keep = [](Pos& place, int32_t columns, int32_t rows) {
        place.X = std::clamp(place.X, 0, columns - 1);
        place.Y = std::clamp(place.Y, 0, rows - 1);
    };
    keep(copy.AttrBytePos, 8, 8);
    // Two rows more than the screen has: placing tiles one after the other leads there.
    keep(copy.AttrCellPos, 16, 16);
    keep(copy.AttrQuadrantPos, 2, 2);
    keep(copy.BkgTilePos, 16, 16);
    keep(copy.SpTilePos, 16, 16);
    keep(copy.BkgPixelPos, 8, 8);
    keep(copy.SpPixelPos, 8, 8);
    keep(copy.BkgPalettePos, 16, 1);
    keep(copy.SpPalettePos, 16, 1);
    keep(copy.SystemPalettePos, 16, 4);
    keep(copy.MapSourcePos, 64, 1);
    keep(copy.MapTargetPos, 64, 1);
    keep(copy.NameCellPos, kScreenColumns, kScreenRows + 2);
}

void EmptyLists(WorkingCopy& copy) {
    DesignStore& store = copy.Store();
    store.CustomText.clear();
    store.BkgTileList.clear();
    store.SpriteTileList.clear();
    store.ArrowTileList.clear();
    CountItems(copy);
}

// False at a chunk that doesn't fit.
bool ReadState(const ChunkList& chunks, WorkingCopy& copy) {
    if (chunks.fault) return false;
    for (const ChunkView& chunk : chunks.chunks) {
        if (ApplyChunk(chunk, copy.document)) return false;
        if (chunk.type == kCaption) copy.captionBox = copy.Store().CaptionText;
        ReadPlace(chunk, kPlaces, copy);
        ReadPlace(chunk, kMapPlaces, copy);
        if (chunk.type == kBkgTileMarks) ReadMarks(chunk, copy.Store().BkgTileSelected);
        if (chunk.type == kSpriteTileMarks) ReadMarks(chunk, copy.Store().SpriteTileSelected);
    }
    return true;
}

}  // namespace

WorkState BuildWorkState(const WorkingCopy& copy) {
    const DesignStore& store = copy.Store();
    constexpr size_t kFixedPart = 10'000;  // tables and places
    WorkState chunks;
    chunks.reserve(kFixedPart + (store.BkgTileList.size() + store.SpriteTileList.size()) *
                                    (kChunkHeaderSize + TileItem::kStoredSize));
    AppendItems(chunks, ChunkType::kBkgTile, store.BkgTileList);
    AppendItems(chunks, ChunkType::kSpriteTile, store.SpriteTileList);
    for (const ChunkType type :
         {ChunkType::kAttributes, ChunkType::kBkgPalette, ChunkType::kSpritePalette,
          ChunkType::kCaptionPos, ChunkType::kCaptionText, ChunkType::kPageNumberPos,
          ChunkType::kItemPos, ChunkType::kArrowTile, ChunkType::kArrowTileItem,
          ChunkType::kChrData, ChunkType::kCustomText}) {
        AppendDesignChunk(chunks, type, copy.document);
    }
    AppendPlaces(chunks, kPlaces, copy);
    for (const ChunkType type :
         {ChunkType::kCharMapData, ChunkType::kBigCursor, ChunkType::kBigSprite}) {
        AppendDesignChunk(chunks, type, copy.document);
    }
    AppendPlaces(chunks, kMapPlaces, copy);
    AppendChunk(chunks, kBkgTileMarks, store.BkgTileSelected);
    AppendChunk(chunks, kSpriteTileMarks, store.SpriteTileSelected);
    WorkState state;
    AppendChunk(state, kStateContainer, chunks, kContainerReserved);
    return state;
}

bool ApplyWorkState(std::span<const uint8_t> state, WorkingCopy& copy) {
    const ChunkList outer = ReadChunks(state);
    if (state.size() < sizeof(uint32_t) || Read32(state, 0) != kStateContainer) {
        EmptyLists(copy);
        return false;
    }
    if (outer.chunks.empty()) return false;
    WorkingCopy changed = copy;
    EmptyLists(changed);
    if (!ReadState(ReadChunks(outer.chunks.front().payload), changed)) return false;
    CountItems(changed);
    KeepOnFields(changed);
    if (changed.Store().ArrowTileList.empty()) RebuildShortLargeCursor(changed.document);
    SynchroniseCursors(changed);
    copy = std::move(changed);
    return true;
}

}  // namespace bw
