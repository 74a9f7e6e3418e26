// Surfaces as PNG files in memory.
#pragma once

#include <cstdint>
#include <vector>

#include "designer/pictures/surface.h"

namespace bw {

// An indexed picture; its palette holds the colours in the order of their first pixels. Empty if
// the surface has more than 256 colours, which no view has, or if there is no memory.
std::vector<uint8_t> SurfacePng(const Surface& surface);

}  // namespace bw
