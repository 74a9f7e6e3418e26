#include "list/collection/name_tags.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace bw {
namespace {

using View = std::u16string_view;

constexpr View kOpening = u"([（［【";
constexpr View kClosing = u")]）］】";

bool IsBlank(char16_t unit) {
    return unit == u' ' || unit == u'\t' || unit == 0xA0 || unit == 0x3000;
}

View Trimmed(View text) {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

// The length of the tag at the text's start, or nothing if it isn't closed.
std::optional<size_t> TagLength(View text) {
    size_t depth = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        if (kOpening.find(text[i]) != View::npos) ++depth;
        if (kClosing.find(text[i]) != View::npos && --depth == 0) return i + 1;
    }
    return std::nullopt;
}

struct Region {
    const char* name;
    std::array<const char*, 3> codes;  // of GoodTools and of ISO 3166, in these letters only
};
constexpr Region kRegions[] = {
    {"USA", {"U", "US", "NTSC"}},
    {"World", {"W", "", ""}},
    {"Europe", {"E", "EU", "PAL"}},
    {"Japan", {"J", "JP", ""}},
    {"Asia", {"As", "", ""}},
    {"China", {"C", "Ch", "CN"}},
    {"Taiwan", {"TW", "", ""}},
    {"Hong Kong", {"HK", "", ""}},
    {"Korea", {"K", "KR", ""}},
    {"Brazil", {"B", "BR", ""}},
    {"Australia", {"A", "AU", ""}},
    {"Canada", {"FC", "CA", ""}},
    {"France", {"F", "Fr", "FR"}},
    {"Germany", {"G", "Gr", "DE"}},
    {"Spain", {"S", "ES", ""}},
    {"Italy", {"I", "IT", ""}},
    {"Sweden", {"Sw", "SE", ""}},
    {"Netherlands", {"D", "NL", ""}},
    {"United Kingdom", {"UK", "GB", ""}},
    {"Russia", {"R", "RU", ""}},
    {"Norway", {"NO", "", ""}},
    {"Denmark", {"DK", "", ""}},
    {"Finland", {"FI", "", ""}},
    {"Scandinavia", {"", "", ""}},
    {"Poland", {"PL", "", ""}},
    {"Portugal", {"PT", "", ""}},
    {"Greece", {"GR", "", ""}},
    {"Mexico", {"MX", "", ""}},
    {"Argentina", {"AR", "", ""}},
    {"Latin America", {"", "", ""}},
    {"India", {"IN", "", ""}},
};

// ISO 639.
constexpr const char* kLanguages[] = {"en", "ja", "fr", "de", "es", "it",   "nl",  "pt", "sv",
                                      "no", "da", "fi", "zh", "ko", "pl",   "ru",  "cs", "hu",
                                      "el", "tr", "ar", "he", "ca", "hans", "hant"};

constexpr const char* kUnfinished[] = {"alpha",  "beta",     "proto",   "prototype",
                                       "demo",   "promo",    "preview", "kiosk",
                                       "sample", "possible", "pre",     "prerelease"};

// ASCII; every other unit becomes a sign that stands in no table.
std::string Plain(View text) {
    std::string plain;
    for (const char16_t unit : Trimmed(text))
        plain += unit < 0x80 ? static_cast<char>(unit) : '\x7F';
    return plain;
}

std::string Lower(std::string text) {
    std::ranges::transform(text, text.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + ('a' - 'A')) : letter;
    });
    return text;
}

bool IsDigit(char letter) {
    return letter >= '0' && letter <= '9';
}

// The parts between the signs, without the blanks at their ends.
std::vector<std::string> Parts(const std::string& text, std::string_view signs) {
    std::vector<std::string> parts;
    for (size_t start = 0; start <= text.size();) {
        const size_t end = std::min(text.find_first_of(signs, start), text.size());
        const size_t first = std::min(text.find_first_not_of(' ', start), end);
        size_t last = end;
        while (last > first && text[last - 1] == ' ')
            --last;
        parts.push_back(text.substr(first, last - first));
        start = end + 1;
    }
    return parts;
}

const char* RegionNamed(const std::string& word) {
    const std::string lower = Lower(word);
    for (const Region& region : kRegions) {
        if (Lower(region.name) == lower) return region.name;
        if (!word.empty() &&
            std::ranges::find(region.codes, std::string_view(word)) != region.codes.end()) {
            return region.name;
        }
    }
    return nullptr;
}

// "JUE" is three of GoodTools' regions.
std::vector<std::string> RegionLetters(const std::string& word) {
    constexpr std::string_view kLetters = "JUEWKB";
    if (word.size() < 2 || word.find_first_not_of(kLetters) != word.npos) return {};
    std::vector<std::string> regions;
    for (const char letter : word)
        regions.emplace_back(RegionNamed(std::string(1, letter)));
    return regions;
}

std::vector<std::string> RegionsIn(const std::string& text) {
    std::vector<std::string> regions;
    for (const std::string& part : Parts(text, ",-+")) {
        if (const char* region = RegionNamed(part)) {
            regions.emplace_back(region);
            continue;
        }
        const std::vector<std::string> several = RegionLetters(part);
        if (several.empty()) return {};
        regions.insert(regions.end(), several.begin(), several.end());
    }
    return regions;
}

bool IsLanguage(const std::string& text) {
    if (text.size() > 1 && text[0] == 'M') {
        return std::all_of(text.begin() + 1, text.end(), IsDigit);
    }
    bool first = true;
    for (const std::string& part : Parts(text, ",-+")) {
        const bool language =
            std::ranges::find(kLanguages, std::string_view(Lower(part))) != std::end(kLanguages);
        if (!language && (first || RegionNamed(part) == nullptr)) return false;  // "Pt-BR"
        first = false;
    }
    return true;
}

