// Which of the checked versions of a game stay checked.
#pragma once

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>
#include <vector>

#include "settings/settings_store.h"
#include "shell/dialogs/best_table.h"
#include "shell/framework/dialog_base.h"

namespace bw {

// Ends with kEndOk if the checks are to be taken. The rules are read from the store at opening and
// stored at the end, whatever that is.
class CBestDialog : public CDialogBase {
  public:
    // `games` must not change while the dialog is open.
    CBestDialog(const GameList& games, SettingsStore& store, Language language,
                QWidget* parent = nullptr);

    // The rows whose checks go.
    std::vector<uint32_t> Surplus() const { return model_.Surplus(); }

  protected:
    const MessageTable& Table() const override;
    void ApplyTexts() override;
    void Place() override;

  private:
    void Arrange();
    void ArrangeTable();
    BestRules Rules() const;
    void ReadRules();
    void StoreRules();
    void ListRules(const std::vector<BestRule>& order);
    // The rules have changed; the groups too.
    void ShowBest();
    void ShowGroups();
    void ShowCounts();
    void MoveRule(int by);

    MessageResult OnInit(MessageParam wParam, MessageParam lParam);
    MessageResult OnUp(MessageParam wParam, MessageParam lParam);
    MessageResult OnDown(MessageParam wParam, MessageParam lParam);
    MessageResult OnVersions(MessageParam wParam, MessageParam lParam);
    MessageResult OnOk(MessageParam wParam, MessageParam lParam);
    MessageResult OnCancel(MessageParam wParam, MessageParam lParam);
    MessageResult OnClose(MessageParam wParam, MessageParam lParam);

    const GameList& games_;
    SettingsStore& store_;
    RowGroups groups_;
    BestTableModel model_;

    QVBoxLayout layout_{this};
    QLabel orderLabel_;
    QHBoxLayout top_;
    QListWidget order_;
    QVBoxLayout moves_;
    QPushButton up_;
    QPushButton down_;
    QVBoxLayout right_;
    QLabel regionsLabel_;
    QLineEdit regions_;
    QCheckBox versions_;
    QTableView table_;
    QHBoxLayout row_;
    QLabel counts_;
    QPushButton ok_;
    QPushButton cancel_;
};

}  // namespace bw
