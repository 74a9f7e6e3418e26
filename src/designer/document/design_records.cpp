#include "designer/document/design_records.h"

#include <optional>
#include <utility>

namespace bw {
namespace {

constexpr uint32_t kTextRecord = 6;
constexpr size_t kHeaderSize = 16;
constexpr size_t kTypeAt = 0;
constexpr size_t kSizeAt = 12;
constexpr size_t kTextAt = 12;          // behind X, Y and the length
constexpr uint32_t kLongestText = 520;  // bytes

uint32_t Read32(std::span<const uint8_t> bytes, size_t at) {
    return static_cast<uint32_t>(bytes[at]) | static_cast<uint32_t>(bytes[at + 1]) << 8 |
           static_cast<uint32_t>(bytes[at + 2]) << 16 | static_cast<uint32_t>(bytes[at + 3]) << 24;
}

std::optional<TextItem> ReadText(std::span<const uint8_t> payload) {
    if (payload.size() < kTextAt) return std::nullopt;
    const uint32_t length = Read32(payload, 8);
    if (length > kLongestText || length % 2 != 0 || length > payload.size() - kTextAt) {
        return std::nullopt;
    }
    TextItem item;
    item.X = static_cast<int32_t>(Read32(payload, 0));
    item.Y = static_cast<int32_t>(Read32(payload, 4));
    for (size_t at = kTextAt; at < kTextAt + length; at += 2) {
        item.Text += static_cast<char16_t>(payload[at] | payload[at + 1] << 8);
    }
    return item;
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

std::vector<TileItem> ReadTileItems(std::span<const uint8_t> records) {
    std::vector<TileItem> items;
    items.reserve(records.size() / TileItem::kStoredSize);
    for (; records.size() >= TileItem::kStoredSize;
         records = records.subspan(TileItem::kStoredSize)) {
        items.push_back(ReadTileItem(records.first<TileItem::kStoredSize>()));
    }
    return items;
}

std::vector<TextItem> ReadTextItems(std::span<const uint8_t> records) {
    std::vector<TextItem> items;
    while (records.size() >= kHeaderSize) {
        const uint32_t type = Read32(records, kTypeAt);
        const uint32_t size = Read32(records, kSizeAt);
        records = records.subspan(kHeaderSize);
        if (size > records.size()) break;
        if (type == kTextRecord) {
            auto item = ReadText(records.first(size));
            if (!item) break;
            item->Index = static_cast<uint32_t>(items.size());
            items.push_back(std::move(*item));
        }
        records = records.subspan(size);
    }
    return items;
}

}  // namespace bw
