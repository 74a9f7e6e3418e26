// Numbers and tables as the design's files and settings hold them; numbers little-endian.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace bw {

// The 32 bits at the offset `at`, which lies with its three successors inside `bytes`.
inline uint32_t Read32(std::span<const uint8_t> bytes, size_t at) {
    return static_cast<uint32_t>(bytes[at]) | static_cast<uint32_t>(bytes[at + 1]) << 8 |
           static_cast<uint32_t>(bytes[at + 2]) << 16 | static_cast<uint32_t>(bytes[at + 3]) << 24;
}

// The same way round.
inline void Write32(std::span<uint8_t> bytes, size_t at, uint32_t value) {
    bytes[at] = static_cast<uint8_t>(value);
    bytes[at + 1] = static_cast<uint8_t>(value >> 8);
    bytes[at + 2] = static_cast<uint8_t>(value >> 16);
    bytes[at + 3] = static_cast<uint8_t>(value >> 24);
}

inline void Append32(std::vector<uint8_t>& bytes, uint32_t value) {
    const size_t at = bytes.size();
    bytes.resize(at + sizeof value);
    Write32(bytes, at, value);
}

// As much of the bytes as the table takes, over its start.
inline void Overwrite(std::span<uint8_t> table, std::span<const uint8_t> bytes) {
    std::copy_n(bytes.begin(), std::min(table.size(), bytes.size()), table.begin());
}

}  // namespace bw
