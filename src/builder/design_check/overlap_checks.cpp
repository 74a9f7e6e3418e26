// Texts, names and page number over each other, and the cursor over them or outside the screen.
#include <algorithm>
#include <array>
#include <optional>

#include "builder/design_check/console_sprites.h"
#include "builder/design_check/design_checks.h"
#include "builder/tables/design_compile.h"

namespace bw {
namespace {

constexpr FindingSeverity kWarning = FindingSeverity::kWarning;

// What a cell of the screen shows: nothing, or an object in the order in which they were laid.
enum Owner : uint32_t { kNobody, kOwnedByList, kOwnedByCaption, kOwnedByPageNumber, kFirstText };

class OverlapCheck {
  public:
    OverlapCheck(const CheckedDesign& design, FindingList& findings)
        : copy_(design.copy), screen_(design.screen), findings_(findings) {}

    void Run() {
        LayList();
        Lay(screen_.Cell(ScreenPart::kCaption), screen_.ShownCaption(), kOwnedByCaption,
            ScreenObject::kCaption);
        if (copy_.ShowPageNumber && screen_.IsOnScreen(ScreenPart::kPageNumber)) {
            const size_t columns =
                PageNumberColumns(screen_.Settings(), copy_.AllItemTextList.size());
            Lay(screen_.Cell(ScreenPart::kPageNumber), std::u16string(columns, u'0'),
                kOwnedByPageNumber, ScreenObject::kPageNumber);
        }
        const std::vector<TextItem>& texts = copy_.Store().CustomText;
        for (size_t i = 0; i < texts.size(); ++i) {
            const ShownText shown = ShownPart(texts[i]);
            Lay({static_cast<int32_t>(shown.column), texts[i].Y}, shown.text,
                kFirstText + static_cast<uint32_t>(i), PlacedText{i});
        }
        CheckCursor();
    }

  private:
    // The names of all pages together.
    void LayList() {
        const auto shown = static_cast<size_t>(screen_.ShownNames());
        const size_t pageSize = screen_.Settings().PageSize;
        if (shown == 0) return;
        std::array<uint32_t, kScreenRows> columns{};  // a bit for each, the first name's column 0
        size_t onPage = 0;
        for (const std::u16string& name : copy_.AllItemTextList) {
            if (onPage < shown) {
                uint32_t bit = 1;
                for (const char16_t unit : screen_.ShownName(name)) {
                    if (unit != u' ') columns[onPage] |= bit;
                    bit <<= 1;
                }
            }
            if (++onPage == pageSize) onPage = 0;
        }
        const int32_t left = screen_.Cell(ScreenPart::kList).X;
        for (size_t name = 0; name < shown; ++name) {
            const int32_t row = screen_.RowOfName(static_cast<int32_t>(name));
            for (int32_t column = left; column < kScreenColumns; ++column)
                if ((columns[name] >> (column - left) & 1) != 0) At(column, row) = kOwnedByList;
        }
    }

    // Tells the first cell that is taken already. What leaves the row goes on in the next one.
    void Lay(const Pos& cell, std::u16string_view text, uint32_t owner, const DesignPlace& place) {
        uint32_t covered = kNobody;
        for (size_t i = 0; i < text.size(); ++i) {
            const int64_t at = int64_t{cell.Y} * kScreenColumns + cell.X + static_cast<int64_t>(i);
            if (text[i] == u' ' || at < 0 || at >= std::ssize(cells_)) continue;
            uint32_t& there = cells_[static_cast<size_t>(at)];
            if (there == kNobody) {
                there = owner;
            } else if (covered == kNobody && there != owner) {
                covered = there;
                findings_.Add(
                    kWarning, TextId::kFindingOverlap, place, at % kScreenColumns,
                    at / kScreenColumns, [&] { return NameOf(owner); },
                    [&] { return NameOf(covered); });
            }
        }
    }

    std::u16string NameOf(uint32_t owner) const {
        switch (owner) {
            case kOwnedByList:
                return findings_.Words(TextId::kListOfGames);
            case kOwnedByCaption:
                return findings_.Words(TextId::kCaption);
            case kOwnedByPageNumber:
                return findings_.Words(TextId::kPageNumber);
            default: {
                const size_t text = owner - kFirstText;
                return FormatText(findings_.Words(TextId::kFindingTextNamed), text + 1,
                                  QuotedStart(copy_.Store().CustomText[text].Text));
            }
        }
    }

    // The first name at which each of these happens is told.
    void CheckCursor() {
        if (IsPlacedOutside()) {
            findings_.Add(kWarning, TextId::kFindingCursorOutside, ScreenObject::kCursor);
            return;
        }
        std::optional<int32_t> leaving;
        std::optional<int32_t> hidden;
        bool covers = false;
        for (int32_t name = 0; name < screen_.CursorStops(); ++name) {
            for (const PixelBox& box : CursorBoxes(screen_.BelowFirst(name))) {
                const bool inHiddenRow =
                    box.top < kTilePixels || box.bottom > kScreenHeight - kTilePixels;
                const bool leaves = box.right > kScreenWidth || box.bottom > kScreenHeight;
                if (leaves && !leaving) leaving = name;
                if (inHiddenRow && !hidden) hidden = name;
                if (!covers) covers = TellCovered(box, name);
            }
        }
        if (leaving) {
            findings_.Add(kWarning, TextId::kFindingCursorLeaves, ScreenObject::kCursor,
                          *leaving + 1);
        } else if (hidden) {
            findings_.Add(FindingSeverity::kNote, TextId::kFindingCursorHidden,
                          ScreenObject::kCursor, *hidden + 1);
        }
    }

    bool IsPlacedOutside() const {
        const bool small = copy_.document.BigCursor == 0;
        return std::ranges::any_of(CursorTiles(copy_.document), [&](const TileItem& item) {
            return (small || item.Tile != 0) && !IsSpriteBuilt(item);
        });
    }

    std::vector<PixelBox> CursorBoxes(int below) const {
        std::vector<PixelBox> boxes;
        for (const ConsoleSprite& part : CursorSprites(copy_.document, below))
            if (const auto box = OpaqueBox(part)) boxes.push_back(*box);
        return boxes;
    }

    bool TellCovered(const PixelBox& box, int32_t name) {
        const int32_t right = std::min(box.right, kScreenWidth);
        const int32_t bottom = std::min(box.bottom, kScreenHeight);
        for (int32_t row = box.top / kTilePixels; row * kTilePixels < bottom; ++row) {
            for (int32_t column = box.left / kTilePixels; column * kTilePixels < right; ++column) {
                if (At(column, row) == kNobody) continue;
                findings_.Add(kWarning, TextId::kFindingCursorCovers, ScreenObject::kCursor,
                              name + 1, NameOf(At(column, row)), column, row);
                return true;
            }
        }
        return false;
    }

    uint32_t& At(int32_t column, int32_t row) {
        return cells_[static_cast<size_t>(row) * kScreenColumns + static_cast<size_t>(column)];
    }

    const WorkingCopy& copy_;
    const MenuScreen& screen_;
    FindingList& findings_;
    std::array<uint32_t, size_t{kScreenColumns} * kScreenRows> cells_{};
};

}  // namespace

void CheckOverlaps(const CheckedDesign& design, FindingList& findings) {
    OverlapCheck(design, findings).Run();
}

}  // namespace bw
