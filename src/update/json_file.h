// The two files of the host, read key by key without keeping anything else of them.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "update/update_record.h"

namespace bw {

// Where a key's value goes, and by that which type it must have. A narrow text is valid UTF-8.
using JsonTarget =
    std::variant<std::monostate, bool*, uint32_t*, std::string*, std::u16string*, LanguageTexts*>;

struct JsonKey {
    std::string_view name;
    JsonTarget target;
};

// Fills the targets from the file's one object; what has no value of the right type there stays as
// it is, and of equal keys the first counts. False if it isn't such a file, which the debug output
// is told of; some targets may be filled even so. Needs a few bytes for each level of nesting, and
// no stack for it.
bool ReadJsonFile(std::string_view json, std::span<const JsonKey> keys);

// The key of a language's text.
std::string_view LanguageKey(Language language);

}  // namespace bw
