#include "support/text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <exception>

#include <utf8proc.h>

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
    utf8proc_int32_t point = 0;
    size_t length = 0;
};

Decoded DecodeFirst(std::string_view bytes) {
    Decoded decoded;
    const auto length =
        utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(bytes.data()),
                         static_cast<utf8proc_ssize_t>(bytes.size()), &decoded.point);
    decoded.length = static_cast<size_t>(std::max<utf8proc_ssize_t>(length, 0));
    return decoded;
}

void AppendPoint(std::string& text, char32_t point) {
    const size_t end = text.size();
    text.resize(end + 4);
    const auto length = utf8proc_encode_char(static_cast<utf8proc_int32_t>(point),
                                             reinterpret_cast<utf8proc_uint8_t*>(&text[end]));
    text.resize(end + static_cast<size_t>(length));
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

// The Unicode case folding. Where that is two letters, the one small letter counts.
char16_t FoldedUnit(char16_t unit) {
    std::array<utf8proc_int32_t, 4> points{};
    int boundary = 0;  // of no use here
    const auto count =
        utf8proc_decompose_char(unit, points.data(), points.size(), UTF8PROC_CASEFOLD, &boundary);
    return static_cast<char16_t>(count == 1 ? points[0] : utf8proc_tolower(unit));
}

// How far each folded unit is away, modulo 65,536. Asking the library costs too much for each
// letter of a long list. 256 units to a page; all without letters share the first one, which so
// stays in the processor's cache.
class Distances {
  public:
    Distances() {
        size_t used = 1;
        for (uint32_t first = 0; first < 0x10000; first += 256) {
            auto& page = pages_.at(used);
            for (uint32_t i = 0; i < page.size(); ++i) {
                const auto unit = static_cast<char16_t>(first + i);
                page[i] = static_cast<uint16_t>(FoldedUnit(unit) - unit);
            }
            if (page != pages_.front()) pageOf_[first >> 8] = static_cast<uint8_t>(used++);
        }
    }

    char16_t Of(char16_t unit) const {
        return static_cast<char16_t>(unit + pages_[pageOf_[unit >> 8]][unit & 0xFF]);
    }

  private:
    std::array<uint8_t, 256> pageOf_{};
    std::array<std::array<uint16_t, 256>, 64> pages_{};  // Unicode 15 fills 19
};

const Distances& Folding() {
    static const Distances distances;
    return distances;
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

std::u16string VisibleText(std::u16string_view text) {
    std::u16string visible(text);
    std::ranges::replace_if(
        visible, [](char16_t unit) { return unit < 0x20 || (unit >= 0x7F && unit < 0xA0); }, u'?');
    return visible;
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

char16_t detail::FoldBeyondAscii(char16_t unit) {
    return Folding().Of(unit);
}

std::u16string FoldCase(std::u16string_view text) {
    const Distances& folding = Folding();
    std::u16string folded(text);
    for (char16_t& unit : folded)
        unit = unit < 0x80 ? FoldCase(unit) : folding.Of(unit);
    return folded;
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
