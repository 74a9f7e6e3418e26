#include "designer/pictures/changed_blocks.h"

#include <algorithm>
#include <array>
#include <bit>

namespace bw {
namespace {

constexpr int kBlock = 16;  // pixels, width and height

// Odd numbers without a pattern, one for each pair of pixels of a row: where a pixel stands counts.
constexpr std::array<uint64_t, kBlock / 2> kKeys = {
    0x9E3779B97F4A7C15, 0xC2B2AE3D27D4EB4F, 0x165667B19E3779F9, 0xD6E8FEB86659FD93,
    0xA0761D6478BD642F, 0xE7037ED1A0B428DB, 0x8EBC6AF09C88C6E3, 0x589965CC75374CC3};

// The rows of a block, one after the other, into its sum. The products of a row don't wait for each
// other.
uint64_t SumOf(const Colour* pixels, int count, uint64_t sum) {
    uint64_t row = 0;
    for (size_t pair = 0; pair < static_cast<size_t>(count) / 2; ++pair)
        row += (pixels[2 * pair] | uint64_t{pixels[2 * pair + 1]} << 32) * kKeys[pair];
    if (count % 2 != 0) row += pixels[count - 1] * kKeys.back();
    return std::rotl(sum ^ row, 29) * kKeys.front();
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
