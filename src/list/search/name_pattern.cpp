// The two kinds of search: a text as it stands, and a regular expression of the standard library.
#include <functional>
#include <iterator>
#include <regex>
#include <utility>

#include "list/search/name_characters.h"
#include "list/search/name_search.h"
#include "list/search/regex_words.h"
#include "support/stack.h"
#include "support/text.h"

namespace bw {
namespace {

// What the library may use between two looks at the stack, plus what unwinding takes: an expression
// of as many states as the library is told to take at most (_GLIBCXX_REGEX_STATE_LIMIT, set for
// this file) recurses that deep without touching the name.
constexpr uintptr_t kStackReserve = 2 << 20;  // bytes

// A replacement may make a name so much longer: $` and $' multiply texts.
size_t ReplacedLimit(size_t nameSize) {
    return 4 * nameSize + 65536;  // 16-bit units
}

// Thrown by the parts below to the search that knows the words.
enum class Refusal { kTooDeep, kTooLong };

// Looked at in every step of a search, which a bad expression makes endless or endlessly deep.
class RunGuard {
  public:
    explicit RunGuard(const StopFlag& stop) : stop_(stop), lowest_(StackEnd() + kStackReserve) {}

    void Look() const {
        const bool tooDeep = StackPosition() < lowest_;
        if (stop_.load(std::memory_order_relaxed) || tooDeep) End(tooDeep);
    }

  private:
    // Apart, so that looking stays small.
    [[noreturn, gnu::noinline]] static void End(bool tooDeep) {
        if (tooDeep) throw Refusal::kTooDeep;
        throw SearchStopped{};
    }

    const StopFlag& stop_;
    uintptr_t lowest_;
};

// A place in a name. The library compares places in each step that takes a character, and assigns
// them in each that enters a group or repeats, so these are where the guard looks.
class Place {
  public:
    using iterator_category = std::bidirectional_iterator_tag;
    using value_type = wchar_t;
    using difference_type = std::ptrdiff_t;
    using pointer = const wchar_t*;
    using reference = const wchar_t&;

    Place() = default;
    Place(const wchar_t* at, const RunGuard& guard) : at_(at), guard_(&guard) {}
    Place(const Place& other) = default;
    ~Place() = default;
    Place& operator=(Place other) {
        other.Look();
        at_ = other.at_;
        guard_ = other.guard_;
        return *this;
    }

    reference operator*() const { return *at_; }
    Place& operator++() {
        ++at_;
        return *this;
    }
    Place operator++(int) {
        Place old = *this;
        ++at_;
        return old;
    }
    Place& operator--() {
        --at_;
        return *this;
    }
    Place operator--(int) {
        Place old = *this;
        --at_;
        return old;
    }
    friend bool operator==(const Place& a, const Place& b) {
        a.Look();
        return a.at_ == b.at_;
    }

  private:
    void Look() const {
        if (guard_ != nullptr) guard_->Look();
    }

    const wchar_t* at_ = nullptr;
    const RunGuard* guard_ = nullptr;
};

// A type of our own, so that the library's templates with this file's state limit aren't mixed up
// with those of others. Texts compare by their characters, in no locale's order.
struct NameTraits : std::regex_traits<wchar_t> {
    template <typename Iterator>
    string_type transform(Iterator first, Iterator last) const {
        return string_type(first, last);
    }
};
using NameRegex = std::basic_regex<wchar_t, NameTraits>;

// Takes the new name, as an output iterator of the library.
class NewName {
  public:
    using iterator_category = std::output_iterator_tag;
    using value_type = void;
    using difference_type = std::ptrdiff_t;
    using pointer = void;
    using reference = void;

    NewName(std::u16string& name, size_t limit, const NameCharacters& characters,
            const RunGuard& guard)
        : name_(&name), limit_(limit), characters_(&characters), guard_(&guard) {}

    NewName& operator*() { return *this; }
    NewName& operator++() { return *this; }
    NewName operator++(int) { return *this; }
    NewName& operator=(wchar_t character) {
        guard_->Look();
        if (name_->size() >= limit_) throw Refusal::kTooLong;
        characters_->Append(character, *name_);
        return *this;
    }

  private:
    std::u16string* name_;
    size_t limit_;
    const NameCharacters* characters_;
    const RunGuard* guard_;
};

std::u16string RefusalWords(Refusal refusal, std::u16string_view name, Language language) {
    constexpr size_t kShown = 40;  // units of a name that may be megabytes long
    const std::u16string shown = name.size() <= kShown
                                     ? std::u16string(name)
                                     : std::u16string(name.substr(0, kShown)) + u"…";
    if (refusal == Refusal::kTooLong) {
        return FormatText(LoadText(TextId::kNameTooLong, language), shown,
                          ReplacedLimit(name.size()));
    }
    return FormatText(LoadText(TextId::kRegexTooInvolved, language), shown, name.size());
}

class RegexPattern final : public NamePattern {
    template <typename Work>
    auto Guarded(std::u16string_view name, const StopFlag& stop, const Work& work) const {
        try {
            NameCharacters characters = characters_;
            const std::wstring text = characters.From(name);
            const RunGuard guard(stop);
            return work(Place(text.data(), guard), Place(text.data() + text.size(), guard),
                        characters, guard);
        } catch (const Refusal refusal) {
            throw SearchStopped{RefusalWords(refusal, name, language_)};
        } catch (const std::regex_error&) {
            // Libraries may give up by themselves.
            throw SearchStopped{RefusalWords(Refusal::kTooDeep, name, language_)};
        }
    }

