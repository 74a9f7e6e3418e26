// The findings of one check as they come together.
#pragma once

#include <string_view>
#include <type_traits>
#include <vector>

#include "builder/design_check/design_finding.h"
#include "support/text.h"

namespace bw {

class FindingList {
  public:
    explicit FindingList(Language language) : language_(language) {}

    Language UiLanguage() const { return language_; }
    std::u16string Words(TextId id) const { return LoadText(id, language_); }

    // `arguments` go into the text: values, or functions that give one, which are
    // called only if the finding is told.
    template <typename... Arguments>
    void Add(FindingSeverity severity, TextId kind, const DesignPlace& place,
             const Arguments&... arguments) {
        Group& group = GroupOf(severity, kind);
        // Files may hold any number of items; a sentence for each is nothing to read.
        if (group.findings.size() == kMostOfAKind) {
            ++group.more;
        } else {
            group.findings.push_back(
                {severity, kind, FormatText(Words(kind), Value(arguments)...), place});
        }
    }

    // In order of severity, then of kinds as they came.
    std::vector<DesignFinding> Take();

  private:
    static constexpr size_t kMostOfAKind = 20;

    template <typename Argument>
    static auto Value(const Argument& argument) {
        if constexpr (std::is_invocable_v<const Argument&>) {
            return argument();
        } else {
            return argument;
        }
    }

    struct Group {
        FindingSeverity severity;
        TextId kind;
        std::vector<DesignFinding> findings{};
        size_t more = 0;
    };
    Group& GroupOf(FindingSeverity severity, TextId kind);

    Language language_;
    std::vector<Group> groups_;
};

// A text of the user's in a sentence: its start, without control characters.
std::u16string QuotedStart(std::u16string_view text);

}  // namespace bw
