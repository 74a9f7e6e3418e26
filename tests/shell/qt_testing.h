// What the window's tests have in common.
#pragma once

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <functional>
#include <optional>
#include <string>

#include "settings/settings_store.h"

namespace bw {

// Runs what is posted, until nothing is.
inline void RunEvents() {
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, 0);
}

// Calls `act` with the modal window that opens next, inside its event loop.
inline void WhenModal(std::function<void(QWidget&)> act) {
    QTimer::singleShot(0, qApp, [act = std::move(act)] {
        QWidget* modal = QApplication::activeModalWidget();
        if (modal != nullptr) {
            act(*modal);
        } else {
            WhenModal(act);
        }
    });
}

template <typename Kind>
Kind& ChildOf(const QObject& window, const std::string& name) {
    auto* found = window.findChild<Kind*>(QString::fromStdString(name));
    if (found == nullptr) qFatal("the window has no %s", name.c_str());
    return *found;
}

inline std::optional<std::u16string> StoredText(const SettingsStore& store, const char* name) {
    std::u16string text;
    return store.RegReadString(kMainKey, name, text) ? std::optional(text) : std::nullopt;
}

// A control of a window by its id.
template <typename Control = QWidget>
Control& ControlOf(QWidget& window, int id) {
    return ChildOf<Control>(window, "control_" + std::to_string(id));
}

}  // namespace bw
