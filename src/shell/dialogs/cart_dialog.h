// The window of a cart that was opened: its games, taking them out, what differs from a dump.
#pragma once

#include <QAbstractTableModel>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSplitter>
#include <QTableView>
#include <QVBoxLayout>
#include <cstdint>
#include <filesystem>
#include <map>
#include <vector>

#include "builder/carts/cart_compare.h"
#include "builder/carts/cart_contents.h"
#include "settings/settings_store.h"
#include "shell/framework/dialog_base.h"
#include "shell/framework/elided_label.h"

namespace bw {

// The games of a cart, as far as is known.
class CartTable : public QAbstractTableModel {
    Q_OBJECT
  public:
    enum Column : int {
        kNumber,
        kName,
        kMapper,
        kPrg,
        kChr,
        kPlaces,
        kDiffers,
        kNotKnown,
        kColumns
    };

    void SetLanguage(Language language);
    void Show(std::vector<CartEntry> games);
    // By game, bytes; none for a cart that wasn't compared.
    void SetDifferences(const std::vector<GameDifference>& differences);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    QString Text(size_t row, int column) const;

    std::vector<CartEntry> games_;
    std::map<uint32_t, uint64_t> differences_;
    Language language_ = Language::kEnglish;
};

// Stays open beside the main window, by ShowModeless(). One cart at a time.
class CCartDialog : public CDialogBase {
    Q_OBJECT
  public:
    // `window` gets the command kCommandStopTask. Both must live longer.
    CCartDialog(SettingsStore& store, MessageTarget& window, Language language,
                QWidget* parent = nullptr);

    // Another cart, in place of the one before; nothing of that one is left.
    void ShowCart(const std::filesystem::path& file, CartContents cart);
    const std::filesystem::path& File() const { return file_; }
    const CartContents& Cart() const { return cart_; }
    // Work on the cart is under way: no other begins. `total` 0 if nobody knows.
    void SetBusy(bool busy);
    void ShowProgress(size_t done, size_t total);
    // What came of it. The differences of the games stand in the table until the next cart.
    void ShowResult(const std::u16string& lines);
    void ShowDifferences(const CartComparison& comparison);
    // As at closing; for an end that no window can prevent.
    void StorePlace() const;

  signals:
    void TakeOutWanted();
    void CompareWanted(uint32_t sectorBytes);
    void PlayWanted();

  protected:
    const MessageTable& Table() const override;
    void ApplyTexts() override;
    void Place() override;

  private:
    void Arrange();
    void FitColumns();
    MessageResult OnTakeOut(MessageParam wParam, MessageParam lParam);
    MessageResult OnCompare(MessageParam wParam, MessageParam lParam);
    MessageResult OnPlay(MessageParam wParam, MessageParam lParam);
    MessageResult OnStop(MessageParam wParam, MessageParam lParam);
    MessageResult OnClose(MessageParam wParam, MessageParam lParam);

    SettingsStore& store_;
    MessageTarget& window_;
    std::filesystem::path file_;
    CartContents cart_;

    QVBoxLayout layout_{this};
    ElidedLabel path_;
    QLabel facts_;
    QSplitter halves_{Qt::Vertical};
    CartTable model_;
    QTableView table_;
    QPlainTextEdit result_;
    QHBoxLayout progressRow_;
    QProgressBar progress_;
    QPushButton stop_;
    QHBoxLayout row_;
    QPushButton takeOut_;
    QPushButton compare_;
    QLabel sectorLabel_;
    QComboBox sectors_;
    QPushButton play_;
};

}  // namespace bw
