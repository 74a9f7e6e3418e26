// Names for people out of the names of files.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace bw {

// What is done to a name. Which tags go is a choice for each kind.
struct TidyRules {
    bool dropRegion = true;
    bool dropLanguage = true;
    bool dropRevision = true;
    bool dropDump = true;
    bool dropOther = true;
    bool underscores = true;  // to blanks
    bool articles = true;  // "Game, The" to "The Game"; also A, An, Le, La, Les, Der, Die, Das, El
    bool blanks = true;    // one between words, none at the ends; numbers in front of the title
                           // ("001. Game", "12 - Game") lose their zeros' and points' mess
    bool operator==(const TidyRules&) const = default;
};

// Never empty for a name that isn't; capitals stay as they were typed.
std::u16string TidyName(std::u16string_view name, const TidyRules& rules);

// The name in at most `room` characters, by whole words: words at the end go, and where one word
// alone is too long, that is cut. Signs that then end the name (, - : &) go too. Room 0 gives the
// first character.
std::u16string ShortenByWords(std::u16string_view name, size_t room);

}  // namespace bw
