#include "designer/model/design_records.h"

#include <array>
#include <utility>

#include "designer/model/stored_numbers.h"

namespace bw {
namespace {

using Kind = ChunkFault::Kind;

constexpr size_t kTextAt = 12;  // behind X, Y and the length
constexpr std::array<uint8_t, 8> kPadding{};

ChunkFault FaultOf(const ChunkView& chunk, Kind kind, uint64_t found, uint64_t expected) {
    return {.kind = kind,
            .offset = chunk.offset,
            .type = chunk.type,
            .found = found,
            .expected = expected};
}

std::optional<ChunkFault> CheckLength(const ChunkView& chunk, uint64_t length) {
    if (length > kLongestStoredText) {
        return FaultOf(chunk, Kind::kTextTooLong, length, kLongestStoredText);
    }
    if (length % 2 != 0) return FaultOf(chunk, Kind::kTextOdd, length, 0);
    return std::nullopt;
}

std::u16string Units(std::span<const uint8_t> bytes) {
    std::u16string text;
    text.reserve(bytes.size() / 2);
    for (size_t at = 0; at + 1 < bytes.size(); at += 2) {
        text += static_cast<char16_t>(bytes[at] | bytes[at + 1] << 8);
    }
    return text;
}

}  // namespace

TileItem ReadTileItem(std::span<const uint8_t, TileItem::kStoredSize> record) {
    return {.Index = Read32(record, 0),
            .X = static_cast<int32_t>(Read32(record, 4)),
            .Y = static_cast<int32_t>(Read32(record, 8)),
            .Selected = Read32(record, 12),
            .Tile = record[16],
            .Palette = record[17],
            .Flags = record[18],
            .Reserved = record[19]};
}

std::vector<uint8_t> StoredTile(const TileItem& item) {
    std::vector<uint8_t> bytes(TileItem::kStoredSize);
    Write32(bytes, 0, item.Index);
    Write32(bytes, 4, static_cast<uint32_t>(item.X));
    Write32(bytes, 8, static_cast<uint32_t>(item.Y));
    Write32(bytes, 12, item.Selected);
    bytes[16] = item.Tile;
    bytes[17] = item.Palette;
    bytes[18] = item.Flags;
    bytes[19] = item.Reserved;
    return bytes;
}

Pos ReadStoredPos(std::span<const uint8_t, Pos::kStoredSize> record) {
    return {.X = static_cast<int32_t>(Read32(record, 0)),
            .Y = static_cast<int32_t>(Read32(record, 4))};
}

std::vector<uint8_t> StoredPos(const Pos& place) {
    std::vector<uint8_t> bytes(Pos::kStoredSize);
    Write32(bytes, 0, static_cast<uint32_t>(place.X));
    Write32(bytes, 4, static_cast<uint32_t>(place.Y));
    return bytes;
}

std::vector<TileItem> ReadTileItems(std::span<const uint8_t> records) {
    std::vector<TileItem> items;
    items.reserve(records.size() / TileItem::kStoredSize);
    for (; records.size() >= TileItem::kStoredSize;
         records = records.subspan(TileItem::kStoredSize)) {
        items.push_back(ReadTileItem(records.first<TileItem::kStoredSize>()));
    }
    return items;
}

std::optional<ChunkFault> ReadTextItem(const ChunkView& chunk, TextItem& item) {
    const std::span<const uint8_t> payload = chunk.payload;
    if (payload.size() < kTextAt) return FaultOf(chunk, Kind::kTextCut, payload.size(), kTextAt);
    const uint32_t length = Read32(payload, 8);
    if (auto fault = CheckLength(chunk, length)) return fault;
    if (length > payload.size() - kTextAt) {
        return FaultOf(chunk, Kind::kTextOutside, length, payload.size() - kTextAt);
    }
    item.X = static_cast<int32_t>(Read32(payload, 0));
    item.Y = static_cast<int32_t>(Read32(payload, 4));
    item.Text = Units(payload.subspan(kTextAt, length));
    return std::nullopt;
}

std::vector<uint8_t> StoredTextItem(const TextItem& item) {
    std::vector<uint8_t> bytes;
    const std::vector<uint8_t> text = StoredText(item.Text);
    Append32(bytes, static_cast<uint32_t>(item.X));
    Append32(bytes, static_cast<uint32_t>(item.Y));
    Append32(bytes, static_cast<uint32_t>(text.size()));
    bytes.insert(bytes.end(), text.begin(), text.end());
    bytes.insert(bytes.end(), kPadding.begin(), kPadding.end());
    return bytes;
}

std::optional<ChunkFault> ReadText(const ChunkView& chunk, std::u16string& text) {
    if (auto fault = CheckLength(chunk, chunk.payload.size())) return fault;
    text = Units(chunk.payload);
    return std::nullopt;
}

std::vector<uint8_t> StoredText(std::u16string_view text) {
    std::vector<uint8_t> bytes;
    for (const char16_t unit : text.substr(0, kLongestStoredText / 2)) {
        bytes.push_back(static_cast<uint8_t>(unit));
        bytes.push_back(static_cast<uint8_t>(unit >> 8));
    }
    return bytes;
}

std::vector<TextItem> ReadTextItems(std::span<const uint8_t> records) {
    std::vector<TextItem> items;
    for (const ChunkView& chunk : ReadChunks(records).chunks) {
        if (chunk.type != kTextRecord) continue;
        TextItem item;
        if (ReadTextItem(chunk, item)) break;
        item.Index = static_cast<uint32_t>(items.size());
        items.push_back(std::move(item));
    }
    return items;
}

}  // namespace bw
