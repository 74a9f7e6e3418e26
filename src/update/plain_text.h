// Texts that came over the network, on their way to a person's eyes.
#pragma once

#include <string>
#include <string_view>

namespace bw {

inline constexpr size_t kMostCharacters = 4000;  // 16-bit units

// Plain text of at most kMostCharacters: longer ones are cut (not through a surrogate pair). Line
// ends and tabs stay; other control characters, and those that turn the direction of writing, by
// which a text could look like another one, are left out.
std::u16string PlainText(std::u16string_view text);

}  // namespace bw
