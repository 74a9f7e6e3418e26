// Where the window stands, from run to run.
#pragma once

#include <QRect>
#include <QWidget>
#include <optional>
#include <span>
#include <string_view>

#include "settings/settings_store.h"

namespace bw {

// The values stand below `key` of the settings.
//
// Of the normal window, even while it is maximised, minimised or hidden. Pixels of Qt's logical
// kind, without the frame: with the frame a place couldn't be given back before the window is
// shown, since only then the desktop decides on one.
void StorePlacement(SettingsStore& store, std::string_view key, const QWidget& window);

// Nothing unless all four numbers are stored.
std::optional<QRect> StoredPlacement(const SettingsStore& store, std::string_view key);

// The rectangle moved and cut so that enough of its upper edge lies on one of the screens (their
// work areas, the preferred one first) to be seen and dragged. A place can be left over from a
// screen that was taken away, or made smaller; a window there would be out of reach.
QRect OntoScreen(const QRect& place, std::span<const QRect> screens);

// The window at its stored place, or over the middle of its screen.
void RestorePlacement(const SettingsStore& store, std::string_view key, QWidget& window);

}  // namespace bw
