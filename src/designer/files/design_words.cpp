#include "designer/files/design_words.h"

#include <charconv>
#include <utility>

#include "support/numbers.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kBlanks = " \t\r";
constexpr uint8_t kUnitDigits = 4;

// The place of the closing quote in a text that begins behind the opening one.
size_t ClosingQuote(std::string_view text) {
    for (size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '"') return at;
        if (text[at] == '\\') ++at;
    }
    return std::string_view::npos;
}

bool IsLead(char16_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
bool IsTrail(char16_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

// The unit of an escape's digits.
std::optional<char16_t> EscapedUnit(std::string_view digits) {
    uint16_t unit = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stopped, error] = std::from_chars(digits.data(), end, unit, 16);
    if (digits.size() != kUnitDigits || error != std::errc() || stopped != end) return std::nullopt;
    return static_cast<char16_t>(unit);
}

}  // namespace

DesignLines::DesignLines(std::string_view text) : rest_(text) {
    if (rest_.starts_with(kByteOrderMark)) rest_.remove_prefix(kByteOrderMark.size());
}

std::optional<std::vector<DesignWord>> DesignLines::Next() {
    std::vector<DesignWord> words;
    while (problem_.empty() && !rest_.empty()) {
        ++number_;
        const size_t end = std::min(rest_.find('\n'), rest_.size());
        const std::string_view line = rest_.substr(0, end);
        rest_.remove_prefix(std::min(end + 1, rest_.size()));
        if (Split(line, words) && !words.empty()) return words;
    }
    return std::nullopt;
}

bool DesignLines::Split(std::string_view line, std::vector<DesignWord>& words) {
    while (true) {
        line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size()));
        if (line.empty() || line[0] == '#') return true;
        const bool quoted = line[0] == '"';
        if (quoted) line.remove_prefix(1);
        const size_t end =
            quoted ? ClosingQuote(line) : std::min(line.find_first_of(kBlanks), line.size());
        if (end == std::string_view::npos) {
            problem_ = "a quoted text doesn't end on its line";
            return false;
        }
        words.push_back({line.substr(0, end), quoted});
        line.remove_prefix(quoted ? end + 1 : end);
        if (quoted && !line.empty() && kBlanks.find(line[0]) == std::string_view::npos) {
            problem_ = "a blank was expected behind the closing quote";
            return false;
        }
    }
}

std::optional<std::u16string> Unquoted(std::string_view text) {
    std::u16string wide;
    while (!text.empty()) {
        const std::string_view plain = text.substr(0, text.find('\\'));
        const std::u16string units = ToWide(plain);
        if (ToUtf8(units) != plain) return std::nullopt;
        wide += units;
        text.remove_prefix(plain.size());
        if (text.empty()) break;
        const char escape = text.size() > 1 ? text[1] : '\0';
        if (escape == 'u') {
            const auto unit = EscapedUnit(text.substr(2, kUnitDigits));
            if (!unit) return std::nullopt;
            wide += *unit;
            text.remove_prefix(2 + kUnitDigits);
        } else if (escape == '"' || escape == '\\') {
            wide += static_cast<char16_t>(escape);
            text.remove_prefix(2);
        } else {
            return std::nullopt;
        }
    }
    return wide;
}

std::string Quoted(std::u16string_view text) {
    std::string quoted = "\"";
    for (size_t at = 0; at < text.size(); ++at) {
        const char16_t unit = text[at];
        const bool pair = IsLead(unit) && at + 1 < text.size() && IsTrail(text[at + 1]);
        const bool alone = !pair && (IsLead(unit) || IsTrail(unit));
        if (unit < 0x20 || unit == 0x7F || alone) {
            quoted += "\\u";
            AppendHex(quoted, unit, int{kUnitDigits});
        } else if (unit == '"' || unit == '\\') {
            quoted += '\\';
            quoted += static_cast<char>(unit);
        } else {
            quoted += ToUtf8(text.substr(at, pair ? 2 : 1));
            at += pair ? 1 : 0;
        }
    }
    return quoted + '"';
}

}  // namespace bw
