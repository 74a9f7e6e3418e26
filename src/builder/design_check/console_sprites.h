// A design's sprites and its cursor as the console draws them.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "designer/model/design_document.h"

namespace bw {

inline constexpr int kScreenWidth = kScreenColumns * kTilePixels;  // pixels
inline constexpr int kScreenHeight = kScreenRows * kTilePixels;

struct ConsoleSprite {
    size_t index = 0;  // in SpriteTileList, or of the cursor's parts
    int x = 0;         // of the first column, 0 to 255
    int top = 0;       // the first line, 0 to 256
    int height = kTilePixels;
    uint8_t attribute = 0;  // as in the console's sprite memory
    // Rows as they show, bit 7 the leftmost pixel: the two bits of each pixel's colour.
    std::array<uint8_t, 2 * kTilePixels> low{};
    std::array<uint8_t, 2 * kTilePixels> high{};

    int End() const { return top + height; }  // the line below the last one
    uint8_t Opaque(int row) const {
        const auto at = static_cast<size_t>(row);
        return static_cast<uint8_t>(low[at] | high[at]);
    }
    bool IsBlank() const;
};

// The sprites that a build takes in and the menu shows, in their order.
std::vector<ConsoleSprite> ShownSprites(const DesignDocument& document);

// The small cursor, or the parts of the large one that the menu looks at.
std::span<const TileItem> CursorTiles(const DesignDocument& document);

// The parts of the cursor that the menu shows, `below` pixels under their places; 0 to 255 and
// then again from 0, as the menu counts. Parts that are hidden there are left out.
std::vector<ConsoleSprite> CursorSprites(const DesignDocument& document, int below);

// Whether which of the two is in front makes a difference to see.
bool OrderMatters(const ConsoleSprite& a, const ConsoleSprite& b, const DesignStore& store);

// The pixels that show, far corner excluded; nothing for a blank sprite.
struct PixelBox {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};
std::optional<PixelBox> OpaqueBox(const ConsoleSprite& sprite);

}  // namespace bw
