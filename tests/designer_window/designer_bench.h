// The designer's window on a desk of its own: settings in memory, dialogs answered by a script, and
// a second session beside it that does the same through the document half.
#pragma once

#include <QApplication>
#include <QMouseEvent>
#include <memory>

#include "builder/resources.h"
#include "designer/gestures/gesture_machine.h"
#include "designer/history/designer_settings.h"
#include "designer/history/work_state.h"
#include "designer/tools/text_tools.h"
#include "designer/window/design_dialog.h"
#include "designer/window/design_frame.h"
#include "shell/qt_testing.h"
#include "shell/scripted_dialogs.h"

namespace bw {

// As the main window hands it to the designer.
inline void Begin(EditSession& session, const SettingsStore& store,
                  const std::vector<std::u16string>& names) {
    session.RunWithoutStep([&](WorkingCopy& copy) {
        copy = WorkingCopy();
        LoadDesignData(copy.Store(), store, DefaultTileSet());
        copy.Store().CaptionText = ToWide(std::to_string(names.size()) + " IN 1");
        copy.ShowPageNumber = true;
        SetItems(copy, names, 5, false);
    });
}

// A design in which every command finds something to do.
inline Views Furnish(WorkingCopy& copy) {
    DesignStore& store = copy.Store();
    for (int i = 0; i < 6; ++i) {
        const uint32_t selected = i % 2 == 0 ? 1 : 0;
        const auto tile = static_cast<uint8_t>(65 + i);
        store.BkgTileList.push_back({.X = 4 + i, .Y = 20, .Selected = selected, .Tile = tile});
        store.SpriteTileList.push_back(
            {.X = 90 + 9 * i, .Y = 120, .Selected = selected, .Tile = tile});
    }
    store.BkgTileSelected[66] = store.BkgTileSelected[70] = store.SpriteTileSelected[67] = 1;
    store.CustomText.push_back({.X = 3, .Y = 24, .Text = u"TEXT"});
    store.CharMapData[40] = 7;
    store.Attributes[5] = 0x1B;
    store.BkgPalette[6] = store.SpritePalette[6] = 0x2A;
    store.ChrData[kPatternTableSize] = 1;
    for (size_t i = 0; i < kTileBytes; ++i)
        store.ChrData[66 * kTileBytes + i] = static_cast<uint8_t>(i * 37 + 90);
    copy.BkgTilePos = {0, 7};
    copy.SpTilePos = {0, 7};
    CountItems(copy);
    return Views::All();
}

// As it comes back from the history or the settings: with the palettes' places in line.
inline WorkState Returned(const WorkState& state, WorkingCopy copy) {
    ApplyWorkState(state, copy);
    return BuildWorkState(copy);
}

struct DesignerBench {
    explicit DesignerBench(std::vector<std::u16string> given = {u"ALPHA", u"beta", u"", u"Gamma",
                                                                u"ünter", u"SIXTH"})
        : names(std::move(given)) {
        Open();
    }

    void Open() {
        Begin(session, *store, names);
        GameList games(names.size());
        for (size_t i = 0; i < names.size(); ++i) {
            games[i].name = names[i];
            games[i].checked = true;
        }
        dialog = std::make_unique<CDesignDialog>(
            DesignDialogServices{
                *store, {}, session, dialogs, lastTypes, std::make_shared<const GameList>(games)},
            Language::kEnglish);
        frame = &ChildOf<DesignFrame>(*dialog, "design_frame");
        dialog->ShowModeless();
        RunEvents();
    }

    const WorkingCopy& Copy() const { return session.Copy(); }
    WorkState State() const { return BuildWorkState(session.Copy()); }
    QAbstractButton& Button(int id) { return frame->ButtonOf(id); }
    QAction& Entry(int id) { return ChildOf<QAction>(*dialog, "entry_" + std::to_string(id)); }
    // As a click or a choice does it.
    void Press(int id) {
        if (auto* button =
                dialog->findChild<QAbstractButton*>(QStringLiteral("control_%1").arg(id))) {
            button->click();
        } else {
            Entry(id).trigger();
        }
        RunEvents();
    }

    // The pointer at a place of the frame, in drawn pixels; it goes to whatever lies there, or
    // while a button is held to what was pressed.
    void Mouse(QEvent::Type type, Point at, Qt::MouseButton button, Qt::MouseButtons held,
               Qt::KeyboardModifiers keys, uint64_t time) {
        const QPointF inFrame(at.x + 0.5, at.y + 0.5);
        if (type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick ||
            pressed == nullptr) {
            pressed = frame->childAt(inFrame.toPoint());
            if (pressed == nullptr || dynamic_cast<CWindowDraw*>(pressed) == nullptr) {
                pressed = frame;
            }
        }
        const QPointF local = inFrame - QPointF(pressed->mapTo(frame, QPoint(0, 0)));
        QMouseEvent event(type, local, frame->mapToGlobal(inFrame), button, held, keys);
        event.setTimestamp(time);
        QApplication::sendEvent(pressed, &event);
        if (type == QEvent::MouseButtonRelease) pressed = nullptr;
    }
    void Key(QEvent::Type type, int key, Qt::KeyboardModifiers keys = {}) {
        QWidget* focus = dialog->focusWidget() != nullptr ? dialog->focusWidget() : dialog.get();
        QKeyEvent event(type, key, keys);
        QApplication::sendEvent(focus, &event);
    }

    std::unique_ptr<SettingsStore> store = MakeMemoryStore();
    ScriptedDialogs dialogs;
    DesignFiles::LastTypes lastTypes;
    EditSession session;
    std::vector<std::u16string> names;
    std::unique_ptr<CDesignDialog> dialog;
    DesignFrame* frame = nullptr;
    QWidget* pressed = nullptr;
};

}  // namespace bw
