#include "builder/design_check/menu_screen.h"

#include <algorithm>

namespace bw {

MenuScreen::MenuScreen(const WorkingCopy& copy, Language language)
    : copy_(copy),
      places_{PpuAddress(copy.document.CaptionPos), PpuAddress(copy.document.ItemPos),
              PpuAddress(copy.document.PageNumberPos)},
      cells_{ConsoleCell(copy.document.CaptionPos), ConsoleCell(copy.document.ItemPos),
             ConsoleCell(copy.document.PageNumberPos)},
      step_(copy.ItemBlankLine ? 2 : 1) {
    settings_.CustomEnable = true;
    settings_.PageNumber = copy.ShowPageNumber;
    settings_.NameInsertRow = copy.ItemBlankLine;
    settings_.PageSize = static_cast<uint32_t>(std::max(1, copy.PageItemCount));
    misplaced_ = FindMisplacedParts(settings_, places_, copy.AllItemTextList.size(), language);
    const size_t room =
        IsOnScreen(ScreenPart::kList) ? RoomForNames(settings_, places_.list) : size_t{0};
    shownNames_ = static_cast<int32_t>(
        std::min({room, size_t{settings_.PageSize}, copy.AllItemTextList.size()}));
}

std::u16string_view MenuScreen::ShownCaption() const {
    if (!IsOnScreen(ScreenPart::kCaption)) return {};
    return std::u16string_view(copy_.Store().CaptionText)
        .substr(0, RoomBehind(ScreenPart::kCaption));
}

}  // namespace bw
