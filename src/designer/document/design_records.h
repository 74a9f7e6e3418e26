// The design's lists as they are stored: sequences of records, little-endian, without a count.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "designer/document/design_store.h"

namespace bw {

TileItem ReadTileItem(std::span<const uint8_t, TileItem::kStoredSize> record);

// All whole records; a rest too short for one is ignored.
std::vector<TileItem> ReadTileItems(std::span<const uint8_t> records);

// Records of a 16-byte header (type 6, reserved, version, size; 32 bits each) and `size` bytes: X,
// Y, the text's length in bytes (32 bits each), its UTF-16 units, and padding. Records of another
// type are passed over. Reading ends in front of a damaged record: one that leaves the data, or
// whose text leaves the record, is longer than 520 bytes or ends in half a unit. Index counts from
// 0.
std::vector<TextItem> ReadTextItems(std::span<const uint8_t> records);

}  // namespace bw
