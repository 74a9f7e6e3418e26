#include "support/ini_file.h"

#include <algorithm>
#include <limits>

#include "support/files.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr std::u16string_view kWideBreak = u"\r\n";
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16Mark = "\xFF\xFE";

bool StartsWith(std::span<const uint8_t> bytes, std::string_view mark) {
    return bytes.size() >= mark.size() &&
           std::equal(mark.begin(), mark.end(), bytes.begin(),
                      [](char a, uint8_t b) { return static_cast<uint8_t>(a) == b; });
}

constexpr std::string_view kBreak = "\r\n";

std::u16string DecodeUtf16(std::span<const uint8_t> bytes) {
    std::u16string text;
    text.reserve(bytes.size() / 2);
    for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
        text += static_cast<char16_t>(bytes[i] | (bytes[i + 1] << 8));
    }
    return text;
}

// Calls visit(line) for each line.
template <typename Text, typename Visit>
void ForLines(Text rest, Text lineBreak, Visit visit) {
    while (!rest.empty()) {
        const size_t end = rest.find(lineBreak);
        visit(rest.substr(0, end));
        rest = end == rest.npos ? Text{} : rest.substr(end + lineBreak.size());
    }
}

}  // namespace

FileResult<> IniFile::Load(const std::filesystem::path& path, KeyFilter wanted) {
    const auto bytes = ReadFile(path);
    if (!bytes) return bytes.Problem();
    LoadFromMemory(*bytes, wanted);
    return {};
}

void IniFile::LoadFromMemory(std::span<const uint8_t> bytes, KeyFilter wanted) {
    std::u16string section;
    const auto addLine = [&](std::u16string_view line) {
        if (line.empty()) return;
        if (line.front() == u'[' && line.back() == u']') {
            section = line.substr(1, line.size() - 2);
            if (!section.empty() && wanted == nullptr) sections_[section];
            return;
        }
        const size_t equal = line.find(u'=');
        const std::u16string_view key = line.substr(0, equal);
        if (section.empty() || key.starts_with(u'#')) return;
        if (wanted != nullptr && !wanted(section, key)) return;
        const std::u16string_view value =
            equal == line.npos ? std::u16string_view{} : line.substr(equal + 1);
        sections_[section].try_emplace(std::u16string(key), value);
    };
    if (StartsWith(bytes, kUtf16Mark)) {
        const std::u16string text = DecodeUtf16(bytes.subspan(kUtf16Mark.size()));
        ForLines<std::u16string_view>(text, kWideBreak, addLine);
    } else {
        // Line by line, since the whole text in wide units may be large.
        if (StartsWith(bytes, kUtf8Mark)) bytes = bytes.subspan(kUtf8Mark.size());
        ForLines<std::string_view>({reinterpret_cast<const char*>(bytes.data()), bytes.size()},
                                   kBreak, [&](std::string_view line) { addLine(ToWide(line)); });
    }
}

const std::u16string* IniFile::Find(std::u16string_view section, std::u16string_view key) const {
    const auto found = sections_.find(section);
    if (found == sections_.end()) return nullptr;
    const auto entry = found->second.find(key);
    return entry == found->second.end() ? nullptr : &entry->second;
}

std::u16string IniFile::GetString(std::u16string_view section, std::u16string_view key,
                                  std::u16string_view fallback) const {
    const std::u16string* value = Find(section, key);
    return value != nullptr ? *value : std::u16string(fallback);
}

uint32_t IniFile::GetInt(std::u16string_view section, std::u16string_view key,
                         uint32_t fallback) const {
    const std::u16string* value = Find(section, key);
    if (value == nullptr) return fallback;
    std::u16string_view text = *value;
    text.remove_prefix(std::min(text.find_first_not_of(u" \t\n\v\f\r"), text.size()));
    const bool negative = text.starts_with(u'-');
    if (negative || text.starts_with(u'+')) text.remove_prefix(1);
    uint64_t number = 0;
    for (const char16_t unit : text) {
        if (unit < u'0' || unit > u'9') break;
        number = number * 10 + (unit - u'0');
        if (number > std::numeric_limits<uint32_t>::max()) {
            return std::numeric_limits<uint32_t>::max();
        }
    }
    return static_cast<uint32_t>(negative ? 0 - number : number);
}

void IniFile::SetString(std::u16string_view section, std::u16string_view key,
                        std::u16string_view value) {
    sections_[std::u16string(section)][std::u16string(key)] = value;
}

void IniFile::SetInt(std::u16string_view section, std::u16string_view key, uint32_t value) {
    SetString(section, key, ToWide(std::to_string(value)));
}

bool IniFile::Remove(std::u16string_view section, std::u16string_view key) {
    const auto found = sections_.find(section);
    if (found == sections_.end()) return false;
    if (key.empty()) {
        sections_.erase(found);
        return true;
    }
    const auto entry = found->second.find(key);
    if (entry == found->second.end()) return false;
    found->second.erase(entry);
    return true;
}

std::string IniFile::ToText() const {
    std::u16string text;
    const auto startLine = [&] {
        if (!text.empty()) text += kWideBreak;
    };
    for (const auto& [name, entries] : sections_) {
        startLine();
        text.append(u"[").append(name).append(u"]");
        for (const auto& [key, value] : entries) {
            startLine();
            text.append(key).append(u"=").append(value);
        }
    }
    return ToUtf8(text);
}

FileResult<> IniFile::Save(const std::filesystem::path& path) const {
    return WriteFile(path, std::string(kUtf8Mark) + ToText());
}

}  // namespace bw
