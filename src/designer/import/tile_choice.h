// Which tiles of the pattern table show a picture.
#pragma once

#include <atomic>
#include <cstdint>
#include <vector>

#include "designer/import/colour_choice.h"
#include "designer/import/tile_pattern.h"

namespace bw {

// The part of the pattern table that a picture may use.
struct TileRoom {
    // A tile that stays as it is; pictures may show it too.
    struct Kept {
        TilePattern pattern;
        uint8_t number = 0;
    };
    std::vector<Kept> kept;
    std::vector<uint8_t> free;  // to be drawn anew, in this order
};

struct TileChoice {
    struct Drawn {
        uint8_t number = 0;
        TilePattern pattern;

        bool operator==(const Drawn&) const = default;
    };
    std::vector<TilePattern> shown;  // of each tile of the picture
    std::vector<uint8_t> numbers;    // where each of these stands
    std::vector<Drawn> drawn;        // those that are new, in the order in which they show first
};

// Shows the picture with as many tiles as there is room for: the closest ones become one, those
// that are used most having the most weight. Where tiles had to go and `mayRefit` is set, the
// colours are then chosen anew for what is left. Without an end worth having once `stop` is set.
TileChoice ChooseTiles(const Canvas& canvas, std::span<const PictureTile> tiles,
                       const TileRoom& room, bool mayRefit, ColourChoice& choice,
                       const std::atomic<bool>& stop);

// The same with the kept tiles alone, each block in the sub-palette that suits it then.
TileChoice ChooseKeptTiles(const Canvas& canvas, std::span<const PictureTile> tiles,
                           const TileRoom& room, bool mayRefit, ColourChoice& choice,
                           const std::atomic<bool>& stop);

}  // namespace bw
