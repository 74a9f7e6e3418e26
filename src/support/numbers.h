// Numbers as text, appended. Faster than formatting, for files of many thousand numbers.
#pragma once

#include <cstdint>
#include <string>

namespace bw {

// Upper-case hexadecimal with at least `digits` digits, as printf's "%0*X".
void AppendHex(std::string& text, uint32_t value, int digits);

// Decimal with at least `digits` digits, as printf's "%0.*d".
void AppendDecimal(std::string& text, uint32_t value, int digits = 1);

// Binary with exactly `digits` digits, leading zeros included; higher bits are cut.
void AppendBinary(std::string& text, uint32_t value, int digits);

}  // namespace bw
