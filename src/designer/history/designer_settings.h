// What the designer keeps in the settings from one opening to the next.
#pragma once

#include "designer/history/edit_session.h"
#include "settings/settings_store.h"

namespace bw {

// For a window that opens. Before it, the document's store has been filled (LoadDesignData) and
// CaptionText and the names have been set. Reads switches, places and the texts of both boxes, then
// the last work state, which brings the whole document back where there is one; the undo history of
// earlier runs joins a session that has none of its own. Values that are missing, of another size
// or damaged leave what is there.
void OpenDesigner(EditSession& session, const SettingsStore& settings);

// For a window that closes: writes all of it, and hands the design on to builds (StoreDesign).
// False if a value can't be written; the others are tried all the same. A session without steps
// leaves the history that is stored.
bool CloseDesigner(EditSession& session, SettingsStore& settings);

}  // namespace bw
