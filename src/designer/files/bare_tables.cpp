#include "designer/files/bare_tables.h"

#include <algorithm>

#include "designer/model/attribute_table.h"
#include "designer/model/stored_numbers.h"
#include "designer/model/tiles.h"

namespace bw {
namespace {

constexpr size_t kSpriteRecord = 4;
constexpr size_t kMostSpritesRead = 255;
constexpr uint8_t kNoSprite = 0xF8;
constexpr uint8_t kUsedAttributeBits = 0xE3;
constexpr size_t kColumns = kScreenColumns;

std::span<uint8_t> TableOf(DesignStore& store, PatternTable table) {
    return std::span(store.ChrData)
        .subspan(table == PatternTable::kBackground ? 0 : kPatternTableSize, kPatternTableSize);
}

bool IsOnScreen(const TileItem& item) {
    return item.X >= 0 && item.X < kScreenColumns && item.Y >= 0 && item.Y < kScreenRows;
}

// Writes a text into its row. What leaves the row at either side is cut, and so are characters
// that the map has no entry for.
void PutText(std::u16string_view text, Pos place, const DesignStore& store,
             std::vector<uint8_t>& cells) {
    if (place.Y < 0 || place.Y >= kScreenRows) return;
    for (size_t i = 0; i < text.size(); ++i) {
        const int64_t column = int64_t{place.X} + static_cast<int64_t>(i);
        if (column < 0 || column >= kScreenColumns || text[i] >= kCharMapSize) continue;
        cells[static_cast<size_t>(place.Y) * kColumns + static_cast<size_t>(column)] =
            store.CharMapData[text[i]];
    }
}

void PutTexts(const WorkingCopy& copy, std::vector<uint8_t>& cells) {
    const DesignStore& store = copy.Store();
    if (copy.Show_List) {
        int64_t row = copy.document.ItemPos.Y;
        for (const std::u16string& line : copy.ItemTextList) {
            if (row >= kScreenRows) break;
            PutText(line, {copy.document.ItemPos.X, static_cast<int32_t>(row)}, store, cells);
            ++row;
        }
    }
    if (copy.Show_Custom_Text) {
        for (const TextItem& item : store.CustomText) {
            // A text below the screen also hides those behind it in the list; so it always was.
            if (item.Y >= kScreenRows) break;
            PutText(item.Text, {item.X, item.Y}, store, cells);
        }
    }
    if (copy.Show_Caption) PutText(store.CaptionText, copy.document.CaptionPos, store, cells);
}

TileItem SpriteOf(std::span<const uint8_t> record, uint32_t index) {
    const uint8_t attribute = record[2];
    const auto flag = [&](uint8_t bit, uint8_t name) {
        return (attribute & bit) != 0 ? name : uint8_t{0};
    };
    TileItem item{.Index = index, .X = record[3], .Y = record[0], .Tile = record[1]};
    item.Palette = attribute & 3;
    item.Flags = static_cast<uint8_t>(flag(0x80, TileItem::kFlipVertically) |
                                      flag(0x40, TileItem::kFlipHorizontally) |
                                      flag(0x20, TileItem::kBehindBackground));
    return item;
}

}  // namespace

void ReadTiles(std::span<const uint8_t> bytes, PatternTable table, size_t first,
               DesignStore& store) {
    Overwrite(TableOf(store, table).subspan(first * kTileBytes), bytes);
}

std::vector<uint8_t> StoredTiles(PatternTable table, bool marked, const DesignStore& store) {
    const std::array<uint8_t, 256>& marks = TileMarks(store, table);
    const bool all = !marked || std::ranges::count(marks, 0) == kTileCount;
    std::vector<uint8_t> bytes;
    for (int number = 0; number < kTileCount; ++number) {
        if (!all && marks[static_cast<size_t>(number)] == 0) continue;
        const ConstTile tile = TileAt(store, table, number);
        bytes.insert(bytes.end(), tile.begin(), tile.end());
    }
    return bytes;
}

void ReadNameTable(std::span<const uint8_t> bytes, WorkingCopy& copy) {
    for (size_t cell = 0; cell < std::min(bytes.size(), kNameTableSize); ++cell) {
        if (bytes[cell] == 0) continue;
        copy.Store().BkgTileList.push_back({.Index = copy.nextBkgIndex++,
                                            .X = static_cast<int32_t>(cell % kColumns),
                                            .Y = static_cast<int32_t>(cell / kColumns),
                                            .Tile = bytes[cell]});
    }
}

std::vector<uint8_t> StoredNameTable(bool selected, const WorkingCopy& copy) {
    const std::vector<TileItem>& items = copy.Store().BkgTileList;
    const bool some = selected && std::ranges::any_of(items, &TileItem::IsSelected);
    std::vector<uint8_t> cells(kNameTableSize);
    for (const TileItem& item : items) {
        if (!IsOnScreen(item) || (some && !item.IsSelected())) continue;
        cells[static_cast<size_t>(item.Y) * kColumns + static_cast<size_t>(item.X)] = item.Tile;
    }
    PutTexts(copy, cells);
    return cells;
}

std::vector<uint8_t> StoredMmc5Attributes(const DesignStore& store) {
    constexpr int kRows = 32;
    std::vector<uint8_t> bytes;
    for (int row = 0; row < kRows; ++row) {
        for (int column = 0; column < kScreenColumns; ++column) {
            bytes.push_back(
                static_cast<uint8_t>(AttributePalette(store.Attributes, column, row) << 6));
        }
    }
    return bytes;
}

void ReadSprites(std::span<const uint8_t> bytes, WorkingCopy& copy) {
    std::vector<TileItem>& items = copy.Store().SpriteTileList;
    items.clear();
    copy.nextSpriteIndex = 0;
    for (; bytes.size() >= kSpriteRecord && items.size() < kMostSpritesRead;
         bytes = bytes.subspan(kSpriteRecord)) {
        if (bytes[0] <= kLastSpriteY) items.push_back(SpriteOf(bytes, copy.nextSpriteIndex++));
    }
}

std::optional<std::vector<uint8_t>> StoredSprites(bool odd, const DesignStore& store) {
    const std::vector<TileItem>& items = store.SpriteTileList;
    const bool onlyOdd = odd && std::ranges::any_of(items, &TileItem::IsSelected);
    std::vector<uint8_t> bytes;
    for (const TileItem& item : items) {
        const bool placed =
            item.Y >= 0 && item.Y <= kLastSpriteY && item.X >= 0 && item.X <= kLastSpriteX;
        if (!placed || (onlyOdd && (item.Tile & 1) == 0)) continue;
        if (bytes.size() == kSpritesInMemory * kSpriteRecord) return std::nullopt;
        bytes.insert(bytes.end(), {static_cast<uint8_t>(item.Y), item.Tile,
                                   static_cast<uint8_t>(SpriteAttribute(item) & kUsedAttributeBits),
                                   static_cast<uint8_t>(item.X)});
    }
    bytes.resize(kSpritesInMemory * kSpriteRecord, kNoSprite);
    return bytes;
}

void ReadVideoMemory(std::span<const uint8_t, kVideoMemorySize> image, size_t screen,
                     WorkingCopy& copy) {
    constexpr size_t kPalettes = 16128;
    DesignStore& store = copy.Store();
    store.CustomText.clear();
    store.BkgTileList.clear();
    store.SpriteTileList.clear();
    copy.nextTextIndex = copy.nextBkgIndex = copy.nextSpriteIndex = 0;
    Overwrite(store.ChrData, image);
    ReadNameTable(image.subspan(screen, kNameTableSize), copy);
    Overwrite(store.Attributes, image.subspan(screen + kNameTableSize));
    Overwrite(store.BkgPalette, image.subspan(kPalettes));
    Overwrite(store.SpritePalette, image.subspan(kPalettes + kPaletteSize));
}

}  // namespace bw
