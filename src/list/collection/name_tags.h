// What people write in brackets behind the title of a game in a file's name: region, languages,
// revision, marks of a dump. Sources: the naming conventions of the preservation groups and of the
// GoodTools sets.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace bw {

enum class TagKind : uint8_t {
    kRegion,    // (USA), (Japan, USA), (U), (J)
    kLanguage,  // (En,Fr,De), (M3)
    kRevision,  // (Rev 1), (Rev A), (PRG1), (V1.1), (Beta), (Proto 2)
    kDump,      // [!], [b1], [h2], [o1], [t1], [a1], [f1], [T+Chi]; a mark that isn't "[!]" counts
                // against the image
    kOther,     // (Unl), (Aftermarket), (Konami), whatever else
};

struct NameTag {
    TagKind kind = TagKind::kOther;
    std::u16string text;  // without its brackets
    bool square = false;  // [ ] instead of ( )
};

struct TaggedName {
    std::u16string title;  // without tags, blanks at its ends taken off; never empty but for an
                           // empty name: a name of nothing but tags is its own title
    std::vector<NameTag> tags;
};

TaggedName SplitTags(std::u16string_view name);

}  // namespace bw
