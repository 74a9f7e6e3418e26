#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace bw::assembler {

// Classes of source bytes. Bytes above 127 have none: they may only stand in comments and strings.
inline constexpr uint8_t kBlank = 1;      // blank, tab, and the CR of a CR LF
inline constexpr uint8_t kWordStart = 2;  // letter or underscore
inline constexpr uint8_t kWord = 4;       // letter, underscore or digit
inline constexpr uint8_t kDigit = 8;
inline constexpr uint8_t kHexDigit = 16;
inline constexpr uint8_t kEnd = 32;  // end of a statement: line feed or semicolon

inline constexpr std::array<uint8_t, 256> kCharClasses = [] {
    std::array<uint8_t, 256> classes{};
    for (unsigned c = 'a'; c <= 'z'; ++c)
        classes[c] = classes[c - 32] = kWordStart | kWord;
    for (unsigned c = '0'; c <= '9'; ++c)
        classes[c] = kWord | kDigit | kHexDigit;
    for (unsigned c = 'a'; c <= 'f'; ++c) {
        classes[c] = classes[c - 32] = kWordStart | kWord | kHexDigit;
    }
    classes['_'] = kWordStart | kWord;
    classes[' '] = classes['\t'] = classes['\r'] = kBlank;
    classes['\n'] = classes[';'] = kEnd;
    return classes;
}();

inline bool Is(char c, uint8_t classes) {
    return (kCharClasses[static_cast<unsigned char>(c)] & classes) != 0;
}

inline unsigned HexValue(char digit) {
    const auto c = static_cast<unsigned char>(digit);
    return (c & 15U) + (c >> 6U) * 9U;
}

inline const char* SkipBlanks(const char* at) {
    while (Is(*at, kBlank))
        ++at;
    return at;
}

inline const char* SkipWord(const char* at) {
    while (Is(*at, kWord))
        ++at;
    return at;
}

// A word of up to 8 characters as one number, letters in upper case; 0 for an empty or longer word.
// Words compare by one compare of numbers.
constexpr uint64_t PackWord(std::string_view word) {
    if (word.size() > 8) return 0;
    uint64_t packed = 0;
    for (const char c : word) {
        const bool lower = c >= 'a' && c <= 'z';
        packed = packed << 8U | static_cast<unsigned char>(lower ? c - 32 : c);
    }
    return packed;
}

}  // namespace bw::assembler
