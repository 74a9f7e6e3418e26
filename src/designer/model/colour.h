#pragma once

#include <cstdint>

namespace bw {

using Colour = uint32_t;  // 0x00RRGGBB

}  // namespace bw
