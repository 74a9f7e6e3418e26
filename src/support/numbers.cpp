#include "support/numbers.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace bw {
namespace {

constexpr std::string_view kDigits = "0123456789ABCDEF";

template <uint32_t kRadix>
void AppendNumber(std::string& text, uint32_t value, int digits) {
    std::array<char, 32> room;
    auto first = room.end();
    do {
        *--first = kDigits[value % kRadix];
        value /= kRadix;
    } while (value != 0);
    const auto length = room.end() - first;
    if (length < digits) text.append(static_cast<size_t>(digits - length), '0');
    text.append(first, room.end());
}

}  // namespace

void AppendHex(std::string& text, uint32_t value, int digits) {
    AppendNumber<16>(text, value, digits);
}

void AppendDecimal(std::string& text, uint32_t value, int digits) {
    AppendNumber<10>(text, value, digits);
}

void AppendBinary(std::string& text, uint32_t value, int digits) {
    text.append(static_cast<size_t>(std::max(digits, 0)), '0');
    for (auto digit = text.rbegin(); digits > 0 && value != 0; --digits, value >>= 1) {
        *digit++ = kDigits[value & 1];
    }
}

}  // namespace bw
