#include "designer/pictures/surface.h"

#include <algorithm>
#include <cstddef>

namespace bw {
namespace {

// The part of a copied row that lies on the target: source pixels `first` to `last` less one.
struct Span {
    int first;
    int last;
};

Span VisiblePart(int at, int length, int scale, int limit) {
    // Rounded down to whole source pixels; a pixel that is cut through is handled by its parts.
    const int first = at < 0 ? std::min(length, -at / scale) : 0;
    const int room = limit - at;
    const int last = room <= 0 ? 0 : std::min(length, (room + scale - 1) / scale);
    return {first, last};
}

// One source row onto one line of the target. `from` is the source pixel of column 0, `step` leads
// to the next: 1, or -1 when mirrored.
struct Row {
    Colour* line;
    const Colour* from;
    std::ptrdiff_t step;
};

// The whole row at a scale known beforehand, which compilers turn into a few wide moves.
template <int Scale>
void CopyWhole(const Row& row, int width, std::optional<Colour> transparent) {
    Colour* to = row.line;
    for (int column = 0; column < width; ++column, to += Scale) {
        const Colour colour = row.from[column * row.step];
        const bool kept = transparent == colour;
        for (int i = 0; i < Scale; ++i)
            to[i] = kept ? to[i] : colour;
    }
}

// Any scale, cut at both ends of the line: `at` is the place of column 0.
void CopyPart(const Row& row, int at, Span columns, int limit, const CopyOptions& options) {
    for (int column = columns.first; column < columns.last; ++column) {
        const Colour colour = row.from[column * row.step];
        if (options.transparent == colour) continue;
        const int left = std::max(0, at + column * options.scale);
        const int right = std::min(limit, at + (column + 1) * options.scale);
        for (int x = left; x < right; ++x)
            row.line[x] = colour;
    }
}

}  // namespace

void Copy(Surface& target, Point at, const SourceRect& source, const CopyOptions& options) {
    const int scale = options.scale;
    const Span columns = VisiblePart(at.x, source.width, scale, target.Width());
    const bool whole = at.x >= 0 && at.x + source.width * scale <= target.Width();
    const int top = std::max(0, at.y);
    const int bottom = std::min(target.Height(), at.y + source.height * scale);
    for (int y = top; y < bottom; ++y) {
        const int row = (y - at.y) / scale;
        const Point first{options.mirrorX ? source.at.x + source.width - 1 : source.at.x,
                          source.at.y + (options.mirrorY ? source.height - 1 - row : row)};
        const int step = options.mirrorX ? -1 : 1;
        if (whole && scale <= 2) {
            const Row wholeRow{target.From({at.x, y}), source.surface.From(first), step};
            if (scale == 1) {
                CopyWhole<1>(wholeRow, source.width, options.transparent);
            } else {
                CopyWhole<2>(wholeRow, source.width, options.transparent);
            }
        } else {
            CopyPart({target.From({0, y}), source.surface.From(first), step}, at.x, columns,
                     target.Width(), options);
        }
    }
}

}  // namespace bw
