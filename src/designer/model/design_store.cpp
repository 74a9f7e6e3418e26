#include "designer/model/design_store.h"

#include <algorithm>
#include <string_view>

#include "designer/model/design_records.h"
#include "settings/setting_names.h"

namespace bw {

constinit const std::array<uint8_t, kAttributeSize> kDefaultAttributes = [] {
    std::array<uint8_t, kAttributeSize> bytes{};
    std::fill_n(bytes.begin() + 8, 40, uint8_t{0x55});
    std::fill_n(bytes.begin() + 48, 8, uint8_t{0xA5});
    std::fill_n(bytes.begin() + 56, 8, uint8_t{0xAA});
    return bytes;
}();

constinit const std::array<uint8_t, kPaletteSize> kDefaultBkgPalette = {
    0x0F, 0x24, 0x23, 0x23, 0x0F, 0x21, 0x21, 0x21, 0x0F, 0x27, 0x22, 0x22, 0x0F, 0x22, 0x22, 0x22};

constinit const std::array<uint8_t, kPaletteSize> kDefaultSpritePalette = {
    0x0F, 0x20, 0x27, 0x22, 0x0F, 0x24, 0x24, 0x24, 0x0F, 0x21, 0x21, 0x21, 0x0F, 0x22, 0x22, 0x22};

namespace {

// Out of range means the low end here, unlike the small cursor's clamping to the nearer one.
int32_t ForcedX(int64_t x) {
    return x < 0 || x > kLastSpriteX ? 0 : static_cast<int32_t>(x);
}
int32_t ForcedY(int64_t y) {
    return y < kFirstSpriteY || y > kLastSpriteY ? kFirstSpriteY : static_cast<int32_t>(y);
}

// A stored value of exactly the table's size; any other leaves the table as it is.
bool ReadTable(const SettingsStore& settings, std::string_view name, std::span<uint8_t> table) {
    const std::vector<uint8_t> stored = ReadWholeBinary(settings, kDesignKey, name);
    if (stored.size() != table.size()) return false;
    std::ranges::copy(stored, table.begin());
    return true;
}

std::vector<TileItem> ReadTiles(const SettingsStore& settings, std::string_view name) {
    return ReadTileItems(ReadWholeBinary(settings, kDesignKey, name));
}

void LoadArrowTile(DesignStore& store, const SettingsStore& settings) {
    store.ArrowTile.Tile = kSmallCursorTile;
    std::array<uint8_t, TileItem::kStoredSize> record;
    if (ReadTable(settings, setting::kArrowTile, record)) store.ArrowTile = ReadTileItem(record);
}

// Four sprites on one spot, taken from the small cursor's pixels as if they were tiles: that is
// what menus built before the designer was first opened have always shown. 64 bits, since a
// stored position may be any number.
std::vector<TileItem> DefaultLargeCursor(const TileItem& arrow) {
    const TileItem corner{.X = ForcedX(int64_t{arrow.X} * 8 - 18),
                          .Y = ForcedY(int64_t{arrow.Y} * 8 - 4)};
    std::vector<TileItem> items(kLargeCursorTiles.size(), corner);
    for (size_t i = 0; i < items.size(); ++i) {
        items[i].Index = static_cast<uint32_t>(i);
        items[i].Tile = kLargeCursorTiles[i];
    }
    return items;
}

void LoadLargeCursor(DesignStore& store, const SettingsStore& settings) {
    if (store.ArrowTileList.size() >= kLargeCursorTiles.size()) return;
    store.ArrowTileList = ReadTiles(settings, setting::kArrowTileList);
    for (TileItem& item : store.ArrowTileList) {
        item.X = ForcedX(item.X);
        item.Y = ForcedY(item.Y);
    }
    if (store.ArrowTileList.size() < kLargeCursorTiles.size()) {
        store.ArrowTileList = DefaultLargeCursor(store.ArrowTile);
    }
}

bool LoadDefaultTiles(DesignStore& store, std::span<const uint8_t> tiles) {
    if (store.defaultChrLoaded) return true;
    if (tiles.empty()) return false;
    std::copy_n(tiles.begin(), std::min(tiles.size(), kChrDataSize), store.DefaultChrData.begin());
    store.defaultChrLoaded = true;
    return true;
}

}  // namespace

uint8_t SpriteAttribute(const TileItem& item) {
    const auto bit = [&](uint8_t flag, int attribute) {
        return (item.Flags & flag) != 0 ? attribute : 0;
    };
    return static_cast<uint8_t>(bit(TileItem::kFlipVertically, 0x80) |
                                bit(TileItem::kFlipHorizontally, 0x40) |
                                bit(TileItem::kBehindBackground, 0x20) | item.Palette);
}

void SetDefaultCharMap(DesignStore& store) {
    store.CharMapData.fill(0);
    for (uint8_t code = 33; code <= 127; ++code)
        store.CharMapData[code] = code;
}

bool LoadDesignData(DesignStore& store, const SettingsStore& settings,
                    std::span<const uint8_t> defaultTiles) {
    LoadArrowTile(store, settings);
    if (store.CustomText.empty()) {
        store.CustomText =
            ReadTextItems(ReadWholeBinary(settings, kDesignKey, setting::kCustomText));
    }
    if (store.BkgTileList.empty()) store.BkgTileList = ReadTiles(settings, setting::kBkgTileList);
    if (store.SpriteTileList.empty())
        store.SpriteTileList = ReadTiles(settings, setting::kSpriteTileList);
    LoadLargeCursor(store, settings);
    if (!LoadDefaultTiles(store, defaultTiles)) return false;
    if (!ReadTable(settings, setting::kChrData, store.ChrData))
        store.ChrData = store.DefaultChrData;
    // Only now: the large cursor's default is made from the position as it was stored.
    store.ArrowTile.X = std::clamp(store.ArrowTile.X, 0, kLastSpriteX);
    store.ArrowTile.Y = std::clamp(store.ArrowTile.Y, kFirstSpriteY, kLastSpriteY);
    SetDefaultCharMap(store);
    ReadTable(settings, setting::kCharMapData, store.CharMapData);
    ReadTable(settings, setting::kBigSprite, {&store.BigSprite, 1});
    return true;
}

bool IsDesigned(const DesignStore& store) {
    return !store.BkgTileList.empty() || !store.SpriteTileList.empty() ||
           !store.CustomText.empty() || store.ChrData != store.DefaultChrData ||
           store.Attributes != kDefaultAttributes || store.BkgPalette != kDefaultBkgPalette ||
           store.SpritePalette != kDefaultSpritePalette;
}

void LoadDesignTables(DesignStore& store, const SettingsStore& settings) {
    ReadTable(settings, setting::kAttributes, store.Attributes);
    ReadTable(settings, setting::kBkgPalette, store.BkgPalette);
    ReadTable(settings, setting::kSpritePalette, store.SpritePalette);
    settings.RegReadDword(kDesignKey, setting::kCaptionPpuAddr, store.CaptionPpuAddr);
    settings.RegReadDword(kDesignKey, setting::kPageNumberPpuAddr, store.PageNumberPpuAddr);
    settings.RegReadDword(kDesignKey, setting::kItemPpuAddr, store.ItemPpuAddr);
}

}  // namespace bw
