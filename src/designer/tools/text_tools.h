// The names of the games as the designer shows them, page by page, and commands on the texts of the
// screen. The result names the views that are out of date.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "designer/model/views.h"
#include "designer/model/working_copy.h"

namespace bw {

inline constexpr size_t kLongestCaption = 32;  // 16-bit units, as far as a window lets one type

// Takes the names of the menu, with their numbers, as the menu will show them: letters as capitals,
// characters from 128 on as question marks, an empty name as a blank. Shows the first page.
Views SetItems(WorkingCopy& copy, const std::vector<std::u16string>& names, int32_t itemsOnPage,
               bool blankLine);

enum class PageTurn { kFirst, kPrevious, kNext, kLast };

// Nothing happens beyond the first and the last page.
Views TurnPage(WorkingCopy& copy, PageTurn turn);

// What was typed into the caption's box. No step of the history.
Views SetCaption(WorkingCopy& copy, std::u16string_view text);

// A step of the history: a text joins the screen at its top left corner. An empty one doesn't.
Views AddText(WorkingCopy& copy, std::u16string_view text);

// Steps of the history: back to the defaults.
Views ClearTexts(WorkingCopy& copy);
Views ResetTexts(WorkingCopy& copy);  // caption, positions, cursors, and an empty screen
Views ResetAttributes(WorkingCopy& copy);
Views ResetPalette(WorkingCopy& copy, PatternTable table);
Views ResetDesign(WorkingCopy& copy);  // everything

}  // namespace bw
