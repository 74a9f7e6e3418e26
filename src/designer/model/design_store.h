// Everything that makes up one custom console menu screen. The screen is 256 by 240 pixels, 32
// columns by 30 rows of 8 by 8 tiles.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "settings/settings_store.h"

namespace bw {

inline constexpr int kTileCount = 256;  // of a pattern table
inline constexpr int kTilesInRow = 16;
inline constexpr int kTilePixels = 8;  // width and height of a tile
inline constexpr size_t kTileBytes = 16;
inline constexpr size_t kPatternTableSize = kTileCount * kTileBytes;
inline constexpr size_t kChrDataSize = 2 * kPatternTableSize;
inline constexpr size_t kAttributeSize = 64;
inline constexpr size_t kPaletteSize = 16;
inline constexpr size_t kCharMapSize = 256;
inline constexpr int kScreenColumns = 32;
inline constexpr int kScreenRows = 30;
inline constexpr int32_t kLastSpriteX = 255;  // pixels
inline constexpr int32_t kFirstSpriteY = 1;   // the console shows a sprite one line below its Y
inline constexpr int32_t kLastSpriteY = 239;
inline constexpr uint8_t kSmallCursorTile = 31;
inline constexpr std::array<uint8_t, 4> kLargeCursorTiles = {2, 3, 18, 19};

// One placed tile or sprite; 20 bytes when stored, little-endian, in this order.
struct TileItem {
    static constexpr size_t kStoredSize = 20;

    uint32_t Index = 0xFFFFFFFF;  // sequence number in its list
    int32_t X = 0;                // BkgTileList: tile column; sprites: pixel column 0 to 255
    int32_t Y = 0;                // BkgTileList: tile row; sprites: the sprite's Y byte 1 to 239
    uint32_t Selected = 0;        // bit 0: selected in the designer
    uint8_t Tile = 0;             // tile number in its pattern table
    uint8_t Palette = 0;          // sprite sub-palette 0 to 3
    uint8_t Flags = 0;            // kFlipVertically and so on
    uint8_t Reserved = 0;         // carried along

    static constexpr uint32_t kSelected = 1;
    static constexpr uint8_t kFlipVertically = 1;
    static constexpr uint8_t kFlipHorizontally = 2;
    static constexpr uint8_t kBehindBackground = 4;

    bool IsSelected() const { return (Selected & kSelected) != 0; }
    bool operator==(const TileItem&) const = default;
};

// The console's sprite attribute byte: bit 7 flip vertically, bit 6 flip horizontally, bit 5
// behind the background, Palette ORed in as it stands.
uint8_t SpriteAttribute(const TileItem& item);

// One text placed on the screen.
struct TextItem {
    uint32_t Index = 0;
    int32_t X = 0;  // tile column; what lies left of column 0 is cut away
    int32_t Y = 0;  // tile row
    std::u16string Text;

    bool operator==(const TextItem&) const = default;
};

extern const std::array<uint8_t, kAttributeSize> kDefaultAttributes;
extern const std::array<uint8_t, kPaletteSize> kDefaultBkgPalette;
extern const std::array<uint8_t, kPaletteSize> kDefaultSpritePalette;

// The design document as builds and the designer read it. Plain values: copy it for a snapshot.
struct DesignStore {
    // Background pattern table, then sprite pattern table: 256 tiles of 16 bytes each (byte r is
    // row r of the low plane, byte r + 8 row r of the high plane, bit 7 the leftmost pixel).
    std::array<uint8_t, kChrDataSize> ChrData{};
    std::array<uint8_t, kChrDataSize> DefaultChrData{};
    std::array<uint8_t, kAttributeSize> Attributes = kDefaultAttributes;
    std::array<uint8_t, kPaletteSize> BkgPalette = kDefaultBkgPalette;
    std::array<uint8_t, kPaletteSize> SpritePalette = kDefaultSpritePalette;
    // Entry b is the tile that shows the character with the byte value b.
    std::array<uint8_t, kCharMapSize> CharMapData{};
    std::array<uint8_t, 256> BkgTileSelected{};
    std::array<uint8_t, 256> SpriteTileSelected{};
    std::vector<TileItem> BkgTileList;     // later items overwrite earlier ones in a cell
    std::vector<TileItem> SpriteTileList;  // the fixed sprites, in order
    TileItem ArrowTile;                    // the small cursor
    std::vector<TileItem> ArrowTileList;   // the large cursor: at least 4 once loaded
    std::vector<TextItem> CustomText;
    std::u16string CaptionText;
    uint32_t CaptionPpuAddr = 0x204C;     // console video memory addresses of the first
    uint32_t PageNumberPpuAddr = 0x236D;  // character of each
    uint32_t ItemPpuAddr = 0x20A9;
    uint8_t BigSprite = 0;  // non-zero: sprites are 8 by 16 pixels
    bool defaultChrLoaded = false;
};

// The printable characters stand for the tiles of the same number; the space is the empty tile 0.
void SetDefaultCharMap(DesignStore& store);

// Fills the store as far as it isn't filled yet, from the settings and from `defaultTiles` (the
// default tile set; a shorter one fills only its length, a longer one is cut). Lists that hold
// items are left alone. False, with the later steps left out, if `defaultTiles` is empty. May be
// called any number of times. Stored records that are damaged count as missing.
bool LoadDesignData(DesignStore& store, const SettingsStore& settings,
                    std::span<const uint8_t> defaultTiles);

// Whether anything has been drawn, placed or coloured; the store has been filled.
bool IsDesigned(const DesignStore& store);

// The three tables and the three addresses that the program reads once at its start. The addresses
// are read as numbers but stored as binary values, so the read is refused and the defaults stand
// in every new run; that is meant.
void LoadDesignTables(DesignStore& store, const SettingsStore& settings);

}  // namespace bw
