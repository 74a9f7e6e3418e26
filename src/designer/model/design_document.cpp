#include "designer/model/design_document.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "designer/model/design_records.h"
#include "designer/model/stored_numbers.h"
#include "settings/setting_names.h"

namespace bw {
namespace {

constexpr uint32_t kNameTable = 0x2000;  // in video memory

bool OffScreen(const TextItem& item) {
    const bool leftOfScreen =
        item.X < 0 && -int64_t{item.X} >= static_cast<int64_t>(item.Text.size());
    return item.Y < 0 || item.Y >= kScreenRows || item.X >= kScreenColumns || leftOfScreen;
}

// A list without items has its value removed.
bool WriteList(SettingsStore& settings, std::string_view name, const std::vector<uint8_t>& bytes) {
    if (!bytes.empty()) return settings.RegWriteBinary(kDesignKey, name, bytes);
    size_t size = 0;
    return !settings.RegValueSize(kDesignKey, name, size) ||
           settings.RegDeleteValue(kDesignKey, name);
}

std::vector<uint8_t> StoredNumber(uint32_t value) {
    std::vector<uint8_t> bytes;
    Append32(bytes, value);
    return bytes;
}

std::vector<uint8_t> StoredTiles(const std::vector<TileItem>& items) {
    std::vector<uint8_t> bytes;
    for (const TileItem& item : items) {
        const std::vector<uint8_t> record = StoredTile(item);
        bytes.insert(bytes.end(), record.begin(), record.end());
    }
    return bytes;
}

std::vector<uint8_t> StoredTexts(const std::vector<TextItem>& items) {
    std::vector<uint8_t> bytes;
    for (const TextItem& item : items)
        AppendChunk(bytes, kTextRecord, StoredTextItem(item));
    return bytes;
}

void KeepOnScreen(TileItem& sprite) {
    sprite.X = std::clamp(sprite.X, 0, kLastSpriteX);
    sprite.Y = std::clamp(sprite.Y, kFirstSpriteY, kLastSpriteY);
}

// `distance` counts pixels leftwards and upwards from the cell's corner.
void MoveBeside(TileItem& sprite, const Pos& cell, const Pos& distance) {
    // 64 bits, since a stored place may be any number.
    const auto pixel = [](int32_t start, int32_t back) {
        return static_cast<int32_t>(std::clamp<int64_t>(int64_t{start} * 8 - back, 0, 255));
    };
    sprite.X = pixel(cell.X, distance.X);
    sprite.Y = pixel(cell.Y, distance.Y);
    KeepOnScreen(sprite);
}

}  // namespace

uint32_t PpuAddress(const Pos& place) {
    return kNameTable + static_cast<uint32_t>(place.Y) * kScreenColumns +
           static_cast<uint32_t>(place.X);
}

Pos ConsoleCell(const Pos& place) {
    const uint32_t cell = PpuAddress(place) - kNameTable;
    return {static_cast<int32_t>(cell % kScreenColumns),
            static_cast<int32_t>(cell / kScreenColumns)};
}

void SpreadLargeCursor(DesignStore& store) {
    std::vector<TileItem>& items = store.ArrowTileList;
    if (items.size() != kLargeCursorTiles.size()) return;
    KeepOnScreen(items[0]);
    const int32_t height = store.BigSprite != 0 ? 16 : 8;
    for (size_t i = 1; i < items.size(); ++i) {
        items[i].X = items[0].X + (i % 2 != 0 ? 8 : 0);
        items[i].Y = items[0].Y + (i >= 2 ? height : 0);
    }
}

void ResetSmallCursor(DesignDocument& document) {
    TileItem& cursor = document.store.ArrowTile;
    cursor.Tile = kSmallCursorTile;
    cursor.Flags = 0;
    MoveBeside(cursor, document.ItemPos, {.X = 10, .Y = 0});
}

void RebuildShortLargeCursor(DesignDocument& document) {
    std::vector<TileItem>& items = document.store.ArrowTileList;
    if (items.size() >= kLargeCursorTiles.size()) return;
    items.assign(kLargeCursorTiles.size(), TileItem());
    for (size_t i = 0; i < items.size(); ++i) {
        items[i].Index = static_cast<uint32_t>(i);
        items[i].Tile = kLargeCursorTiles[i];
    }
    MoveBeside(items[0], document.ItemPos, {.X = 18, .Y = 4});
    SpreadLargeCursor(document.store);
}

bool StoreDesign(DesignDocument& document, SettingsStore& settings) {
    DesignStore& store = document.store;
    std::erase_if(store.CustomText, OffScreen);
    Renumber(store.BkgTileList);
    Renumber(store.SpriteTileList);
    Renumber(store.ArrowTileList);
    Renumber(store.CustomText);
    store.CaptionPpuAddr = PpuAddress(document.CaptionPos);
    store.PageNumberPpuAddr = PpuAddress(document.PageNumberPos);
    store.ItemPpuAddr = PpuAddress(document.ItemPos);

    bool written = settings.RegWriteString(kDesignKey, setting::kCaptionText, store.CaptionText);
    const auto write = [&](std::string_view name, std::span<const uint8_t> bytes) {
        written = settings.RegWriteBinary(kDesignKey, name, bytes) && written;
    };
    write(setting::kBigCursor, {&document.BigCursor, 1});
    write(setting::kBigSprite, {&store.BigSprite, 1});
    write(setting::kCharMapData, store.CharMapData);
    write(setting::kChrData, store.ChrData);
    write(setting::kAttributes, store.Attributes);
    write(setting::kBkgPalette, store.BkgPalette);
    write(setting::kSpritePalette, store.SpritePalette);
    write(setting::kArrowTile, StoredTile(store.ArrowTile));
    write(setting::kCaptionPos, StoredPos(document.CaptionPos));
    write(setting::kPageNumberPos, StoredPos(document.PageNumberPos));
    write(setting::kItemPos, StoredPos(document.ItemPos));
    write(setting::kCaptionPpuAddr, StoredNumber(store.CaptionPpuAddr));
    write(setting::kPageNumberPpuAddr, StoredNumber(store.PageNumberPpuAddr));
    write(setting::kItemPpuAddr, StoredNumber(store.ItemPpuAddr));
    written = WriteList(settings, setting::kBkgTileList, StoredTiles(store.BkgTileList)) && written;
    written =
        WriteList(settings, setting::kSpriteTileList, StoredTiles(store.SpriteTileList)) && written;
    written =
        WriteList(settings, setting::kArrowTileList, StoredTiles(store.ArrowTileList)) && written;
    return WriteList(settings, setting::kCustomText, StoredTexts(store.CustomText)) && written;
}

}  // namespace bw
