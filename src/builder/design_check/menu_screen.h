// What the menu writes on a design's screen while it runs, and where the console shows it.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "builder/input/build_settings.h"
#include "builder/layout/build_checks.h"
#include "designer/model/working_copy.h"
#include "language/language.h"

namespace bw {

// Lives no longer than the working copy. Places come from files and may be any number; the cells
// are those that the console makes of them.
class MenuScreen {
  public:
    MenuScreen(const WorkingCopy& copy, Language language);

    // As a build would get them.
    const BuildSettings& Settings() const { return settings_; }
    const ScreenPlaces& Places() const { return places_; }

    // The parts that a build refuses.
    std::span<const MisplacedPart> Misplaced() const { return misplaced_; }
    bool IsOnScreen(ScreenPart part) const {
        return std::ranges::find(misplaced_, part, &MisplacedPart::part) == misplaced_.end();
    }

    // The cell of the first character of a part on the screen.
    const Pos& Cell(ScreenPart part) const { return cells_[static_cast<size_t>(part)]; }

    // The names of the fullest page that have rows on the screen, 0 to 30, and their rows.
    int32_t ShownNames() const { return shownNames_; }
    // The names of a page that the cursor can stand at; one where there are no names yet.
    int32_t CursorStops() const { return shownNames_ == 0 ? 1 : shownNames_; }
    // How far below its place the cursor stands there, pixels.
    int32_t BelowFirst(int32_t onPage) const { return onPage * step_ * kTilePixels; }
    int32_t RowOfName(int32_t onPage) const { return Cell(ScreenPart::kList).Y + onPage * step_; }
    // What of a name or of the caption has columns on the screen.
    std::u16string_view ShownName(std::u16string_view name) const {
        return name.substr(0, RoomBehind(ScreenPart::kList));
    }
    std::u16string_view ShownCaption() const;
    // Up to the screen's right edge.
    size_t RoomBehind(ScreenPart part) const {
        return static_cast<size_t>(kScreenColumns - Cell(part).X);
    }

  private:
    const WorkingCopy& copy_;
    BuildSettings settings_;
    ScreenPlaces places_;
    std::vector<MisplacedPart> misplaced_;
    std::array<Pos, 3> cells_;
    int32_t step_;
    int32_t shownNames_;
};

}  // namespace bw
