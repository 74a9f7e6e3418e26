// The page of the panel that lists what is wrong with the design.
#pragma once

#include <QAbstractListModel>
#include <QIcon>
#include <QLabel>
#include <QListView>
#include <QStyledItemDelegate>
#include <QTimer>
#include <QVBoxLayout>
#include <array>
#include <memory>
#include <span>
#include <vector>

#include "builder/design_check/design_check.h"
#include "designer/window/design_host.h"
#include "designer/window/panel_page.h"

namespace bw {

// A row for each finding: its severity as a picture and as a word, and its sentence.
class FindingModel : public QAbstractListModel {
    Q_OBJECT
  public:
    FindingModel() { RenewLook(); }

    // Rows that stay keep their place in the list, and what is current there.
    void Set(std::span<const DesignFinding> findings, Language language);
    const DesignFinding& At(const QModelIndex& index) const {
        return findings_[static_cast<size_t>(index.row())];
    }
    // After a change of style.
    void RenewLook();

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

  private:
    std::vector<DesignFinding> findings_;
    Language language_ = Language::kEnglish;
    std::array<QIcon, 3> icons_;  // of the severities
};

class ProblemsPage : public PanelPage {
    Q_OBJECT
  public:
    explicit ProblemsPage(DesignHost& host);

    TextId Title() const override { return TextId::kProblemsTitle; }
    void SetLanguage(Language language) override;
    // The check itself comes when the window has nothing else to do: behind the paint event, and
    // once for all changes until then.
    void Changed(Views stale) override;

    size_t Count() const { return findings_.size(); }

  signals:
    // For whoever shows the number elsewhere, such as on the page's tab.
    void CountChanged(size_t count);

  protected:
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Check();
    void ShowFindings();
    void GoTo(const QModelIndex& row);

    DesignHost& host_;
    Language language_;
    std::vector<DesignFinding> findings_;
    FindingModel model_;
    std::unique_ptr<QStyledItemDelegate> rows_;
    QVBoxLayout layout_;
    QLabel heading_;
    QListView list_;
    QTimer later_;
};

}  // namespace bw
