#include "designer/pictures/changed_blocks.h"

#include <algorithm>
#include <bit>

namespace bw {
namespace {

constexpr int kBlock = 16;  // pixels, width and height

// Two pixels at a time into a sum that hangs on their order, too (the multiplier is the one of
// Knuth's MMIX generator).
constexpr uint64_t Mix(uint64_t sum, uint64_t pixels) {
    return std::rotl((sum ^ pixels) * 6364136223846793005u, 29);
}

uint64_t SumOf(const Colour* pixels, int count, uint64_t sum) {
    int i = 0;
    for (; i + 1 < count; i += 2)
        sum = Mix(sum, pixels[i] | uint64_t{pixels[i + 1]} << 32);
    return i < count ? Mix(sum, pixels[i]) : sum;
}

}  // namespace

std::vector<Block> ChangedBlocks::Find(const Surface& surface) {
    const int columns = (surface.Width() + kBlock - 1) / kBlock;
    const int rows = (surface.Height() + kBlock - 1) / kBlock;
    const bool first = sums_.empty();
    sums_.resize(static_cast<size_t>(columns) * static_cast<size_t>(rows));
    std::vector<Block> changed;
    std::vector<uint64_t> line(static_cast<size_t>(columns));
    for (int row = 0; row < rows; ++row) {
        const int top = row * kBlock;
        const int height = std::min(kBlock, surface.Height() - top);
        std::ranges::fill(line, 1);
        for (int y = top; y < top + height; ++y) {
            for (int x = 0; x < surface.Width(); x += kBlock) {
                uint64_t& sum = line[static_cast<size_t>(x / kBlock)];
                sum = SumOf(surface.From({x, y}), std::min(kBlock, surface.Width() - x), sum);
            }
        }
        bool inRun = false;
        for (int column = 0; column < columns; ++column) {
            const auto place = static_cast<size_t>(row * columns + column);
            const uint64_t sum = line[static_cast<size_t>(column)];
            const bool differs = first || sums_[place] != sum;
            sums_[place] = sum;
            const int left = column * kBlock;
            const int width = std::min(kBlock, surface.Width() - left);
            if (differs && inRun) {
                changed.back().width += width;
            } else if (differs) {
                changed.push_back({{left, top}, width, height});
            }
            inRun = differs;
        }
    }
    return changed;
}

}  // namespace bw
