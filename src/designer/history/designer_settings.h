// What the designer keeps in the settings from one opening to the next.
#pragma once

#include <filesystem>

#include "designer/history/edit_session.h"
#include "settings/settings_store.h"

namespace bw {

// `historyFile` in all of this is the file of the undo history (DesignHistoryFile); an empty path
// keeps the history in the settings, every state whole.

// For a window that opens. Before it, the document's store has been filled (LoadDesignData) and
// CaptionText and the names have been set. Reads switches, places and the texts of both boxes, then
// the last work state, which brings the whole document back where there is one; the undo history of
// earlier runs joins a session that has none of its own, from the settings where no file has one.
// Values that are missing, of another size or damaged leave what is there.
void OpenDesigner(EditSession& session, const SettingsStore& settings,
                  const std::filesystem::path& historyFile = {});

// For a window that closes: writes all of it, and hands the design on to builds (StoreDesign).
// False if a value or the file can't be written; the others are tried all the same. A session
// without steps leaves the history that is stored. Once the file is written, the settings lose
// their history. Of several programs that close, the last one's file stays.
bool CloseDesigner(EditSession& session, SettingsStore& settings,
                   const std::filesystem::path& historyFile = {});

// Writes the work state alone, so that a window that doesn't come to its closing loses little.
bool KeepWorkState(const EditSession& session, SettingsStore& settings);

}  // namespace bw
