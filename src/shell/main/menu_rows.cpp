#include "shell/main/menu_rows.h"

#include "settings/recent_files.h"
#include "shell/framework/commands.h"

namespace bw {
namespace {

using enum MenuRowKind;
using enum TextId;

constexpr MenuRow kSpace{kSeparator};
constexpr MenuRow kPopupEnd{kEnd};

constexpr MenuRow Popup(TextId text) {
    return {kPopup, 0, text};
}
constexpr MenuRow Recent(int id) {
    return {kNamed, id, {}, "", false, kRecentFiles};
}

// clang-format off
constexpr MenuRow kRows[] = {
    Popup(kFileEntry),
        {kEntry, kCommandOpen, kOpenEntry, "Ctrl+O"},
        {kEntry, kCommandLoad, kLoadEntry, "Ctrl+L"},
        {kEntry, kCommandSave, kSaveEntry, "Ctrl+S"},
        {kEntry, kCommandOpenCart, kOpenCartEntry, "Ctrl+Shift+O"},
        kSpace,
        Popup(kRecentListsEntry),
            Recent(kCommandRecentLists),
            kSpace,
            {kEntry, kCommandRecentLists + kRecentFiles, kClearRecentEntry},
        kPopupEnd,
        Popup(kRecentDesignsEntry),
            Recent(kCommandRecentDesigns),
            kSpace,
            {kEntry, kCommandRecentDesigns + kRecentFiles, kClearRecentEntry},
        kPopupEnd,
        Popup(kRecentCartsEntry),
            Recent(kCommandRecentCarts),
            kSpace,
            {kEntry, kCommandRecentCarts + kRecentFiles, kClearRecentEntry},
        kPopupEnd,
        kSpace,
        Popup(kExport),
            {kEntry, kCommandExportInfo, kExportInfoEntry},
            {kEntry, kCommandExportSettings, kExportSettingsEntry},
        kPopupEnd,
        kSpace,
        {kEntry, kCommandExit, kExitEntry, "Ctrl+Q"},
    kPopupEnd,
    Popup(kEditEntry),
        {kEntry, kCommandUndo, kUndo, "Ctrl+Z"},
        {kEntry, kCommandRedo, kRedo, "Ctrl+Shift+Z; Ctrl+Y"},
        kSpace,
        {kEntry, kCommandMoveUp, kMoveUp, "Alt+Up"},
        {kEntry, kCommandMoveDown, kMoveDown, "Alt+Down"},
        {kEntry, kCommandMoveTop, kMoveTop, "Alt+Home"},
        {kEntry, kCommandMoveBottom, kMoveBottom, "Alt+End"},
        {kEntry, kCommandSelectAll, kSelectAll, "Ctrl+A"},
        {kEntry, kCommandSelectInverse, kSelectInverse, "Ctrl+I"},
        {kEntry, kCommandRemove, kRemove, "Del"},
        {kEntry, kCommandClear, kClear},
        Popup(kRowsEntry),
            {kEntry, kCommandRowsUp, kRowsUpEntry, "Ctrl+Shift+Up"},
            {kEntry, kCommandRowsDown, kRowsDownEntry, "Ctrl+Shift+Down"},
            {kEntry, kCommandRowsTop, kRowsTopEntry, "Ctrl+Shift+Home"},
            {kEntry, kCommandRowsBottom, kRowsBottomEntry, "Ctrl+Shift+End"},
            {kEntry, kCommandRowsRemove, kRowsRemoveEntry},
        kPopupEnd,
        kSpace,
        {kEntry, kCommandFindReplace, kFindAndReplaceEntry, "Ctrl+F"},
        {kEntry, kCommandFilter, kFilterListEntry, "Ctrl+K; /"},
        kSpace,
        {kEntry, kCommandFitCoolboy, kFitCoolboyEntry},
        {kEntry, kCommandFitCoolgirl, kFitCoolgirlEntry},
        {kEntry, kCommandFit, kFitDialogEntry, "Ctrl+Shift+F"},
        {kEntry, kCommandBuildCoolboy, kBuildCoolboyEntry, "Ctrl+B"},
        {kEntry, kCommandBuildCoolgirl, kBuildCoolgirlEntry, "Ctrl+G"},
        kSpace,
        {kEntry, kCommandPlayGame, kPlayGameEntry, "Ctrl+P"},
        {kEntry, kCommandPlayCart, kPlayCartEntry, "Ctrl+Shift+P"},
        {kEntry, kCommandCheckCart, kCheckCartEntry, "Ctrl+T"},
        {kEntry, kCommandShowCheck, kShowCheckEntry, "", true},
    kPopupEnd,
    Popup(kMulticartMenuEntry),
        Popup(kOrdinalNumber),
            {kToggle, kCommandShowNumberOrder, kShowOrdinalNumber},
            {kToggle, kCommandShowNumberDot, kShowDot},
            {kToggle, kCommandShowNumberFill, kUniformOrdinalLength},
        kPopupEnd,
        Popup(kMenuStyle),
            {kRadio, kCommandStyleDefault, kDefaultStyle},
            {kRadio, kCommandStyleWhite, kWhiteStyle},
        kPopupEnd,
        Popup(kItemsPerPage),
            {kRadio, kCommandPageSize5, kFivePerPage},
            {kRadio, kCommandPageSize10, kTenPerPage},
            {kRadio, kCommandPageSize15, kFifteenPerPage},
            {kRadio, kCommandPageSize20, kTwentyPerPage},
            kSpace,
            {kToggle, kCommandPageNumber, kShowPageNumber},
            {kToggle, kCommandNameInsertRow, kNameInsertsBlankRow},
        kPopupEnd,
        Popup(kPageTurningSpeed),
            {kRadio, kCommandSpeed1, kTimes1},
            {kRadio, kCommandSpeed2, kTimes2},
            {kRadio, kCommandSpeed3, kTimes3},
            {kRadio, kCommandSpeed4, kTimes4},
        kPopupEnd,
        Popup(kMenuMusic),
            {kRadio, kCommandMusicDefault, kDefaultMusic},
            {kRadio, kCommandMusicOff, kDisable},
            {kRadio, kCommandMusic2, kMusicSet2},
            {kRadio, kCommandMusic3, kMusicSet3},
            {kRadio, kCommandMusic4, kMusicSet4},
            {kRadio, kCommandMusic5, kMusicSet5},
        kPopupEnd,
        Popup(kMenuSize),
            {kRadio, kCommandMenuSize8, kKilobytes128},
            {kRadio, kCommandMenuSize16, kKilobytes256},
            {kRadio, kCommandMenuSize32, kKilobytes512},
            // No board's menu can be that large yet.
            {kRadio, kCommandMenuSize64, kKilobytes1024, "", true},
            {kRadio, kCommandMenuSize128, kKilobytes2048, "", true},
        kPopupEnd,
        Popup(kCoolboyType),
            {kRadio, kCommandCoolboy, kCoolboy},
            {kRadio, kCommandMindkids, kMindkids},
        kPopupEnd,
        kSpace,
        Popup(kCustomMenuEntry),
            {kToggle, kCommandCustomEnable, kEnableCustomMenuEntry},
            {kEntry, kCommandMenuDesign, kMenuDesignEntry, "Ctrl+D"},
            kSpace,
            {kEntry, kCommandDesignOpen, kOpenDesignEntry},
            {kEntry, kCommandDesignSave, kSaveDesignEntry},
        kPopupEnd,
        Popup(kExternalMenuEntry),
            {kToggle, kCommandExternMenuEnable, kEnableEntry},
            {kEntry, kCommandExternMenuConfig, kConfigEntry},
        kPopupEnd,
    kPopupEnd,
    Popup(kSettingsEntry),
        {kToggle, kCommandTopmost, kTopmostEntry},
        {kToggle, kCommandCheckAfterBuild, kCheckAfterBuildEntry},
        {kEntry, kCommandAskAtClosing, kAskAtClosingEntry},
        {kToggle, kCommandUpdateChecks, kCheckForUpdatesEntry},
        Popup(kLanguageEntry),
            {kRadio, kCommandChinese, kChinese},
            {kRadio, kCommandEnglish, kEnglish},
        kPopupEnd,
    kPopupEnd,
    Popup(kHelpEntry),
        {kEntry, kCommandRomInfo, kMulticartInfoEntry},
        {kEntry, kCommandCheckUpdate, kCheckUpdateEntry},
        kSpace,
        {kEntry, kCommandAbout, kAboutEntry},
    kPopupEnd,
};
// clang-format on

}  // namespace

std::span<const MenuRow> MainMenuRows() {
    return kRows;
}

}  // namespace bw
