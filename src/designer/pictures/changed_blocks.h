// Which parts of a surface differ from what it was when last asked: what a window has to bring to
// the screen, without a copy of the picture.
#pragma once

#include <cstdint>
#include <vector>

#include "designer/pictures/surface.h"

namespace bw {

struct Block {
    Point at;
    int width = 0;
    int height = 0;

    bool operator==(const Block&) const = default;
};

class ChangedBlocks {
  public:
    // Blocks that hold all pixels which have changed since the last call, as runs from the left to
    // the right; the first call gives the whole surface. It must keep its size.
    std::vector<Block> Find(const Surface& surface);

  private:
    std::vector<uint64_t> sums_;  // of the blocks, row by row
};

}  // namespace bw
