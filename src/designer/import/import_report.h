// What an import tells people: its numbers and its three pictures.
#pragma once

#include <span>

#include "designer/import/picture_import.h"

namespace bw {

// Fills the numbers and the pictures of `result`, whose area is set. `wanted` is what errors are
// measured against: the picture, or the picture in the console's colours.
void DescribeImport(const Canvas& picture, const Canvas& wanted, std::span<const PictureTile> tiles,
                    const TileChoice& chosen, const ColourChoice& colours, ImportResult& result);

}  // namespace bw
