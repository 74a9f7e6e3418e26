// What a check of a design has to say, and where in the designer that is.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <variant>

#include "designer/model/working_copy.h"
#include "language/language.h"

namespace bw {

enum class FindingSeverity : uint8_t {
    kError,    // a build refuses it
    kWarning,  // the console doesn't show it, or shows it otherwise than the designer
    kNote,     // may be meant
};

// What stands once on the screen.
enum class ScreenObject : uint8_t { kCaption, kList, kPageNumber, kCursor };
struct ScreenCell {
    int32_t column = 0;  // 0 to 31
    int32_t row = 0;     // 0 to 29
    bool operator==(const ScreenCell&) const = default;
};
struct TableTile {
    PatternTable table = PatternTable::kBackground;
    uint8_t number = 0;
    bool operator==(const TableTile&) const = default;
};
struct PaletteEntry {
    PatternTable side = PatternTable::kBackground;
    uint8_t entry = 0;  // 0 to 15
    bool operator==(const PaletteEntry&) const = default;
};
struct StripCharacter {
    uint8_t code = 0;  // 32 to 95
    bool operator==(const StripCharacter&) const = default;
};
struct PlacedSprite {
    size_t index = 0;  // in SpriteTileList
    bool operator==(const PlacedSprite&) const = default;
};
struct PlacedText {
    size_t index = 0;  // in CustomText
    bool operator==(const PlacedText&) const = default;
};

using DesignPlace = std::variant<ScreenObject, ScreenCell, TableTile, PaletteEntry, StripCharacter,
                                 PlacedSprite, PlacedText>;

struct DesignFinding {
    FindingSeverity severity = FindingSeverity::kWarning;
    TextId kind{};        // what `text` was made from
    std::u16string text;  // a sentence: where, what, and what to do about it
    DesignPlace place;
    bool operator==(const DesignFinding&) const = default;
};

// "error", "warning", "note" in the reader's language.
std::u16string SeverityText(FindingSeverity severity, Language language);

}  // namespace bw
