#include "support/generated_text.h"

#include <algorithm>

namespace bw {
namespace {

constexpr std::string_view kDigits = "0123456789ABCDEF";
constexpr size_t kLongestCountedString = 255;  // the length is one byte

bool IsControl(char byte) {
    return static_cast<uint8_t>(byte) < 0x20 || byte == 0x7F;
}

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

void AppendCountedString(std::string& text, std::string_view bytes) {
    bytes = bytes.substr(0, kLongestCountedString);
    const auto breaksString = [](char byte) { return byte == '"' || IsControl(byte); };
    // Counting looks at many bytes at once; a search for the first one can't.
    if (std::count_if(bytes.begin(), bytes.end(), breaksString) == 0) {
        text += " .STR \"";
        text += bytes;
        text += '"';
        return;
    }
    text += " .DB $";
    AppendHex(text, static_cast<uint32_t>(bytes.size()), 2);
    for (const char byte : bytes) {
        text += ",$";
        AppendHex(text, static_cast<uint8_t>(byte), 2);
    }
}

void AppendComment(std::string& text, std::string_view utf8) {
    const size_t start = text.size();
    text += utf8;
    std::replace_if(text.begin() + static_cast<std::ptrdiff_t>(start), text.end(), IsControl, '?');
}

}  // namespace bw
