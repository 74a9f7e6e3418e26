// The numbers by which the windows' messages are told apart. Those of the system's own messages are
// the Windows API's, so that one table serves on every platform; the program's own start at 1025.
#pragma once

namespace bw {

enum Message : int {
    kMessageClose = 16,  // wParam is the end code
    kMessageInitDialog = 272,
    kMessageCommand = 273,    // the id of a control or a menu entry is in wParam's low 16 bits
    kMessageTray = 1025,      // lParam: kTrayDoubleClick, kTrayMenu
    kMessageLanguage = 1026,  // wParam: a Language
    kMessageUpdateOffer = 1027,
    kMessageUpdateReady = 1028,
    kMessageReplaceAll = 1029,  // lParam: a const FindRecord*, read before the handler returns
    kMessageFindNext = 1030,    // likewise
    kMessageReplace = 1031,     // likewise
    kMessageEndEdit = 1032,
    kMessageNotice = 1033,
};

// wParam of kMessageClose to the main window: who closes it.
enum CloseCode : int { kCloseByFrame = 0, kCloseByExit = 1, kCloseForUpdate = 5 };

inline constexpr int kTrayDoubleClick = 515;
inline constexpr int kTrayMenu = 517;

// End codes of dialogs.
enum EndCode : int { kEndOk = 1, kEndCancel = 2, kEndYes = 6, kEndNo = 7 };

}  // namespace bw
