#include "shell/main/menu_rows.h"

#include "shell/framework/commands.h"

namespace bw {
namespace {

using enum MenuRowKind;

// The same in both languages.
constexpr MenuText Plain(std::u16string_view text) {
    return {0, text, text};
}

constexpr MenuRow kSpace{kSeparator};
constexpr MenuRow kPopupEnd{kEnd};

constexpr MenuRow Popup(int textId) {
    return {kPopup, 0, {textId}};
}

// clang-format off
constexpr MenuRow kRows[] = {
    Popup(111),
        {kEntry, kCommandOpen, {106}, "Ctrl+O"},
        {kEntry, kCommandLoad, {107}, "Ctrl+L"},
        {kEntry, kCommandSave, {108}, "Ctrl+S"},
        kSpace,
        Popup(352),
            {kEntry, kCommandExportInfo, {267}},
            {kEntry, kCommandExportSettings, {268}},
        kPopupEnd,
        kSpace,
        {kEntry, kCommandExit, {109}, "Ctrl+Q"},
    kPopupEnd,
    Popup(112),
        {kEntry, kCommandUndo, {294}, "Ctrl+Z"},
        {kEntry, kCommandRedo, {295}, "Ctrl+Shift+Z; Ctrl+Y"},
        kSpace,
        {kEntry, kCommandMoveUp, {124}, "Alt+Up"},
        {kEntry, kCommandMoveDown, {125}, "Alt+Down"},
        {kEntry, kCommandMoveTop, {126}, "Alt+Home"},
        {kEntry, kCommandMoveBottom, {127}, "Alt+End"},
        {kEntry, kCommandSelectAll, {128}, "Ctrl+A"},
        {kEntry, kCommandSelectInverse, {129}, "Ctrl+I"},
        {kEntry, kCommandRemove, {130}, "Del"},
        {kEntry, kCommandClear, {131}},
        kSpace,
        {kEntry, kCommandFindReplace, {202}, "Ctrl+F"},
        {kEntry, kCommandFilter, {0, u"筛选列表(&K)", u"Filter the list(&K)"}, "Ctrl+K; /"},
        kSpace,
        {kEntry, kCommandBuildCoolboy, {144}, "Ctrl+B"},
        {kEntry, kCommandBuildCoolgirl, {258}, "Ctrl+G"},
    kPopupEnd,
    Popup(195),
        Popup(198),
            {kToggle, kCommandShowNumberOrder, {199}},
            {kToggle, kCommandShowNumberDot, {330}},
            {kToggle, kCommandShowNumberFill, {200}},
        kPopupEnd,
        Popup(212),
            {kRadio, kCommandStyleDefault, {217}},
            {kRadio, kCommandStyleWhite, {218}},
        kPopupEnd,
        Popup(213),
            {kRadio, kCommandPageSize5, {289}},
            {kRadio, kCommandPageSize10, {215}},
            {kRadio, kCommandPageSize15, {288}},
            {kRadio, kCommandPageSize20, {216}},
            kSpace,
            {kToggle, kCommandPageNumber, {214}},
            {kToggle, kCommandNameInsertRow, {287}},
        kPopupEnd,
        Popup(329),
            {kRadio, kCommandSpeed1, Plain(u"x1")},
            {kRadio, kCommandSpeed2, Plain(u"x2")},
            {kRadio, kCommandSpeed3, Plain(u"x3")},
            {kRadio, kCommandSpeed4, Plain(u"x4")},
        kPopupEnd,
        Popup(241),
            {kRadio, kCommandMusicDefault, {243}},
            {kRadio, kCommandMusicOff, {242}},
            {kRadio, kCommandMusic2, {244}},
            {kRadio, kCommandMusic3, {252}},
            {kRadio, kCommandMusic4, {253}},
            {kRadio, kCommandMusic5, {256}},
        kPopupEnd,
        Popup(240),
            {kRadio, kCommandMenuSize8, Plain(u"128KB")},
            {kRadio, kCommandMenuSize16, Plain(u"256KB")},
            {kRadio, kCommandMenuSize32, Plain(u"512KB")},
            // No board's menu can be that large yet.
            {kRadio, kCommandMenuSize64, Plain(u"1024KB"), "", true},
            {kRadio, kCommandMenuSize128, Plain(u"2048KB"), "", true},
        kPopupEnd,
        Popup(239),
            {kRadio, kCommandCoolboy, Plain(u"COOLBOY")},
            {kRadio, kCommandMindkids, Plain(u"MINDKIDS ")},
        kPopupEnd,
        kSpace,
        Popup(219),
            {kToggle, kCommandCustomEnable, {221}},
            {kLater, kCommandMenuDesign, {220}},
        kPopupEnd,
        Popup(272),
            {kToggle, kCommandExternMenuEnable, {273}},
            {kEntry, kCommandExternMenuConfig, {274}},
        kPopupEnd,
    kPopupEnd,
    Popup(113),
        {kToggle, kCommandTopmost, {114}},
        Popup(115),
            {kRadio, kCommandChinese, {117}},
            {kRadio, kCommandEnglish, {118}},
        kPopupEnd,
    kPopupEnd,
    Popup(116),
        {kEntry, kCommandRomInfo, {155}},
        {kLater, kCommandCheckUpdate, {188}},
        kSpace,
        {kEntry, kCommandAbout, {110}},
    kPopupEnd,
};
// clang-format on

}  // namespace

std::span<const MenuRow> MainMenuRows() {
    return kRows;
}

}  // namespace bw
