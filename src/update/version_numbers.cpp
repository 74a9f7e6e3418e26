#include "update/version_numbers.h"

#include <algorithm>
#include <optional>

namespace bw {
namespace {

template <typename Text>
bool TakeOne(Text& text, std::string_view wanted) {
    if (text.empty() || static_cast<char16_t>(text.front()) >= 0x80) return false;
    if (wanted.find(static_cast<char>(text.front())) == wanted.npos) return false;
    text.remove_prefix(1);
    return true;
}

constexpr std::string_view kDigits = "0123456789";

// Nothing if there is no number; what was taken of the text by then doesn't matter, since the rest
// stays unread.
template <typename Text>
std::optional<uint32_t> TakeNumber(Text& text) {
    while (TakeOne(text, " \t\n\v\f\r")) {
    }
    const bool negative = TakeOne(text, "-");
    if (!negative) TakeOne(text, "+");
    // Of both signs as far as the 32 bits reach, so that a negative number never wraps to a small
    // one.
    const uint64_t largest = negative ? uint64_t{1} << 31 : UINT32_MAX;
    std::optional<uint64_t> number;
    while (!text.empty()) {
        const auto digit = text.front();
        if (!TakeOne(text, kDigits)) break;
        number = std::min(number.value_or(0) * 10 + static_cast<uint64_t>(digit - '0'), largest);
    }
    if (!number) return std::nullopt;
    return static_cast<uint32_t>(negative ? -*number : *number);
}

template <typename Text>
VersionNumbers Read(Text text) {
    VersionNumbers version;
    for (uint32_t& field : version.fields) {
        if (&field != version.fields.data() && !TakeOne(text, ".")) break;
        const auto number = TakeNumber(text);
        if (!number) break;
        field = *number;
    }
    return version;
}

}  // namespace

VersionNumbers ReadVersion(std::u16string_view text) {
    return Read(text);
}

VersionNumbers ReadVersion(std::string_view text) {
    return Read(text);
}

bool IsPlainVersion(std::u16string_view text) {
    constexpr int kMostDigits = 9;
    for (size_t field = 0; field < VersionNumbers().fields.size(); ++field) {
        if (field > 0 && !TakeOne(text, ".")) return false;
        int digits = 0;
        while (TakeOne(text, kDigits))
            ++digits;
        if (digits < 1 || digits > kMostDigits) return false;
    }
    return text.empty();
}

}  // namespace bw
