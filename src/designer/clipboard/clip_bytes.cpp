#include "designer/clipboard/clip_bytes.h"

#include <algorithm>

#include "designer/model/design_chunks.h"
#include "designer/model/design_records.h"
#include "designer/tools/list_tools.h"

namespace bw {
namespace {

// Items have the chunks that they have in a design.
constexpr uint32_t kClipMark = 0x50494C43;  // "CLIP": the first chunk, empty
constexpr uint32_t kClipVersion = 1;        // of that chunk
constexpr uint32_t kBkgPixels = 40;
constexpr uint32_t kSpritePixels = 41;
constexpr auto kItem = static_cast<uint32_t>(ChunkType::kBkgTile);
constexpr auto kSprite = static_cast<uint32_t>(ChunkType::kSpriteTile);
constexpr size_t kPixelsSize = 1 + kTileBytes;  // the number in front
constexpr size_t kMostItems = size_t{kScreenColumns} * kScreenRows;
constexpr size_t kLargestClip =
    kChunkHeaderSize + 2 * kTileCount * (kChunkHeaderSize + kPixelsSize) +
    (kMostItems + kMostSprites) * (kChunkHeaderSize + TileItem::kStoredSize);

void AppendTiles(std::vector<uint8_t>& bytes, uint32_t type, const ClipTiles& tiles) {
    for (const auto& [number, pixels] : tiles) {
        std::vector<uint8_t> payload{number};
        payload.insert(payload.end(), pixels.begin(), pixels.end());
        AppendChunk(bytes, type, payload);
    }
}

void AppendItems(std::vector<uint8_t>& bytes, uint32_t type, const std::vector<TileItem>& items) {
    for (const TileItem& item : items)
        AppendChunk(bytes, type, StoredTile(item));
}

bool ReadTile(const ChunkView& chunk, ClipTiles& tiles) {
    if (chunk.payload.size() != kPixelsSize) return false;
    std::ranges::copy(chunk.payload.subspan(1), tiles[chunk.payload[0]].begin());
    return true;
}

bool ReadItem(const ChunkView& chunk, std::vector<TileItem>& items) {
    if (chunk.payload.size() != TileItem::kStoredSize) return false;
    items.push_back(ReadTileItem(chunk.payload.first<TileItem::kStoredSize>()));
    return true;
}

// False where it doesn't fit its field; what is of another type is passed over.
bool ReadChunk(const ChunkView& chunk, DesignClip& clip) {
    switch (chunk.type) {
        case kBkgPixels:
            return ReadTile(chunk, clip.bkgTiles);
        case kSpritePixels:
            return ReadTile(chunk, clip.spriteTiles);
        case kItem:
            return ReadItem(chunk, clip.items);
        case kSprite:
            return ReadItem(chunk, clip.sprites);
        default:
            return true;
    }
}

}  // namespace

std::vector<uint8_t> StoredClip(const DesignClip& clip) {
    std::vector<uint8_t> bytes;
    AppendChunk(bytes, kClipMark, {}, 0, kClipVersion);
    AppendTiles(bytes, kBkgPixels, clip.bkgTiles);
    AppendTiles(bytes, kSpritePixels, clip.spriteTiles);
    AppendItems(bytes, kItem, clip.items);
    AppendItems(bytes, kSprite, clip.sprites);
    return bytes;
}

std::optional<DesignClip> ReadClip(std::span<const uint8_t> bytes) {
    if (bytes.size() > kLargestClip) return std::nullopt;
    const ChunkList list = ReadChunks(bytes);
    if (list.fault || list.chunks.empty()) return std::nullopt;
    const ChunkView& mark = list.chunks.front();
    if (mark.type != kClipMark || mark.version != kClipVersion) return std::nullopt;
    DesignClip clip;
    for (const ChunkView& chunk : list.chunks)
        if (!ReadChunk(chunk, clip)) return std::nullopt;
    KeepRules(clip);
    return clip;
}

}  // namespace bw
