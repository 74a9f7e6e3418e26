// What lies under the pointer: where that is in the console's memory, and what it shows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "designer/gestures/designer_layout.h"
#include "designer/model/working_copy.h"

namespace bw {

enum class ScreenText { kCaption, kPageNumber, kList, kPlacedText };

// A character that the menu, or a text of the design, writes into a cell of the screen.
struct ScreenCharacter {
    char16_t character = 0;
    ScreenText of = ScreenText::kCaption;
};

struct PointerPlace {
    Control view = Control::kNameTable;
    Pos cell;                                // in the cells that the view is drawn in
    std::optional<uint8_t> tile;             // its number, of the table that the view is about
    std::optional<uint16_t> address;         // of video memory: the cell, tile, row or entry
    std::optional<uint16_t> attributes;      // the address of the attribute byte
    std::optional<int> palette;              // sub-palette 0 to 3
    std::optional<char16_t> character;       // of a strip
    std::optional<ScreenCharacter> written;  // on the screen
    std::optional<size_t> sprite;            // the topmost one, from 0, as the list has them
    bool cursor = false;                     // the list's cursor lies here
    std::optional<int> index;                // colour index 0 to 3 of the tile editor's pixel
    std::optional<uint8_t> colour;           // number of the console's colour
};

// `at` in client pixels of the designer's window; nothing beside all views. Layers that aren't
// shown have nothing there.
std::optional<PointerPlace> PlaceUnder(const WorkingCopy& copy, const DesignerLayout& layout,
                                       Point at);

}  // namespace bw
