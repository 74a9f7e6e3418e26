// What the window's tests have in common.
#pragma once

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <functional>

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

// A control of a window by its id.
template <typename Control = QWidget>
Control& ControlOf(QWidget& window, int id) {
    auto* found = window.findChild<Control*>(QStringLiteral("control_%1").arg(id));
    if (found == nullptr) qFatal("the window has no control %d", id);
    return *found;
}

}  // namespace bw
