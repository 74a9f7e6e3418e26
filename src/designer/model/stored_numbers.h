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

inline void Append32(std::vector<uint8_t>& bytes, uint32_t value) {
    for (int shift = 0; shift < 32; shift += 8) {
        bytes.push_back(static_cast<uint8_t>(value >> shift));
    }
}

// As much of the bytes as the table takes, over its start.
inline void Overwrite(std::span<uint8_t> table, std::span<const uint8_t> bytes) {
    std::copy_n(bytes.begin(), std::min(table.size(), bytes.size()), table.begin());
}

}  // namespace bw
