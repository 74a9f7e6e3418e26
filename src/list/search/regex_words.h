// What is wrong with a regular expression, in words for the person who typed it.
#pragma once

#include <cstddef>
#include <optional>
#include <regex>
#include <string>
#include <string_view>

#include "language/language.h"

namespace bw {

// The standard library compiles an expression by recursion: over its characters, and deeper for
// each parenthesis. These limits keep that to a fraction of a thread's stack.
inline constexpr size_t kPatternLimit = 2000;  // characters
inline constexpr size_t kNestLimit = 100;      // parentheses inside each other

// Repetitions and references that it can count with, in an int.
inline constexpr size_t kNumberLimit = 9;  // decimal digits

// Words for an expression that must not be compiled, or nothing.
std::optional<std::u16string> PatternTooBig(std::wstring_view pattern, Language language);

// The same expression, in which the standard library looks at the name before each \1 or the like.
// Else it doesn't where the group took no part, and 2^40 ways to get there can't be stopped.
std::wstring WithWatchedReferences(std::wstring_view pattern);

// Words for an expression that the standard library refuses with this code. It doesn't say where,
// and calls a * at the start a mismatched parenthesis, so the expression is looked at again.
std::u16string PatternProblem(std::wstring_view pattern, std::regex_constants::error_type code,
                              Language language);

}  // namespace bw