// What is behind one of the words and the blanks and points after it.
std::optional<std::string> Behind(const std::string& text,
                                  std::initializer_list<std::string_view> words) {
    for (const std::string_view word : words) {
        if (!text.starts_with(word)) continue;
        const size_t at = text.find_first_not_of(" .", word.size());
        return at == text.npos ? std::string() : text.substr(at);
    }
    return std::nullopt;
}

std::string FirstWord(const std::string& text) {
    return text.substr(0, text.find_first_of(" -,.0123456789"));
}

bool IsUnfinished(const std::string& lower) {
    const std::string word = FirstWord(lower);
    return std::ranges::find(kUnfinished, std::string_view(word)) != std::end(kUnfinished);
}

bool IsRevision(const std::string& lower) {
    if (IsUnfinished(lower)) return true;
    if (const auto rest = Behind(lower, {"revision", "rev"})) {
        return rest->empty() || IsDigit(rest->front()) || rest->size() == 1;
    }
    const auto rest = Behind(lower, {"prg", "version", "ver", "v"});
    return rest && !rest->empty() && IsDigit(rest->front());
}

bool IsDumpMark(const std::string& text) {
    const std::string lower = Lower(text);
    if (text.starts_with("!") || text.starts_with("T+") || text.starts_with("T-") ||
        lower.starts_with("bad") || lower.starts_with("hack")) {
        return true;
    }
    constexpr std::string_view kMarks = "abcfhmoptuxz";
    const size_t length = text.starts_with("cr") || text.starts_with("tr") ? 2 : 1;
    if (kMarks.find(text[0]) == kMarks.npos) return false;
    if (text.size() == length) return true;
    const char next = text[length];
    return IsDigit(next) || next == ' ' || next == '+' || (next >= 'A' && next <= 'Z');
}

bool IsWorseKind(const std::string& lower) {
    const std::string word = FirstWord(lower);
    return word == "hack" || lower.ends_with(" hack") || word == "pirate" || word == "bad" ||
           word == "overdump";
}

TagKind KindOf(const std::string& text, bool square) {
    constexpr size_t kLongest = 80;  // units; longer ones are none of these
    if (text.empty() || text.size() > kLongest) return TagKind::kOther;
    if (square) return IsDumpMark(text) ? TagKind::kDump : TagKind::kOther;
    if (!RegionsIn(text).empty()) return TagKind::kRegion;
    if (IsLanguage(text)) return TagKind::kLanguage;
    const std::string lower = Lower(text);
    if (IsRevision(lower)) return TagKind::kRevision;
    return IsWorseKind(lower) ? TagKind::kDump : TagKind::kOther;
}

}  // namespace

std::optional<NamePiece> NamePieces::Next() {
    if (rest_.empty()) return std::nullopt;
    NamePiece piece{rest_};
    const bool opens = kOpening.find(rest_[0]) != View::npos;
    const std::optional<size_t> length = opens ? TagLength(rest_) : std::nullopt;
    if (opens && (length || titleBegun_)) {
        piece = {rest_.substr(0, length.value_or(rest_.size())), true};
    } else {
        piece.text = rest_.substr(0, rest_.find_first_of(kOpening, 1));
        titleBegun_ = titleBegun_ || !Trimmed(piece.text).empty();
    }
    rest_.remove_prefix(piece.text.size());
    return piece;
}

NameTag ReadTag(View written) {
    NameTag tag;
    tag.square = written[0] != u'(' && written[0] != u'（';
    written.remove_prefix(1);
    if (!written.empty() && kClosing.find(written.back()) != View::npos) written.remove_suffix(1);
    tag.text = written;
    tag.kind = KindOf(Plain(written), tag.square);
    return tag;
}

std::vector<std::string> RegionsOf(View text) {
    return RegionsIn(Plain(text));
}

int RevisionOf(const NameTag& tag) {
    constexpr int kMajor = 1000;
    constexpr int kBefore = -1000 * kMajor;
    const std::string lower = Lower(Plain(tag.text));
    int major = 0;
    int minor = 0;
    const size_t digit = lower.find_first_of("0123456789");
    const auto number = [&](size_t at) {
        int value = 0;
        for (; at < lower.size() && IsDigit(lower[at]) && value < kMajor / 10; ++at)
            value = value * 10 + (lower[at] - '0');
        return value;
    };
    if (digit != lower.npos) {
        major = number(digit);
        const size_t point = lower.find('.', digit);
        if (point != lower.npos) minor = number(point + 1);
    } else if (const auto rest = Behind(lower, {"revision", "rev"}); rest && rest->size() == 1) {
        major = rest->front() - 'a' + 1;
    }
    if (IsUnfinished(lower)) return kBefore + major * kMajor + minor;
    // "V1.0" is the first edition, as "Rev 0" is.
    const bool version = lower.starts_with('v');
    return (major - (version ? 1 : 0)) * kMajor + minor;
}

TaggedName SplitTags(View name) {
    TaggedName split;
    NamePieces pieces(name);
    while (const std::optional<NamePiece> piece = pieces.Next()) {
        if (piece->isTag) {
            split.tags.push_back(ReadTag(piece->text));
            continue;
        }
        const View text = Trimmed(piece->text);
        if (!split.title.empty() && !text.empty()) split.title += u' ';
        split.title += text;
    }
    if (split.title.empty()) return {std::u16string(name), {}};
    return split;
}

}  // namespace bw
