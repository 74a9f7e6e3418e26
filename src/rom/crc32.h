#pragma once

#include <cstdint>
#include <span>

namespace bw {

// CRC-32 of ISO 3309 (reflected polynomial 0xEDB88320, all ones in and out). `previous` is the
// value of the bytes before these, 0 at the start. No bytes at all have the value 0.
uint32_t Crc32(std::span<const uint8_t> bytes, uint32_t previous = 0);

}  // namespace bw
