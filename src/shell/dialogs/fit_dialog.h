// How much of a board the checked games take, which of them to leave out, and filling it up.
#pragma once

#include <QAbstractTableModel>
#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QVBoxLayout>
#include <array>
#include <cstdint>
#include <optional>
#include <set>
#include <vector>

#include "builder/layout/board_fit.h"
#include "list/list_editor.h"
#include "settings/settings_store.h"
#include "shell/framework/dialog_base.h"

namespace bw {

// The checked games with what each adds, and a square before those that are to be left out.
class FitTable : public QAbstractTableModel {
    Q_OBJECT
  public:
    enum Column : int { kLeaveOut, kName, kAdds, kColumns };

    void SetLanguage(Language language);
    // `games` must live until the next call; `shares` is what a measurement gave for them.
    void Show(const GameList& games, std::vector<GameShare> shares);
    // Ticks these rows of the list and no other ones.
    void Tick(const std::vector<uint32_t>& rows);
    const std::set<uint32_t>& Ticked() const { return ticked_; }
    // The shown games that the board can't run.
    std::vector<uint32_t> CantRun() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

  signals:
    // By the user.
    void TicksChanged();

  private:
    const GameList* games_ = nullptr;
    std::vector<GameShare> shares_;
    std::set<uint32_t> ticked_;  // rows of the list
    Language language_ = Language::kEnglish;
};

// For DoModal(): ends with kEndOk when games were unchecked. The list must not change around it.
class CFitDialog : public CDialogBase {
  public:
    using Rows = std::optional<std::vector<uint32_t>>;

    // Opens for `board`, which the user may change. `shown`: the rows that filling up may take
    // from, without it all. Editor and store must live longer.
    CFitDialog(ListEditor& editor, SettingsStore& store, BoardType board, Rows shown,
               Language language, QWidget* parent = nullptr);

    // What came of it, in words; empty if nothing did.
    const std::u16string& Told() const { return told_; }

  protected:
    const MessageTable& Table() const override;
    void ApplyTexts() override;
    void Place() override;

  private:
    void Arrange();
    BoardType Board() const;
    // The list as it is, measured anew.
    void Measure();
    // The totals without what is ticked.
    void ShowTotals();
    void TickProposed();
    MessageResult OnInit(MessageParam wParam, MessageParam lParam);
    MessageResult OnChoice(MessageParam wParam, MessageParam lParam);
    MessageResult OnFillUp(MessageParam wParam, MessageParam lParam);
    MessageResult OnUncheck(MessageParam wParam, MessageParam lParam);
    MessageResult OnCancel(MessageParam wParam, MessageParam lParam);
    MessageResult OnClose(MessageParam wParam, MessageParam lParam);

    ListEditor& editor_;
    SettingsStore& store_;
    BuildSettings settings_;
    Rows shown_;
    std::u16string told_;

    QVBoxLayout layout_{this};
    QHBoxLayout boardRow_;
    QLabel boardLabel_;
    QComboBox boards_;
    QProgressBar bar_;
    QLabel totals_;
    QGroupBox leaveOut_;
    QHBoxLayout leaveOutRow_{&leaveOut_};
    std::array<QRadioButton, 3> ways_;
    FitTable model_;
    QTableView table_;
    QHBoxLayout row_;
    QPushButton fillUp_;
    QPushButton uncheck_;
    QPushButton cancel_;
};

}  // namespace bw
