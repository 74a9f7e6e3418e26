// The designer: the window in which the menu's screen is drawn.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

#include "designer/history/edit_session.h"
#include "designer/window/design_files.h"
#include "list/game_list.h"
#include "settings/settings_store.h"
#include "shell/dialogs/user_dialogs.h"
#include "shell/framework/dialog_base.h"

namespace bw {

// What the window stands on; all must live longer.
struct DesignDialogServices {
    SettingsStore& store;
    // Of the undo history; empty keeps it in the store.
    std::filesystem::path history;
    // Its store has been filled (LoadDesignData), and CaptionText, names and page set. It keeps its
    // steps from one opening to the next, and has the design when the window has closed.
    EditSession& session;
    UserDialogs& dialogs;
    // What the load dialogs offered last; as long as the process.
    DesignFiles::LastTypes& lastTypes;
    // The list whose menu the preview shows.
    std::shared_ptr<const GameList> games = std::make_shared<const GameList>();
};

class CDesignDialog : public CDialogBase {
    Q_OBJECT
  public:
    CDesignDialog(const DesignDialogServices& services, Language language,
                  QWidget* parent = nullptr);
    ~CDesignDialog() override;

    // The list has changed beside the window.
    void SetGames(std::shared_ptr<const GameList> games);
    // Writes design, switches and steps to the settings as closing does, for an end that the window
    // can't prevent.
    void StoreAll();
    // Whether the last StoreAll has reached settings and file.
    bool Kept() const { return kept_; }

  protected:
    const MessageTable& Table() const override;
    void ApplyTexts() override;
    void Place() override;
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    class Parts;
    friend struct DesignerCommands;

    static std::vector<MessageEntry> CommandEntries();
    MessageResult OnInitDialog(MessageParam wParam, MessageParam lParam);
    MessageResult OnClose(MessageParam wParam, MessageParam lParam);

    std::unique_ptr<Parts> parts_;
    bool toStore_ = false;  // from its opening to its closing
    bool kept_ = true;
};

}  // namespace bw
