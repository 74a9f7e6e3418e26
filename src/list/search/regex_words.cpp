#include "list/search/regex_words.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "support/text.h"

namespace bw {
namespace {

// A walk over an expression of the ECMAScript grammar that knows no more of it than where groups
// open and close and what can be repeated.
class Outline {
  public:
    enum class Fault { kNone, kNeverClosed, kNeverOpened, kNothingToRepeat };

    explicit Outline(std::wstring_view pattern) : pattern_(pattern) {
        while (at_ < pattern_.size() && fault_ == Fault::kNone)
            Step();
        if (fault_ == Fault::kNone && !open_.empty()) Fail(Fault::kNeverClosed, open_.back().at);
    }

    size_t Depth() const { return depth_; }
    Fault WhatFault() const { return fault_; }
    size_t FaultAt() const { return faultAt_; }
    const std::vector<size_t>& References() const { return references_; }

  private:
    struct Group {
        size_t at;
        bool lookahead;
    };

    void Step() {
        const size_t start = at_++;
        switch (pattern_[start]) {
            case L'\\':
                if (Next() >= L'1' && Next() <= L'9') references_.push_back(start);
                canRepeat_ = Next() != L'b' && Next() != L'B';
                ++at_;
                break;
            case L'[':
                SkipClass();
                canRepeat_ = true;
                break;
            case L'(':
                Open(start);
                break;
            case L')':
                Close(start);
                break;
            case L'*':
            case L'+':
            case L'?':
            case L'{':
                if (!canRepeat_) Fail(Fault::kNothingToRepeat, start);
                break;
            case L'|':
            case L'^':
            case L'$':
                canRepeat_ = false;
                break;
            default:
                canRepeat_ = true;
        }
    }

    void Open(size_t start) {
        const bool special = Next() == L'?';
        if (special) ++at_;
        open_.push_back({start, special && (Next() == L'=' || Next() == L'!')});
        if (special) ++at_;
        depth_ = std::max(depth_, open_.size());
        canRepeat_ = false;
    }

    void Close(size_t start) {
        if (open_.empty()) {
            Fail(Fault::kNeverOpened, start);
            return;
        }
        canRepeat_ = !open_.back().lookahead;
        open_.pop_back();
    }

    // [...] with \] and [:name:] inside.
    void SkipClass() {
        if (Next() == L'^') ++at_;
        while (at_ < pattern_.size() && Next() != L']') {
            const wchar_t unit = pattern_[at_++];
            const wchar_t kind = Next();
            if (unit == L'\\') {
                ++at_;
            } else if (unit == L'[' && (kind == L':' || kind == L'.' || kind == L'=')) {
                const std::array<wchar_t, 2> end{kind, L']'};
                at_ = pattern_.find(std::wstring_view(end.data(), 2), at_ + 1);
                at_ = at_ == std::wstring_view::npos ? pattern_.size() : at_ + 2;
            }
        }
        ++at_;
    }

    wchar_t Next() const { return at_ < pattern_.size() ? pattern_[at_] : L'\0'; }
    void Fail(Fault fault, size_t at) {
        fault_ = fault;
        faultAt_ = at;
    }

    std::wstring_view pattern_;
    size_t at_ = 0;
    std::vector<Group> open_;
    std::vector<size_t> references_;  // where a \1 or the like starts
    size_t depth_ = 0;
    bool canRepeat_ = false;
    Fault fault_ = Fault::kNone;
    size_t faultAt_ = 0;
};

std::u16string Placed(const Outline& outline, std::wstring_view pattern, Language language) {
    const auto text = [&](TextId id) {
        return FormatText(LoadText(id, language), outline.FaultAt() + 1,
                          std::string(1, static_cast<char>(pattern[outline.FaultAt()])));
    };
    switch (outline.WhatFault()) {
        case Outline::Fault::kNeverClosed:
            return text(TextId::kParenthesisNeverClosed);
        case Outline::Fault::kNeverOpened:
            return text(TextId::kParenthesisNeverOpened);
        case Outline::Fault::kNothingToRepeat:
            return text(TextId::kNothingToRepeat);
        case Outline::Fault::kNone:
            break;
    }
    return {};
}

std::u16string CodeWords(std::regex_constants::error_type code, Language language) {
    using namespace std::regex_constants;
    const auto text = [&](TextId id) { return LoadText(id, language); };
    if (code == error_collate || code == error_ctype) return text(TextId::kClassNameUnknown);
    if (code == error_escape) return text(TextId::kEscapeIncomplete);
    if (code == error_backref) return text(TextId::kGroupMissing);
    if (code == error_brack) return text(TextId::kBracketNeverClosed);
    if (code == error_paren) return text(TextId::kGroupKindUnknown);
    if (code == error_brace) return text(TextId::kBraceNeverClosed);
    if (code == error_badbrace) return text(TextId::kRepetitionMalformed);
    if (code == error_range) return text(TextId::kRangeMalformed);
    if (code == error_space || code == error_complexity || code == error_stack) {
        return text(TextId::kRegexTooLarge);
    }
    return text(TextId::kRegexMalformed);
}

// Whether a number behind a {, a comma or a \ has more digits than the library can count with. Runs
// of digits elsewhere are characters to find.
bool HasHugeNumber(std::wstring_view pattern) {
    constexpr std::wstring_view kDigits = L"0123456789";
    size_t end = 0;
    for (size_t start = pattern.find_first_of(kDigits); start != std::wstring_view::npos;
         start = pattern.find_first_of(kDigits, end)) {
        end = std::min(pattern.find_first_not_of(kDigits, start), pattern.size());
        const wchar_t before = start == 0 ? L'\0' : pattern[start - 1];
        const bool counts = before == L'{' || before == L',' || before == L'\\';
        if (counts && end - start > kNumberLimit) return true;
    }
    return false;
}

std::u16string Opening(Language language) {
    return LoadText(TextId::kRegexUnusable, language);
}

}  // namespace

std::optional<std::u16string> PatternTooBig(std::wstring_view pattern, Language language) {
    if (pattern.size() > kPatternLimit) {
        return Opening(language) +
               FormatText(LoadText(TextId::kRegexTooLong, language), pattern.size(), kPatternLimit);
    }
    if (Outline(pattern).Depth() > kNestLimit) {
        return Opening(language) +
               FormatText(LoadText(TextId::kRegexNestedTooDeep, language), kNestLimit);
    }
    if (HasHugeNumber(pattern)) {
        return Opening(language) + CodeWords(std::regex_constants::error_space, language);
    }
    return std::nullopt;
}

std::wstring WithWatchedReferences(std::wstring_view pattern) {
    const Outline outline(pattern);
    std::wstring result;
    size_t done = 0;
    for (const size_t start : outline.References()) {
        const size_t end =
            std::min(pattern.find_first_not_of(L"0123456789", start + 1), pattern.size());
        result += pattern.substr(done, start - done);
        result += L"(?:(?:\\b|\\B)";
        result += pattern.substr(start, end - start);
        result += L')';
        done = end;
    }
    result += pattern.substr(done);
    return result;
}

std::u16string PatternProblem(std::wstring_view pattern, std::regex_constants::error_type code,
                              Language language) {
    const Outline outline(pattern);
    // A fault of its kind only: the walk is no parser, and the library's word counts.
    const bool placed =
        code == std::regex_constants::error_paren && outline.WhatFault() != Outline::Fault::kNone;
    return Opening(language) +
           (placed ? Placed(outline, pattern, language) : CodeWords(code, language));
}

}  // namespace bw
