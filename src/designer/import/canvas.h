// A picture laid on the screen, in the order in which its colours are chosen: by the blocks of 16
// by 16 pixels that share a sub-palette.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "designer/files/png_file.h"
#include "designer/import/console_colours.h"
#include "designer/model/design_document.h"
#include "designer/model/point.h"

namespace bw {

inline constexpr int kBlockSide = 2 * kTilePixels;
inline constexpr size_t kBlockPixels = size_t{kBlockSide} * kBlockSide;
inline constexpr size_t kSideTilePixels = kTilePixels;
inline constexpr size_t kTilePixelCount = kSideTilePixels * kSideTilePixels;

// A rectangle of the screen's tiles.
struct TileArea {
    int column = 0;
    int row = 0;
    int columns = 0;
    int rows = 0;

    bool Holds(int64_t x, int64_t y) const {
        return x >= column && x < column + columns && y >= row && y < row + rows;
    }
    bool IsWholeScreen() const { return columns == kScreenColumns && rows == kScreenRows; }
    bool operator==(const TileArea&) const = default;
};

class Canvas {
  public:
    // The picture with its top left corner in the cell `at` of the screen; what hangs over the
    // screen's right and lower edge is cut off.
    Canvas(const Picture& picture, Pos at);
    // The same with other pixels, one shade for each: what is clear stays clear.
    Canvas Recoloured(std::span<const Shade> shades) const;

    // The tiles that the picture touches, and their blocks: columns 0 to 15, rows 0 to 14.
    const TileArea& Area() const { return area_; }
    const std::vector<Point>& Blocks() const { return blocks_; }
    // The place of a pixel of the screen among all pixels; its block must be among Blocks().
    size_t PlaceOf(int x, int y) const;

    // Of each block in turn 16 rows of 16 pixels.
    size_t PixelCount() const { return pixels_.size(); }
    std::span<const uint32_t> Pixels() const { return pixels_; }
    // Clear pixels, and those of a block or tile that the picture doesn't reach, cost nothing
    // whatever shows there.
    bool IsClear(size_t pixel) const { return (pixels_[pixel] & kTransparentPixel) != 0; }
    const Lab& LabAt(size_t pixel) const { return labs_[pixel]; }
    Shade Closest(size_t pixel) const { return closest_[pixel]; }
    // What it costs to show this shade in each of the pixels.
    const Cost* Costs(Shade shade) const { return costs_.data() + shade * pixels_.size(); }
    const Cost* BlockCosts(Shade shade, size_t block) const {
        return Costs(shade) + block * kBlockPixels;
    }

  private:
    Canvas() = default;
    void Measure();

    TileArea area_;
    std::vector<Point> blocks_;
    std::array<int16_t, 16 * 15> blockAt_{};  // the number of each block of the screen
    std::vector<uint32_t> pixels_;
    std::vector<Lab> labs_;
    std::vector<Shade> closest_;
    std::vector<Cost> costs_;  // a run of all pixels for each shade
};

}  // namespace bw
