// The ids of the main window's commands. Buttons, menu entries, keys, stored settings and tests all
// reach a command by its id.
#pragma once

namespace bw {

enum Command : int {
    // Buttons. The eight of the list have ids below the menu's.
    kCommandMoveUp = 1002,
    kCommandMoveDown = 1003,
    kCommandMoveTop = 1004,
    kCommandMoveBottom = 1005,
    kCommandRemove = 1006,
    kCommandClear = 1007,
    kCommandSelectAll = 1010,
    kCommandSelectInverse = 1011,

    kCommandExit = 40001,
    kCommandOpen = 40002,
    kCommandAbout = 40005,
    kCommandLoad = 40007,
    kCommandSave = 40008,
    kCommandTopmost = 40013,
    kCommandChinese = 40022,
    kCommandEnglish = 40023,
    kCommandBuildCoolboy = 40025,
    kCommandCheckUpdate = 40027,
    kCommandShowNumberFill = 40035,
    kCommandShowNumberOrder = 40036,
    kCommandFindReplace = 40037,
    kCommandStyleDefault = 40057,
    kCommandStyleWhite = 40058,
    kCommandPageNumber = 40059,
    kCommandPageSize10 = 40060,
    kCommandPageSize20 = 40061,
    kCommandMenuDesign = 40065,
    kCommandCustomEnable = 40066,
    kCommandCoolboy = 40069,
    kCommandMindkids = 40070,
    kCommandMenuSize8 = 40072,
    kCommandMenuSize16 = 40073,
    kCommandMenuSize32 = 40074,
    kCommandMusicOff = 40076,
    kCommandMusicDefault = 40077,
    kCommandMusic2 = 40080,
    kCommandMusic3 = 40083,
    kCommandMusic4 = 40084,
    kCommandMusic5 = 40090,
    kCommandBuildCoolgirl = 40093,
    kCommandRomInfo = 40096,
    kCommandExportInfo = 40098,
    kCommandExportSettings = 40100,
    kCommandExternMenuEnable = 40103,
    kCommandExternMenuConfig = 40105,
    kCommandNameInsertRow = 40108,
    kCommandPageSize5 = 40111,
    kCommandPageSize15 = 40112,
    kCommandSpeed1 = 40158,
    kCommandSpeed2 = 40159,
    kCommandSpeed3 = 40160,
    kCommandSpeed4 = 40161,
    kCommandShowNumberDot = 40163,
    kCommandMenuSize64 = 40215,
    kCommandMenuSize128 = 40216,

    // Of our own, above all others.
    kCommandUndo = 41001,
    kCommandRedo = 41002,
    kCommandStopTask = 41003,
    kCommandFilter = 41004,  // puts the cursor into the filter box
    // On the highlighted rows.
    kCommandRowsUp = 41005,
    kCommandRowsDown = 41006,
    kCommandRowsTop = 41007,
    kCommandRowsBottom = 41008,
    kCommandRowsRemove = 41009,
    // Check the games that the board of the one build button or of the other runs.
    kCommandFitCoolboy = 41010,
    kCommandFitCoolgirl = 41011,
    kCommandDesignOpen = 41012,
    kCommandDesignSave = 41013,
    kCommandUpdateChecks = 41014,     // whether the program looks for newer versions by itself
    kCommandCheckCart = 41015,        // in the emulator: the built cart, or the checked games
    kCommandPlayGame = 41016,         // the highlighted row's game, alone
    kCommandPlayCart = 41017,         // the built cart, from its menu on
    kCommandCheckAfterBuild = 41018,  // whether every build is checked
    kCommandShowCheck = 41019,        // the window with the pictures of the last check
    // The collection.
    kCommandTidyNames = 41020,
    kCommandNamesFromDat = 41021,
    kCommandFindSame = 41022,
    kCommandKeepBest = 41023,
    kCommandLookForMissing = 41024,
    kCommandCheckShown = 41025,      // the rows that the filter leaves, and the others as they are
    kCommandUncheckShown = 41026,    // likewise
    kCommandCheckOnlyShown = 41027,  // those rows and no others
    kCommandOpenCart = 41035,
    kCommandFit = 41036,       // what the checked games take on the board of the first build button
    kCommandFitOther = 41037,  // of the other one
    kCommandAskAtClosing = 41050,
    kCommandListsOpenHere = 41051,  // not in every system's menu
    // The files that the user had to do with last, one after the other, then the entry that clears.
    kCommandRecentLists = 41100,
    kCommandRecentDesigns = 41110,
    kCommandRecentCarts = 41120,
};

}  // namespace bw
