#include "designer/pictures/surface.h"

#include <random>

#include <gtest/gtest.h>

namespace bw {
namespace {

// Every copy against the plainest way to say it.
TEST(Surface, CopiesMirroredScaledKeyedAndCut) {
    std::mt19937 random(20);
    const auto below = [&](int limit) { return static_cast<int>(random() % unsigned(limit)); };
    Surface source(12, 9);
    for (int y = 0; y < source.Height(); ++y)
        for (int x = 0; x < source.Width(); ++x)
            source.At({x, y}) = static_cast<Colour>(below(3)) + 5;
    for (int round = 0; round < 2000; ++round) {
        const Point from{below(12), below(9)};
        const SourceRect rect{source, from, 1 + below(12 - from.x), 1 + below(9 - from.y)};
        CopyOptions options{below(4) + 1, below(2) != 0, below(2) != 0, {}};
        if (below(2) != 0) options.transparent = 6;
        const Point at{below(60) - 40, below(60) - 40};
        Surface target(20, 20, 1), expected(20, 20, 1);
        Copy(target, at, rect, options);
        for (int y = 0; y < rect.height * options.scale; ++y) {
            for (int x = 0; x < rect.width * options.scale; ++x) {
                const Point to{at.x + x, at.y + y};
                const int column = x / options.scale, row = y / options.scale;
                const Colour colour =
                    source.At({from.x + (options.mirrorX ? rect.width - 1 - column : column),
                               from.y + (options.mirrorY ? rect.height - 1 - row : row)});
                if (expected.Holds(to) && options.transparent != colour) expected.At(to) = colour;
            }
        }
        ASSERT_TRUE(std::ranges::equal(target.Pixels(), expected.Pixels())) << "round " << round;
    }
}

}  // namespace
}  // namespace bw
