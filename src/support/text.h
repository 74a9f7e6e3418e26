// Wide text is std::u16string: lengths, cuts and comparisons count 16-bit units. This is the one
// place where it is converted to and from the UTF-8 of files, terminals and databases.
#pragma once

#include <compare>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include <fmt/printf.h>

namespace bw {

// Malformed sequences become U+FFFD, one for each byte that starts no valid sequence.
std::u16string ToWide(std::string_view utf8);

// A lone surrogate becomes U+FFFD.
std::string ToUtf8(std::u16string_view wide);

// The same for text that needn't be UTF-8 and must come back byte for byte, as the names of files
// do on systems where they are bytes: a byte that starts no valid sequence becomes the unit DC00 +
// byte, which no valid text has, and the reverse.
std::u16string BytesToWide(std::string_view bytes);
std::string WideToBytes(std::u16string_view wide);

// A path's own text, from which TextPath makes the same path again.
std::u16string PathText(const std::filesystem::path& path);
std::filesystem::path TextPath(std::u16string_view text);

// For a terminal or a line of a message: control characters, which could end the line or command
// the terminal, become '?'.
std::u16string VisibleText(std::u16string_view text);

// One byte for each 16-bit unit below 256 (ISO 8859-1), '?' for every other.
std::string ToSingleByte(std::u16string_view wide);

// Capital letters for a to z only; every other unit stays.
char16_t AsciiUpper(char16_t unit);
bool EqualIgnoringAsciiCase(std::u16string_view a, std::u16string_view b);

namespace detail {
char16_t FoldBeyondAscii(char16_t unit);
}  // namespace detail

// Letters that differ in case alone get the same unit, in any script and any locale. Letters beyond
// the first 65,536 points stay, and none becomes two ("\u00DF" isn't "ss").
inline char16_t FoldCase(char16_t unit) {
    if (unit >= 0x80) return detail::FoldBeyondAscii(unit);
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + (u'a' - u'A')) : unit;
}
std::u16string FoldCase(std::u16string_view text);

// Ranks of units order texts as the bytes of their UTF-8 do: surrogates, which stand for the
// points from 10000 on, come behind E000 to FFFF.
constexpr char16_t Utf8Rank(char16_t unit) {
    if (unit < 0xD800) return unit;
    return static_cast<char16_t>(unit < 0xE000 ? unit + 0x2000 : unit - 0x0800);
}
// Compares as the bytes of the texts' UTF-8 would.
std::strong_ordering CompareAsUtf8(std::u16string_view a, std::u16string_view b);

namespace detail {
inline const auto& PrintfArgument(const auto& value) {
    return value;
}
inline std::string PrintfArgument(const std::u16string& value) {
    return ToUtf8(value);
}
inline std::string PrintfArgument(std::u16string_view value) {
    return ToUtf8(value);
}
std::u16string FormatUtf8(std::string_view format, fmt::printf_args arguments);
}  // namespace detail

// Fills the printf-style placeholders of a message of the language table. Wide strings may stand
// for %s. A format that doesn't fit its arguments comes back unfilled.
template <typename... Arguments>
std::u16string FormatText(std::u16string_view format, const Arguments&... arguments) {
    return [&](const auto&... converted) {
        return detail::FormatUtf8(ToUtf8(format),
                                  fmt::make_format_args<fmt::printf_context>(converted...));
    }(detail::PrintfArgument(arguments)...);
}

}  // namespace bw
