// Where a setting stands: its key and its name, in the form in which stores compare them.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "support/text.h"

namespace bw {

using SettingPlace = std::pair<std::string, std::string>;

// ASCII case doesn't count, neither in keys nor in names.
inline SettingPlace PlaceOf(std::string_view key, std::string_view name) {
    const auto folded = [](std::string_view text) {
        std::string capitals(text);
        std::ranges::transform(capitals, capitals.begin(), [](char byte) {
            return static_cast<char>(AsciiUpper(static_cast<uint8_t>(byte)));
        });
        return capitals;
    };
    return {folded(key), folded(name)};
}

}  // namespace bw
