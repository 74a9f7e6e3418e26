// The window with the pictures of a check: it fills as the check runs.
#pragma once

#include <QCheckBox>
#include <QHBoxLayout>
#include <QListView>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSplitter>
#include <QVBoxLayout>
#include <optional>

#include "settings/settings_store.h"
#include "shell/dialogs/check_sheet.h"
#include "shell/framework/dialog_base.h"
#include "shell/framework/elided_label.h"

namespace bw {

// The chosen game's picture, as large as it fits in whole steps from its own size on.
class GamePicture : public QWidget {
  public:
    void Show(QImage picture);
    QSize sizeHint() const override { return {ConsolePicture::kWidth, ConsolePicture::kHeight}; }
    QSize minimumSizeHint() const override { return sizeHint() / 4; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QImage picture_;
};

// Stays open beside the main window, by ShowModeless(). A click on a game and Enter choose it; the
// arrows alone show what was found of it.
class CCheckDialog : public CDialogBase {
    Q_OBJECT
  public:
    // `window` gets the commands kCommandStopTask and kCommandCheckCart. All must live longer;
    // whoever changes the report tells of it by the three calls below.
    CCheckDialog(const CheckReport& report, SettingsStore& store, MessageTarget& window,
                 Language language, QWidget* parent = nullptr);

    // Another check has begun.
    void Renew();
    void TellChecked(size_t game);
    void TellState();
    // As at closing; for an end that no window can prevent.
    void StorePlace() const;
    // A line in place of the state, until that changes.
    void Say(const QString& line) { state_.SetLine(line); }

  signals:
    void GameChosen(size_t game);
    // The pictures are to be saved.
    void SaveWanted();

  protected:
    const MessageTable& Table() const override;
    void ApplyTexts() override;
    void Place() override;

  private:
    void Arrange();
    void ShowChosen();
    void Choose(const QModelIndex& index);
    MessageResult OnStop(MessageParam wParam, MessageParam lParam);
    MessageResult OnAgain(MessageParam wParam, MessageParam lParam);
    MessageResult OnOnly(MessageParam wParam, MessageParam lParam);
    MessageResult OnSave(MessageParam wParam, MessageParam lParam);
    MessageResult OnClose(MessageParam wParam, MessageParam lParam);

    const CheckReport& report_;
    SettingsStore& store_;
    MessageTarget& window_;
    std::optional<size_t> chosen_;  // of the report; of what shows below

    CheckSheetModel model_;
    CheckSheetPainter painter_;
    QVBoxLayout layout_{this};
    QHBoxLayout stateRow_;
    QHBoxLayout choiceRow_;
    ElidedLabel state_;
    QProgressBar progress_;
    QPushButton stop_;
    QPushButton again_;
    QCheckBox only_;
    QPushButton save_;
    QSplitter halves_{Qt::Vertical};
    QListView sheet_;
    QWidget details_;
    QHBoxLayout detailsRow_{&details_};
    GamePicture picture_;
    QPlainTextEdit text_;
};

}  // namespace bw
