#include "builder/tables/generated_text.h"

#include <algorithm>
#include <cstdint>

#include "support/numbers.h"

namespace bw {
namespace {

constexpr size_t kLongestCountedString = 255;  // the length is one byte

bool IsControl(char byte) {
    return static_cast<uint8_t>(byte) < 0x20 || byte == 0x7F;
}

}  // namespace

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
