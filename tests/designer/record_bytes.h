// Stored records for tests, written byte by byte.
#pragma once

#include <cstdint>
#include <numeric>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "designer/files/design_file.h"
#include "support/text.h"

namespace bw {

using Bytes = std::vector<uint8_t>;

inline constexpr Language kEnglish = Language::kEnglish;

// What is wrong, or nothing.
inline std::string Words(const DesignProblem& problem) {
    return problem ? ToUtf8(FullText(*problem)) : "";
}

inline Bytes operator+(Bytes a, const Bytes& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

inline void Append32(Bytes& bytes, uint32_t value) {
    for (int shift = 0; shift < 32; shift += 8)
        bytes.push_back(static_cast<uint8_t>(value >> shift));
}

// One chunk, written by hand: `size` is what the header says.
inline Bytes Chunk(uint32_t type, const Bytes& payload, std::optional<uint32_t> size = {},
                   uint32_t reserved = 0, uint32_t version = 1) {
    Bytes bytes;
    for (const uint32_t word : {type, reserved, version, size.value_or(uint32_t(payload.size()))})
        Append32(bytes, word);
    return bytes + payload;
}

inline Bytes Counting(size_t size, uint8_t first = 1) {
    Bytes bytes(size);
    std::iota(bytes.begin(), bytes.end(), first);
    return bytes;
}

inline Bytes Units(std::u16string_view text) {
    Bytes bytes;
    for (const char16_t unit : text)
        bytes.insert(bytes.end(), {static_cast<uint8_t>(unit), static_cast<uint8_t>(unit >> 8)});
    return bytes;
}

inline void AppendTile(Bytes& bytes, int32_t x, int32_t y, uint8_t tile) {
    Append32(bytes, 77);  // Index
    Append32(bytes, static_cast<uint32_t>(x));
    Append32(bytes, static_cast<uint32_t>(y));
    Append32(bytes, 1);  // Selected
    bytes.insert(bytes.end(), {tile, 2, 5, 0xEE});
}

struct TextRecord {
    uint32_t type = 6;
    int32_t x = 0;
    int32_t y = 0;
    std::u16string_view text;
    uint32_t textBytes = static_cast<uint32_t>(2 * text.size());
    uint32_t size = static_cast<uint32_t>(2 * text.size() + 20);
};

inline void AppendText(Bytes& bytes, const TextRecord& record) {
    Append32(bytes, record.type);
    Append32(bytes, 0xCCCCCCCC);  // never written
    Append32(bytes, 1);
    Append32(bytes, record.size);
    Append32(bytes, static_cast<uint32_t>(record.x));
    Append32(bytes, static_cast<uint32_t>(record.y));
    Append32(bytes, record.textBytes);
    bytes = bytes + Units(record.text) + Bytes(8, 0xCC);
}

}  // namespace bw
