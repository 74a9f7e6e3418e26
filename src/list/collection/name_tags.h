// What people write in brackets behind the title of a game in a file's name: region, languages,
// revision, marks of a dump. Sources: the naming conventions of the preservation groups and of the
// GoodTools sets.
#pragma once

#include <cstdint>
#include <optional>
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

// A stretch of a name: of its title, or a tag with its brackets.
struct NamePiece {
    std::u16string_view text;
    bool isTag = false;
};

// Reads a name piece by piece. Tags may hold tags, and any bracket closes the last one; a tag that
// nothing closes is one to the name's end, unless the name begins with it. Brackets may be those of
// Chinese and Japanese.
class NamePieces {
  public:
    explicit NamePieces(std::u16string_view name) : rest_(name) {}
    std::optional<NamePiece> Next();

  private:
    std::u16string_view rest_;
    bool titleBegun_ = false;
};

// Of a tag with its brackets, at least the first one.
NameTag ReadTag(std::u16string_view written);

// The regions that a tag names, by their names in English ("USA" for "U" too); none for another
// tag.
std::vector<std::string> RegionsOf(std::u16string_view text);

// How new a tag of kRevision makes an image: 0 for the first edition, more for later ones, less for
// what came before it.
int RevisionOf(const NameTag& tag);

}  // namespace bw
