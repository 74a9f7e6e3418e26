// What update.json says. Made by hand and fetched over whatever network there is, so anything may
// stand in it.
#pragma once

#include <map>
#include <string>
#include <string_view>

#include "language/language.h"

namespace bw {

// Texts by language: the keys are "zh-cn" and "en-us".
using LanguageTexts = std::map<std::string, std::u16string, std::less<>>;

struct UpdateRecord {
    std::u16string version{};    // of the program at `url`: four numbers, parted by points
    std::string url{};           // UTF-8
    std::u16string notify_id{};  // kept; nothing hangs on it
    bool force_update = false;
    LanguageTexts update_describe{};
};

// A key that is missing or has a value of another type leaves its field empty; so does text that
// isn't JSON, which the debug output is told of.
UpdateRecord ReadUpdateRecord(std::string_view json);

// The text for a language; empty where there is none.
std::u16string TextFor(const LanguageTexts& texts, Language language);

// For a person's eyes: what the update is about, as PlainText; and the start of a version, in one
// line.
std::u16string DescriptionOf(const UpdateRecord& record, Language language);
inline constexpr size_t kMostOfVersion = 40;  // 16-bit units; four numbers need 39 at the most
std::u16string ShownVersion(std::u16string_view version);

}  // namespace bw
