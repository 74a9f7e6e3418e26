// The chunks that a design is stored in, one for each table, position, switch and list item. Design
// files, the smaller files of texts and the work state are all sequences of them.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "designer/model/chunk_file.h"
#include "designer/model/design_document.h"

namespace bw {

enum class ChunkType : uint32_t {
    kAttributes = 1,
    kBkgPalette = 2,
    kSpritePalette = 3,
    kChrData = 4,
    kCustomText = 6,  // one text
    kCaptionText = 8,
    kCaptionPos = 9,
    kPageNumberPos = 10,
    kItemPos = 11,
    kBkgTile = 12,     // one item
    kSpriteTile = 13,  // one item
    kArrowTile = 14,
    kArrowTileItem = 15,  // one item of ArrowTileList
    kCharMapData = 27,
    kBigCursor = 28,
    kBigSprite = 29,
};

// Whether a whole design has chunks of this type.
bool IsDesignChunk(uint32_t type);

// Whether an undamaged file has a chunk of this type.
bool HoldsChunk(std::span<const uint8_t> bytes, ChunkType type);

// Puts the payload where its type says: items go to the end of their list, with an Index that
// counts from 0 in CustomText, BkgTileList and SpriteTileList; a payload shorter than its field
// fills only its own length. Chunks of other types change nothing, and neither do character maps
// and switches that are larger than their field. Any other payload that doesn't fit is a fault, and
// the document stays as it was.
std::optional<ChunkFault> ApplyChunk(const ChunkView& chunk, DesignDocument& document);

// Each appends the chunk, or a chunk for each item, that holds this part of the document.
void AppendDesignChunk(std::vector<uint8_t>& bytes, ChunkType type, const DesignDocument& document);

}  // namespace bw
