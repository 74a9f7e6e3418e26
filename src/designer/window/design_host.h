// What the parts of the designer's window need of the window: the session they edit, and ways to
// ask, to tell and to show.
#pragma once

#include <functional>
#include <string_view>

#include "designer/gestures/gesture_machine.h"
#include "designer/history/edit_session.h"
#include "language/language.h"
#include "settings/settings_store.h"
#include "shell/dialogs/user_dialogs.h"
#include "shell/framework/background_tasks.h"

class QWidget;

namespace bw {

// All on the window's thread.
class DesignHost {
  public:
    virtual ~DesignHost() = default;

    virtual const EditSession& Session() const = 0;
    virtual const GestureMachine& Gestures() const = 0;

    // A command: what it changes, as the views that are out of date then.
    using Command = std::function<Views(WorkingCopy&)>;
    // Runs it as a step of the undo history. During a gesture it waits for the end of that.
    virtual void Run(Command command) = 0;
    // The same for what is no step: what is looked at, current places, typing.
    virtual void RunWithoutStep(Command command) = 0;
    // Goes to a state of the undo history, from 0 on.
    virtual void GoToStep(size_t state) = 0;
    // At once, or at the end of the gesture that is under way.
    virtual void WhenIdle(std::function<void()> work) = 0;

    // Scrolls until a part of a view is in sight, and marks it for a moment; pixels of its picture.
    virtual void Reveal(Control view, const Rect& part) = 0;

    // A line of the status bar that stays until the next one.
    virtual void Tell(std::u16string_view line) = 0;
    virtual UserDialogs& Dialogs() = 0;
    virtual SettingsStore& Store() = 0;
    // Ends before the window does; what it posts then is dropped.
    virtual BackgroundTasks& Tasks() = 0;
    virtual Language CurrentLanguage() const = 0;
    virtual QWidget& Window() = 0;
};

}  // namespace bw
