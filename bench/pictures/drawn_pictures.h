// Ten pictures of 256 by 240 pixels, drawn by formulas: what people bring to a menu's screen.
#pragma once

#include <array>
#include <string_view>

#include "designer/files/png_file.h"

namespace bw::bench {

struct DrawnPicture {
    std::string_view name;
    Picture picture;
};

std::array<DrawnPicture, 10> DrawnPictures();

}  // namespace bw::bench
