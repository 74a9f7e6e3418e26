#include "designer/files/surface_png.h"

#include <algorithm>

#include "designer/files/png_file.h"

namespace bw {

std::vector<uint8_t> SurfacePng(const Surface& surface) {
    constexpr size_t kMostColours = 256;
    std::vector<uint32_t> palette;
    std::vector<uint8_t> indices;
    indices.reserve(surface.Pixels().size());
    for (const Colour colour : surface.Pixels()) {
        const auto found = std::ranges::find(palette, colour);
        indices.push_back(static_cast<uint8_t>(found - palette.begin()));
        if (found != palette.end()) continue;
        if (palette.size() == kMostColours) return {};
        palette.push_back(colour);
    }
    return EncodePng(static_cast<uint32_t>(surface.Width()),
                     static_cast<uint32_t>(surface.Height()), palette, indices);
}

}  // namespace bw
