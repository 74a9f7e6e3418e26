// Versions as four numbers.
#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <string_view>

namespace bw {

// Compares field by field, from the first.
struct VersionNumbers {
    std::array<uint32_t, 4> fields{};

    auto operator<=>(const VersionNumbers&) const = default;
};

// As the C library's "%d.%d.%d.%d" reads: what comes behind the fourth number, or where another
// character stands than expected, is left unread; fields that are missing stay 0. Numbers that are
// too large count as the largest; negative ones wrap to large ones.
VersionNumbers ReadVersion(std::u16string_view text);
VersionNumbers ReadVersion(std::string_view text);

// Exactly four numbers of one to nine digits, nothing else. Only such a version becomes part of a
// file's name.
bool IsPlainVersion(std::u16string_view text);

}  // namespace bw
