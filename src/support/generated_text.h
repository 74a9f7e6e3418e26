// Pieces of the assembly text that the program generates for the menu: UTF-8 without a byte order
// mark, lines ended by CR LF.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace bw {

inline constexpr std::string_view kLineEnd = "\r\n";

// Upper-case hexadecimal with at least `digits` digits, as printf's "%0*X".
void AppendHex(std::string& text, uint32_t value, int digits);

// Decimal with at least `digits` digits, as printf's "%0.*d".
void AppendDecimal(std::string& text, uint32_t value, int digits = 1);

// Binary with exactly `digits` digits, leading zeros included; higher bits are cut.
void AppendBinary(std::string& text, uint32_t value, int digits);

// A directive that places one length byte and then the bytes: ` .STR "..."`. Bytes that would end
// the string or the line early (a double quote, control characters) can't stand in a .STR of any
// assembler of this dialect; such text is written as ` .DB $length,$byte,...`, which places the
// same bytes. No line end. At most 255 bytes count, the rest is cut.
void AppendCountedString(std::string& text, std::string_view bytes);

// Text for a comment: control characters, which could end the line, become '?'.
void AppendComment(std::string& text, std::string_view utf8);

}  // namespace bw
