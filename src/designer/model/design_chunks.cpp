#include "designer/model/design_chunks.h"

#include <algorithm>
#include <array>
#include <utility>

#include "designer/model/design_records.h"
#include "designer/model/stored_numbers.h"

namespace bw {
namespace {

using Fault = std::optional<ChunkFault>;
using Payload = std::span<const uint8_t>;

Fault CheckSize(const ChunkView& chunk, size_t room) {
    if (chunk.payload.size() <= room) return std::nullopt;
    return ChunkFault{.kind = ChunkFault::Kind::kTooLarge,
                      .offset = chunk.offset,
                      .type = chunk.type,
                      .found = chunk.payload.size(),
                      .expected = room};
}

Fault ReadTable(const ChunkView& chunk, std::span<uint8_t> table) {
    Fault fault = CheckSize(chunk, table.size());
    if (!fault) Overwrite(table, chunk.payload);
    return fault;
}

// Tables and switches that a larger payload leaves alone.
Fault ReadIfItFits(const ChunkView& chunk, std::span<uint8_t> table) {
    if (!CheckSize(chunk, table.size())) Overwrite(table, chunk.payload);
    return std::nullopt;
}

// Places and the small cursor take their first bytes from a larger payload.
Fault ReadPos(const ChunkView& chunk, Pos& place) {
    std::vector<uint8_t> bytes = StoredPos(place);
    Overwrite(bytes, chunk.payload);
    place = ReadStoredPos(std::span(bytes).first<Pos::kStoredSize>());
    return std::nullopt;
}

TileItem Overwritten(const TileItem& item, Payload payload) {
    std::vector<uint8_t> bytes = StoredTile(item);
    Overwrite(bytes, payload);
    return ReadTileItem(std::span(bytes).first<TileItem::kStoredSize>());
}

Fault ReadArrowTile(const ChunkView& chunk, TileItem& item) {
    item = Overwritten(item, chunk.payload);
    return std::nullopt;
}

Fault AddTile(const ChunkView& chunk, std::vector<TileItem>& items, bool renumber) {
    Fault fault = CheckSize(chunk, TileItem::kStoredSize);
    if (fault) return fault;
    TileItem item = Overwritten({}, chunk.payload);
    if (renumber) item.Index = static_cast<uint32_t>(items.size());
    items.push_back(item);
    return std::nullopt;
}

Fault AddText(const ChunkView& chunk, std::vector<TextItem>& items) {
    TextItem item;
    if (Fault fault = ReadTextItem(chunk, item)) return fault;
    item.Index = static_cast<uint32_t>(items.size());
    items.push_back(std::move(item));
    return std::nullopt;
}

}  // namespace

bool IsDesignChunk(uint32_t type) {
    static constexpr std::array<uint32_t, 16> kTypes{1,  2,  3,  4,  6,  8,  9,  10,
                                                     11, 12, 13, 14, 15, 27, 28, 29};
    return std::ranges::find(kTypes, type) != kTypes.end();
}

bool HoldsChunk(std::span<const uint8_t> bytes, ChunkType type) {
    return std::ranges::any_of(ReadChunks(bytes).chunks, [&](const ChunkView& chunk) {
        return chunk.type == static_cast<uint32_t>(type);
    });
}

std::optional<ChunkFault> ApplyChunk(const ChunkView& chunk, DesignDocument& document) {
    DesignStore& store = document.store;
    switch (static_cast<ChunkType>(chunk.type)) {
        case ChunkType::kAttributes:
            return ReadTable(chunk, store.Attributes);
        case ChunkType::kBkgPalette:
            return ReadTable(chunk, store.BkgPalette);
        case ChunkType::kSpritePalette:
            return ReadTable(chunk, store.SpritePalette);
        case ChunkType::kChrData:
            return ReadTable(chunk, store.ChrData);
        case ChunkType::kCustomText:
            return AddText(chunk, store.CustomText);
        case ChunkType::kCaptionText:
            return ReadText(chunk, store.CaptionText);
        case ChunkType::kCaptionPos:
            return ReadPos(chunk, document.CaptionPos);
        case ChunkType::kPageNumberPos:
            return ReadPos(chunk, document.PageNumberPos);
        case ChunkType::kItemPos:
            return ReadPos(chunk, document.ItemPos);
        case ChunkType::kBkgTile:
            return AddTile(chunk, store.BkgTileList, true);
        case ChunkType::kSpriteTile:
            return AddTile(chunk, store.SpriteTileList, true);
        case ChunkType::kArrowTile:
            return ReadArrowTile(chunk, store.ArrowTile);
        case ChunkType::kArrowTileItem:
            return AddTile(chunk, store.ArrowTileList, false);
        case ChunkType::kCharMapData:
            return ReadIfItFits(chunk, store.CharMapData);
        case ChunkType::kBigCursor:
            return ReadIfItFits(chunk, {&document.BigCursor, 1});
        case ChunkType::kBigSprite:
            return ReadIfItFits(chunk, {&store.BigSprite, 1});
    }
    return std::nullopt;
}

void AppendDesignChunk(std::vector<uint8_t>& bytes, ChunkType type,
                       const DesignDocument& document) {
    const DesignStore& store = document.store;
    const auto append = [&](Payload payload) {
        AppendChunk(bytes, static_cast<uint32_t>(type), payload);
    };
    const auto appendTiles = [&](const std::vector<TileItem>& items) {
        for (const TileItem& item : items)
            append(StoredTile(item));
    };
    switch (type) {
        case ChunkType::kAttributes:
            return append(store.Attributes);
        case ChunkType::kBkgPalette:
            return append(store.BkgPalette);
        case ChunkType::kSpritePalette:
            return append(store.SpritePalette);
        case ChunkType::kChrData:
            return append(store.ChrData);
        case ChunkType::kCustomText:
            for (const TextItem& item : store.CustomText)
                append(StoredTextItem(item));
            return;
        case ChunkType::kCaptionText:
            return append(StoredText(store.CaptionText));
        case ChunkType::kCaptionPos:
            return append(StoredPos(document.CaptionPos));
        case ChunkType::kPageNumberPos:
            return append(StoredPos(document.PageNumberPos));
        case ChunkType::kItemPos:
            return append(StoredPos(document.ItemPos));
        case ChunkType::kBkgTile:
            return appendTiles(store.BkgTileList);
        case ChunkType::kSpriteTile:
            return appendTiles(store.SpriteTileList);
        case ChunkType::kArrowTile:
            return append(StoredTile(store.ArrowTile));
        case ChunkType::kArrowTileItem:
            return appendTiles(store.ArrowTileList);
        case ChunkType::kCharMapData:
            return append(store.CharMapData);
        case ChunkType::kBigCursor:
            return append({&document.BigCursor, 1});
        case ChunkType::kBigSprite:
            return append({&store.BigSprite, 1});
    }
}

}  // namespace bw
