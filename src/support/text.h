// Wide text is std::u16string: lengths, cuts and comparisons count 16-bit units. This is the one
// place where it is converted to and from the UTF-8 of files, terminals and databases.
#pragma once

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

// One byte for each 16-bit unit below 256 (ISO 8859-1), '?' for every other.
std::string ToSingleByte(std::u16string_view wide);

// Capital letters for a to z only; every other unit stays.
char16_t AsciiUpper(char16_t unit);
bool EqualIgnoringAsciiCase(std::u16string_view a, std::u16string_view b);

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
