// A picture in memory: 32-bit pixels 0x00RRGGBB, rows from the top. The designer composes all its
// views on surfaces; a window only shows them.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "designer/model/colour.h"
#include "designer/model/point.h"

namespace bw {

class Surface {
  public:
    Surface(int width, int height, Colour colour = 0)
        : width_(width),
          height_(height),
          pixels_(static_cast<size_t>(width) * static_cast<size_t>(height), colour) {}

    int Width() const { return width_; }
    int Height() const { return height_; }
    std::span<const Colour> Pixels() const { return pixels_; }
    bool Holds(Point at) const { return at.x >= 0 && at.x < width_ && at.y >= 0 && at.y < height_; }
    // `at` must lie on the surface.
    Colour& At(Point at) { return pixels_[Place(at)]; }
    Colour At(Point at) const { return pixels_[Place(at)]; }
    // The pixels from `at` to the end of its row and on.
    Colour* From(Point at) { return pixels_.data() + Place(at); }
    const Colour* From(Point at) const { return pixels_.data() + Place(at); }

    void Fill(Colour colour) { pixels_.assign(pixels_.size(), colour); }

  private:
    size_t Place(Point at) const {
        return static_cast<size_t>(at.y) * static_cast<size_t>(width_) + static_cast<size_t>(at.x);
    }

    int width_;
    int height_;
    std::vector<Colour> pixels_;
};

// A rectangle to copy: `width` by `height` pixels of `surface` from `at`, all of them on it.
struct SourceRect {
    const Surface& surface;
    Point at;
    int width;
    int height;
};

struct CopyOptions {
    int scale = 1;  // each pixel becomes scale by scale pixels
    bool mirrorX = false;
    bool mirrorY = false;
    std::optional<Colour> transparent = {};  // source pixels of this colour are left out
};

// Copies onto `target` with the top left corner at `at`; what falls outside is cut off.
void Copy(Surface& target, Point at, const SourceRect& source, const CopyOptions& options = {});

}  // namespace bw
