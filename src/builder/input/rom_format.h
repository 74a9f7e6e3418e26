#pragma once

#include <cstdint>

namespace bw {

// The containers that a ROM may be written in.
enum class RomFormat : uint8_t { kNes20 = 1, kUnif = 2, kBinary = 3 };

}  // namespace bw
