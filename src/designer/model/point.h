#pragma once

namespace bw {

// A place in whichever unit the user of it says: pixels, tiles, cells.
struct Point {
    int x = 0;
    int y = 0;

    bool operator==(const Point&) const = default;
};

}  // namespace bw
