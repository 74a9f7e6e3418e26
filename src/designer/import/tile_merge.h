// The tiles of a picture made fewer by making the closest ones the same.
#pragma once

#include <atomic>
#include <cstddef>
#include <span>
#include <vector>

#include "designer/import/tile_costs.h"

namespace bw {

// At most `limit` patterns for tiles of these costs: the two whose union costs least become one,
// until few enough are left. Each pattern is the best for all tiles that it stands for. Ends early
// once `stop` is set.
std::vector<TilePattern> MergeTiles(std::span<const PixelCosts> tiles, size_t limit,
                                    const std::atomic<bool>& stop);

}  // namespace bw
