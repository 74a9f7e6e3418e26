// The inside of the designer's window, which its commands work on.
#pragma once

#include <QMainWindow>
#include <QScrollArea>
#include <QStatusBar>
#include <QTimer>
#include <deque>
#include <optional>
#include <vector>

#include "designer/pictures/designer_views.h"
#include "designer/window/design_dialog.h"
#include "designer/window/design_files.h"
#include "designer/window/design_frame.h"
#include "designer/window/design_host.h"
#include "designer/window/design_keys.h"
#include "designer/window/panel_page.h"
#include "designer/window/pointer_label.h"
#include "shell/framework/command_menu.h"
#include "shell/framework/elided_label.h"

class QDockWidget;

namespace bw {

class PreviewPage;

class CDesignDialog::Parts final : public DesignHost {
  public:
    Parts(CDesignDialog& window, const DesignDialogServices& services);

    // DesignHost
    const EditSession& Session() const override { return services.session; }
    const GestureMachine& Gestures() const override { return gestures; }
    void Run(Command command) override;
    void RunWithoutStep(Command command) override;
    void GoToStep(size_t state) override;
    void WhenIdle(std::function<void()> work) override;
    void Reveal(Control view, const Rect& part) override;
    void Tell(std::u16string_view line) override;
    UserDialogs& Dialogs() override { return services.dialogs; }
    SettingsStore& Store() override { return services.store; }
    BackgroundTasks& Tasks() override { return tasks; }
    Language CurrentLanguage() const override { return window.UiLanguage(); }
    QWidget& Window() override { return window; }

    const WorkingCopy& Copy() const { return services.session.Copy(); }

    // Whatever reaches the window is an event; the views that it makes out of date are drawn and
    // shown once, when the outermost one ends.
    class Event {
      public:
        explicit Event(Parts& parts) : parts_(parts) { ++parts_.depth_; }
        ~Event() {
            if (--parts_.depth_ == 0) parts_.EndEvent();
        }
        Event(const Event&) = delete;
        Event& operator=(const Event&) = delete;

      private:
        Parts& parts_;
    };
    void Refresh(Views stale) { stale_ |= stale; }

    void Undo();
    void Redo();
    void FollowPointer(PointerAct act, const PointerEvent& event);
    // Ends the gesture at hand where the pointer was last.
    void LetGo();
    void SetZoom(int zoom);
    // Shows or hides the page of the panel behind this command.
    void TogglePage(int command);
    void SetShape(TileShape shape);
    void PastePicture(const QImage& picture);
    void AskPicture();
    void ShowUndoTips();
    void RestorePlace();
    void StorePlace();
    // Switches of the settings that are stored at once.
    void StoreSwitch(std::string_view name, bool on);
    void SetLanguage(Language language);

    CDesignDialog& window;
    DesignDialogServices services;
    GestureMachine gestures;
    DesignerLayout layout;
    DesignerViews views;
    CommandMenu menu;
    QMainWindow inner;  // frame, panel and status line
    QScrollArea scroll;
    DesignFrame* frame = nullptr;  // in the scroll area
    PointerLabel underPointer;
    ElidedLabel news;
    DesignFiles files;
    BackgroundTasks tasks;  // gone before what they work for
    DesignKeys keys;
    QTimer keeper;                   // after a change
    PreviewPage* preview = nullptr;  // in its dock
    int zoom = 0;                    // 1 to 3; 0 until it is known

  private:
    friend class Event;
    void EndEvent();
    void ShowControls();
    void ShowEnabled();
    void AddPage(PanelPage* page, const char* name, int command);
    void Connect();
    void ShowTitle();
    bool TryGesture(const PointerEvent& event, Views (GestureMachine::*act)(PointerEvent));

    int depth_ = 0;
    bool ending_ = false;
    Views stale_;
    std::deque<std::function<void()>> waiting_;  // for the end of the gesture
    PointerEvent last_;                          // the pointer's last event with a button held
    struct Page {
        PanelPage* page;  // in its dock
        QDockWidget* dock;
        int command;
    };
    std::vector<Page> pages_;
    std::filesystem::path file_;  // that the design came from or went to
};

}  // namespace bw
