#include "builder/design_check/finding_list.h"

#include <algorithm>
#include <iterator>

namespace bw {

std::u16string SeverityText(FindingSeverity severity, Language language) {
    switch (severity) {
        case FindingSeverity::kError:
            return LoadText(TextId::kFindingError, language);
        case FindingSeverity::kWarning:
            return LoadText(TextId::kFindingWarning, language);
        case FindingSeverity::kNote:
            return LoadText(TextId::kFindingNote, language);
    }
    return {};
}

std::u16string QuotedStart(std::u16string_view text) {
    constexpr size_t kLongest = 24;
    const std::u16string shown = VisibleText(text.substr(0, kLongest));
    return text.size() > kLongest ? shown + u"..." : shown;
}

FindingList::Group& FindingList::GroupOf(FindingSeverity severity, TextId kind) {
    const auto found = std::ranges::find_if(groups_, [&](const Group& group) {
        return group.severity == severity && group.kind == kind;
    });
    if (found != groups_.end()) return *found;
    return groups_.emplace_back(Group{severity, kind});
}

std::vector<DesignFinding> FindingList::Take() {
    std::ranges::stable_sort(groups_, {}, &Group::severity);
    std::vector<DesignFinding> findings;
    for (Group& group : groups_) {
        if (group.more != 0) {
            group.findings.back().text += FormatText(Words(TextId::kFindingAndMore), group.more);
        }
        std::ranges::move(group.findings, std::back_inserter(findings));
    }
    groups_.clear();
    return findings;
}

}  // namespace bw
