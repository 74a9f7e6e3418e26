// The records that designs are stored in: placed tiles, texts and places, little-endian.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "designer/model/chunk_file.h"
#include "designer/model/design_document.h"

namespace bw {

inline constexpr uint32_t kTextRecord = 6;         // the type of a text's chunk
inline constexpr size_t kLongestStoredText = 520;  // bytes

TileItem ReadTileItem(std::span<const uint8_t, TileItem::kStoredSize> record);
std::vector<uint8_t> StoredTile(const TileItem& item);

Pos ReadStoredPos(std::span<const uint8_t, Pos::kStoredSize> record);
std::vector<uint8_t> StoredPos(const Pos& place);

// All whole records; a rest too short for one is ignored.
std::vector<TileItem> ReadTileItems(std::span<const uint8_t> records);

// A placed text: X, Y, the text's length in bytes (32 bits each), its UTF-16 units, and padding.
// What is wrong is told as a fault of that chunk; `item` then stays as it was. Index isn't stored.
std::optional<ChunkFault> ReadTextItem(const ChunkView& chunk, TextItem& item);
// With the padding of 8 zeros that is written.
std::vector<uint8_t> StoredTextItem(const TextItem& item);

// A text alone: UTF-16 units up to the payload's end.
std::optional<ChunkFault> ReadText(const ChunkView& chunk, std::u16string& text);
// What is longer than a reader takes is cut away, since it would make the whole file unreadable.
std::vector<uint8_t> StoredText(std::u16string_view text);

// Chunks of kTextRecord; those of another type are passed over. Reading ends in front of a damaged
// one. Index counts from 0.
std::vector<TextItem> ReadTextItems(std::span<const uint8_t> records);

}  // namespace bw
