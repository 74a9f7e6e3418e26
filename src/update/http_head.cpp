#include "update/http_head.h"

#include <algorithm>
#include <charconv>

namespace bw {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

std::string_view Trimmed(std::string_view text) {
    const size_t first = text.find_first_not_of(kBlanks);
    if (first == text.npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool IsSameName(std::string_view a, std::string_view b) {
    const auto small = [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
    };
    return std::ranges::equal(a, b, {}, small, small);
}

// Digits only, and not more than fit.
std::optional<uint64_t> ReadNumber(std::string_view text) {
    uint64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

// Takes what stands before the mark, and the mark, off the text.
std::string_view TakeUntil(std::string_view& text, char mark) {
    const size_t at = std::min(text.find(mark), text.size());
    const std::string_view part = text.substr(0, at);
    text.remove_prefix(std::min(at + 1, text.size()));
    return part;
}

}  // namespace

void HttpHead::Read(std::string_view line) {
    if (line.starts_with("HTTP/")) {
        *this = {};
        TakeUntil(line, ' ');
        status_ = static_cast<int>(
            std::min<uint64_t>(ReadNumber(Trimmed(line).substr(0, 3)).value_or(0), 999));
        return;
    }
    const std::string_view name = TakeUntil(line, ':');
    const std::string_view value = Trimmed(line);
    // Twice with other values is as good as unreadable.
    const auto keep = [&](std::optional<std::string>& field) {
        field = !field || *field == value ? value : std::string_view();
    };
    if (IsSameName(name, "Content-Length")) keep(length_);
    if (IsSameName(name, "Content-Range")) keep(range_);
    if (IsSameName(name, "Location")) location_ = value;
    // A body in chunks has the length that its chunks have.
    if (IsSameName(name, "Transfer-Encoding")) isInChunks_ = true;
}

std::optional<uint64_t> HttpHead::Length() const {
    if (!length_ || isInChunks_) return std::nullopt;
    return ReadNumber(*length_);
}

bool HttpHead::IsRange(const ByteRange& range, uint64_t total) const {
    if (status_ != 206 || !range_ || range.size == 0) return false;
    std::string_view rest = *range_;
    if (!IsSameName(TakeUntil(rest, ' '), "bytes")) return false;
    const std::optional<uint64_t> first = ReadNumber(Trimmed(TakeUntil(rest, '-')));
    const std::optional<uint64_t> last = ReadNumber(Trimmed(TakeUntil(rest, '/')));
    return first == range.first && last == range.first + range.size - 1 &&
           (Trimmed(rest) == "*" || ReadNumber(Trimmed(rest)) == total);
}

}  // namespace bw
