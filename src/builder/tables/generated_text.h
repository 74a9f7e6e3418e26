// Pieces of the assembly text that the program generates for the menu: UTF-8 without a byte order
// mark, lines ended by CR LF.
#pragma once

#include <string>
#include <string_view>

namespace bw {

inline constexpr std::string_view kLineEnd = "\r\n";

// A directive that places one length byte and then the bytes: ` .STR "..."`. Bytes that would end
// the string or the line early (a double quote, control characters) can't stand in a .STR of any
// assembler of this dialect; such text is written as ` .DB $length,$byte,...`, which places the
// same bytes. No line end. At most 255 bytes count, the rest is cut.
void AppendCountedString(std::string& text, std::string_view bytes);

// Text for a comment: control characters, which could end the line, become '?'.
void AppendComment(std::string& text, std::string_view utf8);

}  // namespace bw
