// Texts, caption, list and page number that leave the screen or stand where televisions hide them.
#include <algorithm>

#include "builder/design_check/design_checks.h"
#include "builder/tables/design_compile.h"

namespace bw {
namespace {

constexpr int32_t kFirstSafeRow = 1;
constexpr int32_t kLastSafeRow = 28;

// Blanks show nothing and may be cut.
size_t LengthOf(std::u16string_view text) {
    return text.find_last_not_of(u' ') + 1;
}
std::ptrdiff_t LettersIn(std::u16string_view text) {
    return std::ssize(text) - std::ranges::count(text, u' ');
}

class TextPlaceCheck {
  public:
    TextPlaceCheck(const CheckedDesign& design, FindingList& findings)
        : copy_(design.copy), screen_(design.screen), findings_(findings) {}

    void Run() {
        CheckParts();
        CheckCaption();
        CheckList();
        if (copy_.ShowPageNumber) CheckPageNumber();
        const std::vector<TextItem>& texts = copy_.Store().CustomText;
        for (size_t i = 0; i < texts.size(); ++i)
            CheckText(texts[i], i);
    }

  private:
    static constexpr FindingSeverity kWarning = FindingSeverity::kWarning;

    void CheckParts() {
        for (const MisplacedPart& part : screen_.Misplaced()) {
            findings_.Add(FindingSeverity::kError, TextId::kFindingAsItStands, ObjectOf(part.part),
                          part.fault.text, findings_.Words(TextId::kFindingDragOntoScreen));
        }
    }

    static ScreenObject ObjectOf(ScreenPart part) {
        switch (part) {
            case ScreenPart::kCaption:
                return ScreenObject::kCaption;
            case ScreenPart::kPageNumber:
                return ScreenObject::kPageNumber;
            default:
                return ScreenObject::kList;
        }
    }

    // False if the console shows the part at another place.
    bool StandsThere(ScreenPart part, const Pos& place, const std::u16string& name) {
        const Pos cell = screen_.Cell(part);
        if (cell == place) return true;
        findings_.Add(kWarning, TextId::kFindingElsewhere, ObjectOf(part), name, place.X, place.Y,
                      cell.X, cell.Y);
        return false;
    }

    void CheckHiddenRow(int32_t row, const DesignPlace& place, const auto& name) {
        if (row >= kFirstSafeRow && row <= kLastSafeRow) return;
        findings_.Add(FindingSeverity::kNote, TextId::kFindingHiddenRow, place, row, name,
                      kFirstSafeRow, kLastSafeRow);
    }

    void CheckCaption() {
        const size_t length = LengthOf(copy_.Store().CaptionText);
        const std::u16string name = findings_.Words(TextId::kCaption);
        if (length == 0 || !screen_.IsOnScreen(ScreenPart::kCaption)) return;
        const size_t room = screen_.RoomBehind(ScreenPart::kCaption);
        if (StandsThere(ScreenPart::kCaption, copy_.document.CaptionPos, name) && length > room) {
            findings_.Add(kWarning, TextId::kFindingCaptionCut, ScreenObject::kCaption,
                          length - room);
        }
        CheckHiddenRow(screen_.Cell(ScreenPart::kCaption).Y, ScreenObject::kCaption, name);
    }

    void CheckList() {
        if (!screen_.IsOnScreen(ScreenPart::kList)) return;
        const std::u16string name = findings_.Words(TextId::kListOfGames);
        if (StandsThere(ScreenPart::kList, copy_.document.ItemPos, name)) CheckNames();
        if (!HasRoomForPage()) return;
        const int32_t shown = screen_.ShownNames();
        if (shown > 0) CheckHiddenRow(screen_.RowOfName(0), ScreenObject::kList, name);
        if (shown > 1) CheckHiddenRow(screen_.RowOfName(shown - 1), ScreenObject::kList, name);
    }

    // A build looks at the fullest page that there is; more games would fill it.
    bool HasRoomForPage() {
        const BuildSettings& settings = screen_.Settings();
        const uint32_t room = RoomForNames(settings, screen_.Places().list);
        if (settings.PageSize <= room) return true;
        const bool refused = CheckScreenRows(settings, screen_.Places().list,
                                             copy_.AllItemTextList.size(), findings_.UiLanguage())
                                 .has_value();
        findings_.Add(refused ? FindingSeverity::kError : kWarning, TextId::kFindingPageSize,
                      ScreenObject::kList, screen_.Cell(ScreenPart::kList).Y, room,
                      settings.PageSize);
        return false;
    }

    void CheckNames() {
        const size_t room = screen_.RoomBehind(ScreenPart::kList);
        const auto isLong = [&](const std::u16string& name) { return LengthOf(name) > room; };
        const std::vector<std::u16string>& names = copy_.AllItemTextList;
        const auto first = std::ranges::find_if(names, isLong);
        if (first == names.end()) return;
        findings_.Add(kWarning, TextId::kFindingNamesCut, ScreenObject::kList,
                      std::count_if(first, names.end(), isLong), room, first - names.begin() + 1,
                      QuotedStart(*first));
    }

    void CheckPageNumber() {
        if (!screen_.IsOnScreen(ScreenPart::kPageNumber)) return;
        const std::u16string name = findings_.Words(TextId::kPageNumber);
        const bool wraps = PageNumberColumns(screen_.Settings(), copy_.AllItemTextList.size()) >
                           screen_.RoomBehind(ScreenPart::kPageNumber);
        if (StandsThere(ScreenPart::kPageNumber, copy_.document.PageNumberPos, name) && wraps) {
            findings_.Add(kWarning, TextId::kFindingPageNumberCut, ScreenObject::kPageNumber);
        }
        CheckHiddenRow(screen_.Cell(ScreenPart::kPageNumber).Y, ScreenObject::kPageNumber, name);
    }

    void CheckText(const TextItem& text, size_t index) {
        if (LengthOf(text.Text) == 0) return;
        const auto name = [&] {
            return FormatText(findings_.Words(TextId::kFindingTextNamed), index + 1,
                              QuotedStart(text.Text));
        };
        const std::u16string_view shown = ShownPart(text).text;
        if (LengthOf(shown) == 0) {
            findings_.Add(kWarning, TextId::kFindingTextOutside, PlacedText{index}, name);
            return;
        }
        if (LettersIn(shown) != LettersIn(text.Text)) {
            findings_.Add(kWarning, TextId::kFindingTextCut, PlacedText{index}, name);
        }
        CheckHiddenRow(text.Y, PlacedText{index}, name);
    }

    const WorkingCopy& copy_;
    const MenuScreen& screen_;
    FindingList& findings_;
};

}  // namespace

void CheckTextPlaces(const CheckedDesign& design, FindingList& findings) {
    TextPlaceCheck(design, findings).Run();
}

}  // namespace bw
