// New names for rows of the list, tidied or out of a database, to be looked at before they are
// taken.
#pragma once

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <array>
#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "settings/settings_store.h"
#include "shell/dialogs/names_table.h"
#include "shell/framework/dialog_base.h"

namespace bw {

// The names of a database for some rows.
struct DatabaseNames {
    std::u16string title;  // of the database
    RowSums sums;          // one for each row
    DatNames names;
};

// Ends with kEndOk if the names are to be given. The rules are read from the store at opening and
// stored at the end, whatever that is.
class CNamesDialog : public CDialogBase {
  public:
    // `rows`: those that are to be named, in rising order. Without a database their names are
    // tidied. The list must not change while the dialog is open.
    CNamesDialog(const GameList& games, std::vector<uint32_t> rows,
                 std::optional<DatabaseNames> database, const ConsoleMenu& menu,
                 SettingsStore& store, Language language, QWidget* parent = nullptr);

    // What was taken.
    std::vector<RowName> Names() const { return model_.Taken(); }

    static constexpr size_t kRules = 9;

  protected:
    const MessageTable& Table() const override;
    void ApplyTexts() override;
    void Place() override;

  private:
    using Clock = std::chrono::steady_clock;
    void Arrange();
    TidyRules Rules() const;
    bool Shortens() const { return boxes_.back().isChecked(); }
    // Makes the names anew, a few at a time, so that a long list doesn't hold the window up.
    void Begin();
    // Until the changes are complete, or the time has come.
    void GoOn(Clock::time_point until);
    void AddSome();
    void ShowCounts();
    void StoreRules();

    MessageResult OnInit(MessageParam wParam, MessageParam lParam);
    MessageResult OnAll(MessageParam wParam, MessageParam lParam);
    MessageResult OnInverse(MessageParam wParam, MessageParam lParam);
    MessageResult OnOk(MessageParam wParam, MessageParam lParam);
    MessageResult OnCancel(MessageParam wParam, MessageParam lParam);
    MessageResult OnClose(MessageParam wParam, MessageParam lParam);

    const GameList& games_;
    std::vector<uint32_t> rows_;
    std::optional<DatabaseNames> database_;
    SettingsStore& store_;

    QTimer work_;      // runs while names are being made
    size_t done_ = 0;  // of rows_
    DatChanges made_;

    NamesTableModel model_;
    NamesTable table_;
    QVBoxLayout layout_{this};
    QHBoxLayout rules_;
    QCheckBox tidyToo_;
    QGroupBox tags_;
    QGridLayout tagsGrid_{&tags_};
    QGroupBox itself_;
    QGridLayout itselfGrid_{&itself_};
    std::array<QCheckBox, kRules> boxes_;
    QLabel unfound_;
    QHBoxLayout row_;
    QPushButton all_;
    QPushButton inverse_;
    QLabel counts_;
    QPushButton ok_;
    QPushButton cancel_;
};

}  // namespace bw
