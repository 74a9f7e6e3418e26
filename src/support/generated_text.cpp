#include "support/generated_text.h"

#include <algorithm>

namespace bw {
namespace {

constexpr std::string_view kDigits = "0123456789ABCDEF";
constexpr size_t kLongestCountedString = 255;  // the length is one byte

bool IsControl(char byte) {
    return static_cast<uint8_t>(byte) < 0x20 || byte == 0x7F;
}

// `radix` is at most 16.
void AppendNumber(std::string& text, uint32_t value, uint32_t radix, int digits) {
    std::array<char, 32> reversed;
    size_t length = 0;
    do {
        reversed[length++] = kDigits[value % radix];
        value /= radix;
    } while (value != 0);
    if (static_cast<size_t>(std::max(digits, 0)) > length) {
        text.append(static_cast<size_t>(digits) - length, '0');
    }
    while (length > 0)
        text += reversed[--length];
}

}  // namespace

void AppendHex(std::string& text, uint32_t value, int digits) {
    AppendNumber(text, value, 16, digits);
}

void AppendDecimal(std::string& text, uint32_t value, int digits) {
    AppendNumber(text, value, 10, digits);
}

void AppendBinary(std::string& text, uint32_t value, int digits) {
    for (int bit = digits - 1; bit >= 0; --bit) {
        text += bit < 32 && ((value >> bit) & 1) != 0 ? '1' : '0';
    }
}

void AppendCountedString(std::string& text, std::string_view bytes) {
    bytes = bytes.substr(0, kLongestCountedString);
    const auto breaksString = [](char byte) { return byte == '"' || IsControl(byte); };
    if (std::none_of(bytes.begin(), bytes.end(), breaksString)) {
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
