// What a screen of the user's own design must show, pixel by pixel: a second, plain telling of the
// console's picture (NESdev wiki: PPU rendering, PPU OAM, Sprite priority), to compare with. It
// reads the design itself, none of the files that a build makes of it.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "designer/model/design_document.h"
#include "menu_model.h"

namespace bw::console {

inline constexpr size_t kPictureWidth = 256;
inline constexpr size_t kPictureHeight = 240;
inline constexpr size_t kPictureSize = kPictureWidth * kPictureHeight;

// One byte a pixel, row by row: the number of the colour, 0 to 63.
using Picture = std::string;

constexpr size_t kSprites = 64;
using Sprite = std::array<uint8_t, 4>;  // Y, tile, attribute, X
inline constexpr Sprite kHiddenSprite{0xF8, 0, 0, 0xF8};

Sprite ShownSprite(const TileItem& item, int32_t y);

// The 64 sprites of a page of 256 bytes, in their order from the sprite `first` on.
std::vector<Sprite> SpritesFrom(std::string_view page, size_t first);

// The design's tiles and texts, without names, caption and page number.
MenuModel::Screen DesignBackground(const DesignDocument& design);

// Where the design puts what the menu writes itself.
MenuLook DesignLook(const DesignDocument& design);

// The menu's 64 sprites before it rotates them. The cursor stands at the row `row` of the page, the
// rows being `rowHeight` pixels apart.
std::vector<Sprite> DesignSprites(const DesignDocument& design, size_t row, size_t rowHeight);

// The numbers of the sprites that the console shows on a line, at most 8, the foremost first.
std::vector<size_t> SpritesOnLine(const DesignDocument& design, std::span<const Sprite> sprites,
                                  size_t line);

// The whole picture; the sprites come in the order of the console's sprite memory.
Picture DrawDesign(const DesignDocument& design, const MenuModel::Screen& tiles,
                   std::span<const Sprite> sprites);

}  // namespace bw::console
