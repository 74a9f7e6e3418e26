// The attribute table: a byte for 4 by 4 tiles of the screen, two bits for each of its quadrants.
#pragma once

#include <array>
#include <cstdint>

#include "designer/model/design_document.h"

namespace bw {

// The sub-palette 0 to 3 of a quadrant (0 or 1 each) in an attribute byte, and the byte with that
// quadrant changed.
constexpr int QuadrantShift(Pos quadrant) {
    return (quadrant.X & 1) * 2 + (quadrant.Y & 1) * 4;
}
constexpr int QuadrantPalette(uint8_t attribute, Pos quadrant) {
    return attribute >> QuadrantShift(quadrant) & 3;
}
constexpr uint8_t WithQuadrantPalette(uint8_t attribute, Pos quadrant, int palette) {
    const int shift = QuadrantShift(quadrant);
    return static_cast<uint8_t>((attribute & ~(3 << shift)) | (palette & 3) << shift);
}

// The sub-palette 0 to 3 that the table gives to a tile of the screen, column 0 to 31, row 0 to 29.
constexpr int AttributePalette(const std::array<uint8_t, kAttributeSize>& attributes, int column,
                               int row) {
    const auto byte = static_cast<size_t>(row) / 4 * 8 + static_cast<size_t>(column) / 4;
    return QuadrantPalette(attributes[byte], {column >> 1, row >> 1});
}

}  // namespace bw