  public:
    // `characters` are those that `find` came from.
    RegexPattern(const std::wstring& find, std::u16string_view replace, NameCharacters characters,
                 Language language)
        : characters_(std::move(characters)),
          regex_(WithWatchedReferences(find), std::regex_constants::ECMAScript),
          replace_(characters_.From(replace)),
          language_(language) {
        // Such an expression can match at the start alone; the library would try every place.
        if (find.starts_with(L'^') && find.find(L'|') == std::wstring::npos) {
            flags_ = std::regex_constants::match_continuous;
        }
    }

    bool Matches(std::u16string_view name, const StopFlag& stop) const override {
        return Guarded(name, stop,
                       [&](Place begin, Place end, const NameCharacters&, const RunGuard&) {
                           return std::regex_search(begin, end, regex_, flags_);
                       });
    }

    std::optional<std::u16string> Replaced(std::u16string_view name,
                                           const StopFlag& stop) const override {
        using Result = std::optional<std::u16string>;
        const auto work = [&](Place begin, Place end, const NameCharacters& characters,
                              const RunGuard& guard) -> Result {
            std::regex_iterator<Place, wchar_t, NameTraits> match(begin, end, regex_, flags_);
            const decltype(match) none;
            if (match == none) return std::nullopt;
            std::u16string text;
            NewName out(text, ReplacedLimit(name.size()), characters, guard);
            Place rest = begin;
            for (; match != none; ++match) {
                out = std::copy(match->prefix().first, match->prefix().second, out);
                out = match->format(out, replace_.data(), replace_.data() + replace_.size());
                rest = (*match)[0].second;
            }
            std::copy(rest, end, out);
            return text;
        };
        return Guarded(name, stop, work);
    }

  private:
    NameCharacters characters_;
    NameRegex regex_;
    std::wstring replace_;
    Language language_;
    std::regex_constants::match_flag_type flags_ = std::regex_constants::match_default;
};

class LiteralPattern final : public NamePattern {
  public:
    LiteralPattern(std::u16string_view find, std::u16string replace, Language language)
        : find_(FoldCase(find)),
          replace_(std::move(replace)),
          language_(language),
          searcher_(find_.cbegin(), find_.cend()) {}
    LiteralPattern(const LiteralPattern&) = delete;  // the searcher refers to find_
    LiteralPattern& operator=(const LiteralPattern&) = delete;

    // An empty text is found at the start of every name.
    bool Matches(std::u16string_view name, const StopFlag& stop) const override {
        RunGuard(stop).Look();
        const std::u16string folded = FoldCase(name);
        return std::search(folded.begin(), folded.end(), searcher_) != folded.end() ||
               find_.empty();
    }

    // Goes on behind the replaced text, so that a replacement may hold the searched text. An empty
    // text, which is everywhere, replaces nothing.
    std::optional<std::u16string> Replaced(std::u16string_view name,
                                           const StopFlag& stop) const override {
        const RunGuard guard(stop);
        guard.Look();
        if (find_.empty()) return std::nullopt;
        const std::u16string folded = FoldCase(name);
        std::u16string result;
        auto done = folded.begin();
        const auto copyTo = [&](std::u16string::const_iterator end) {
            result += name.substr(static_cast<size_t>(done - folded.begin()),
                                  static_cast<size_t>(end - done));
        };
        for (auto hit = std::search(done, folded.end(), searcher_); hit != folded.end();
             hit = std::search(done, folded.end(), searcher_)) {
            guard.Look();
            copyTo(hit);
            result += replace_;
            if (result.size() > ReplacedLimit(name.size())) {
                throw SearchStopped{RefusalWords(Refusal::kTooLong, name, language_)};
            }
            done = hit + static_cast<std::ptrdiff_t>(find_.size());
        }
        if (done == folded.begin()) return std::nullopt;
        copyTo(folded.end());
        return result;
    }

  private:
    // Its worst case is linear, also for long texts of one repeated character.
    using Searcher = std::boyer_moore_searcher<std::u16string::const_iterator>;

    std::u16string find_;
    std::u16string replace_;
    Language language_;
    Searcher searcher_;
};

}  // namespace

std::optional<NamePattern::Problem> NamePattern::Compile(const FindRecord& record,
                                                         Language language,
                                                         std::unique_ptr<NamePattern>& out) {
    if (!record.regex) {
        out = std::make_unique<LiteralPattern>(record.find, record.replace, language);
        return std::nullopt;
    }
    NameCharacters characters(record.find);
    const std::wstring find = characters.From(record.find);
    if (std::optional<std::u16string> tooBig = PatternTooBig(find, language)) {
        return Problem{*std::move(tooBig)};
    }
    try {
        out = std::make_unique<RegexPattern>(find, record.replace, std::move(characters), language);
    } catch (const std::regex_error& error) {
        return Problem{PatternProblem(find, error.code(), language)};
    }
    return std::nullopt;
}

}  // namespace bw
