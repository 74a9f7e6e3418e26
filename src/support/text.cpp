#include "support/text.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <exception>

namespace bw {
namespace {

constexpr char16_t kReplacement = 0xFFFD;
constexpr char16_t kByteBase = 0xDC00;  // halves of surrogate pairs stand for bytes 80 to FF

size_t AsciiPrefix(std::string_view text) {
    constexpr uint64_t kHighBits = 0x8080808080808080u;
    size_t length = 0;
    for (uint64_t eight; length + sizeof eight <= text.size(); length += sizeof eight) {
        std::memcpy(&eight, text.data() + length, sizeof eight);
        if ((eight & kHighBits) != 0) break;
    }
    while (length < text.size() && static_cast<uint8_t>(text[length]) < 0x80)
        ++length;
    return length;
}

bool IsLeadSurrogate(char16_t unit) {
    return (unit & 0xFC00) == 0xD800;
}
bool IsTrailSurrogate(char16_t unit) {
    return (unit & 0xFC00) == 0xDC00;
}

// The first sequence of `bytes`, which isn't empty. A length of 0 says that it is malformed.
struct Decoded {
    char32_t point = 0;
    size_t length = 0;
};

Decoded DecodeFirst(std::string_view bytes) {
    const auto first = static_cast<uint8_t>(bytes[0]);
    if (first < 0x80) return {first, 1};
    const size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || bytes.size() < length) return {};
    char32_t point = first & (0x7Fu >> length);
    for (size_t i = 1; i < length; ++i) {
        const auto next = static_cast<uint8_t>(bytes[i]);
        if ((next & 0xC0) != 0x80) return {};
        point = (point << 6) | (next & 0x3F);
    }
    // Longer forms than needed, halves of surrogate pairs and points beyond the last one are
    // malformed as well.
    const bool tooLong = (length == 3 && point < 0x800) || (length == 4 && point < 0x10000);
    const bool outside = (point >= 0xD800 && point <= 0xDFFF) || point > 0x10FFFF;
    return tooLong || outside ? Decoded{} : Decoded{point, length};
}

void AppendPoint(std::string& text, char32_t point) {
    const auto trail = [&](int shift) {
        text += static_cast<char>(0x80 | ((point >> shift) & 0x3F));
    };
    if (point < 0x80) {
        text += static_cast<char>(point);
    } else if (point < 0x800) {
        text += static_cast<char>(0xC0 | (point >> 6));
        trail(0);
    } else if (point < 0x10000) {
        text += static_cast<char>(0xE0 | (point >> 12));
        trail(6);
        trail(0);
    } else {
        text += static_cast<char>(0xF0 | (point >> 18));
        trail(12);
        trail(6);
        trail(0);
    }
}

// `malformed` gives the unit for a byte that starts no valid sequence.
template <typename Malformed>
std::u16string Widen(std::string_view utf8, Malformed malformed) {
    const size_t ascii = AsciiPrefix(utf8);
    std::u16string wide(utf8.begin(), utf8.begin() + static_cast<std::ptrdiff_t>(ascii));
    for (size_t i = ascii; i < utf8.size();) {
        const Decoded decoded = DecodeFirst(utf8.substr(i));
        if (decoded.length == 0) {
            wide += malformed(static_cast<uint8_t>(utf8[i]));
            ++i;
            continue;
        }
        if (decoded.point < 0x10000) {
            wide += static_cast<char16_t>(decoded.point);
        } else {
            wide += static_cast<char16_t>(0xD7C0 + (decoded.point >> 10));
            wide += static_cast<char16_t>(0xDC00 | (decoded.point & 0x3FF));
        }
        i += decoded.length;
    }
    return wide;
}

// `lone` appends what stands for half of a surrogate pair.
template <typename Lone>
std::string Narrow(std::u16string_view wide, Lone lone) {
    const auto firstOther =
        std::find_if(wide.begin(), wide.end(), [](char16_t unit) { return unit >= 0x80; });
    const auto ascii = static_cast<size_t>(firstOther - wide.begin());
    std::string utf8(ascii, '\0');
    std::transform(wide.begin(), firstOther, utf8.begin(),
                   [](char16_t unit) { return static_cast<char>(unit); });
    for (size_t i = ascii; i < wide.size(); ++i) {
        if (IsLeadSurrogate(wide[i]) && i + 1 < wide.size() && IsTrailSurrogate(wide[i + 1])) {
            const char32_t high = wide[i] & 0x3FFu;
            AppendPoint(utf8, 0x10000 + (high << 10) + (wide[i + 1] & 0x3FFu));
            ++i;
        } else if (IsLeadSurrogate(wide[i]) || IsTrailSurrogate(wide[i])) {
            lone(utf8, wide[i]);
        } else {
            AppendPoint(utf8, wide[i]);
        }
    }
    return utf8;
}

}  // namespace

std::u16string ToWide(std::string_view utf8) {
    return Widen(utf8, [](uint8_t) { return kReplacement; });
}

std::string ToUtf8(std::u16string_view wide) {
    return Narrow(wide, [](std::string& utf8, char16_t) { AppendPoint(utf8, kReplacement); });
}

std::u16string BytesToWide(std::string_view bytes) {
    return Widen(bytes, [](uint8_t byte) { return static_cast<char16_t>(kByteBase + byte); });
}

std::string WideToBytes(std::u16string_view wide) {
    return Narrow(wide, [](std::string& bytes, char16_t half) {
        if (half >= kByteBase + 0x80 && half <= kByteBase + 0xFF) {
            bytes += static_cast<char>(half - kByteBase);
        } else {
            AppendPoint(bytes, kReplacement);
        }
    });
}

std::string ToSingleByte(std::u16string_view wide) {
    std::string bytes(wide.size(), '?');
    std::transform(wide.begin(), wide.end(), bytes.begin(),
                   [](char16_t unit) { return unit < 256 ? static_cast<char>(unit) : '?'; });
    return bytes;
}

char16_t AsciiUpper(char16_t unit) {
    return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - (u'a' - u'A')) : unit;
}

bool EqualIgnoringAsciiCase(std::u16string_view a, std::u16string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char16_t x, char16_t y) { return AsciiUpper(x) == AsciiUpper(y); });
}

std::strong_ordering CompareAsUtf8(std::u16string_view a, std::u16string_view b) {
    return std::lexicographical_compare_three_way(
        a.begin(), a.end(), b.begin(), b.end(),
        [](char16_t x, char16_t y) { return Utf8Rank(x) <=> Utf8Rank(y); });
}

namespace detail {

std::u16string FormatUtf8(std::string_view format, fmt::printf_args arguments) {
    try {
        return ToWide(fmt::vsprintf(fmt::string_view(format.data(), format.size()), arguments));
    } catch (const std::exception&) {
        return ToWide(format);
    }
}

}  // namespace detail
}  // namespace bw
