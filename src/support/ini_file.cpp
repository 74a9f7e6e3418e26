#include "support/ini_file.h"

#include <algorithm>
#include <limits>

#include "support/files.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr std::u16string_view kBreak = u"\r\n";
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

bool StartsWith(std::span<const uint8_t> bytes, std::string_view mark) {
    return bytes.size() >= mark.size() &&
           std::equal(mark.begin(), mark.end(), bytes.begin(),
                      [](char a, uint8_t b) { return static_cast<uint8_t>(a) == b; });
}

std::u16string Decode(std::span<const uint8_t> bytes) {
    if (StartsWith(bytes, "\xFF\xFE")) {
        std::u16string text;
        text.reserve(bytes.size() / 2);
        for (size_t i = 2; i + 1 < bytes.size(); i += 2) {
            text += static_cast<char16_t>(bytes[i] | (bytes[i + 1] << 8));
        }
        return text;
    }
    if (StartsWith(bytes, kUtf8Mark)) bytes = bytes.subspan(kUtf8Mark.size());
    return ToWide({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}

// The text in front of the next line break; `rest` continues behind it.
std::u16string_view TakeLine(std::u16string_view& rest) {
    const size_t end = rest.find(kBreak);
    const std::u16string_view line = rest.substr(0, end);
    rest = end == rest.npos ? std::u16string_view{} : rest.substr(end + kBreak.size());
    return line;
}

}  // namespace

bool IniFile::Load(const std::filesystem::path& path) {
    const auto bytes = ReadFile(path);
    if (bytes) LoadFromMemory(*bytes);
    return bytes.has_value();
}

void IniFile::LoadFromMemory(std::span<const uint8_t> bytes) {
    const std::u16string text = Decode(bytes);
    Section* section = nullptr;
    for (std::u16string_view rest = text; !rest.empty();) {
        const std::u16string_view line = TakeLine(rest);
        if (line.empty()) continue;
        if (line.front() == u'[' && line.back() == u']') {
            const std::u16string name(line.substr(1, line.size() - 2));
            section = name.empty() ? nullptr : &sections_[name];
            continue;
        }
        const size_t equal = line.find(u'=');
        const std::u16string_view key = line.substr(0, equal);
        if (section == nullptr || key.starts_with(u'#')) continue;
        const std::u16string_view value =
            equal == line.npos ? std::u16string_view{} : line.substr(equal + 1);
        section->try_emplace(std::u16string(key), value);
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
        if (!text.empty()) text += kBreak;
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

bool IniFile::Save(const std::filesystem::path& path) const {
    return WriteFile(path, std::string(kUtf8Mark) + ToText());
}

}  // namespace bw
