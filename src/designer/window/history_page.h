// The undo history as a list: a click or Enter goes to a state. It follows a change a moment later,
// so that what the user draws on is painted first, and a held key's steps at once.
#pragma once

#include <QTimer>
#include <memory>

#include "designer/window/design_host.h"
#include "designer/window/panel_page.h"

class QListView;
class QModelIndex;

namespace bw {

class HistoryPage : public PanelPage {
    Q_OBJECT
  public:
    // `host` must outlive the page.
    explicit HistoryPage(DesignHost& host, QWidget* parent = nullptr);
    ~HistoryPage() override;

    TextId Title() const override { return TextId::kHistoryTitle; }
    void SetLanguage(Language language) override;
    void Changed(Views stale) override;

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    class Rows;

    void GoTo(const QModelIndex& row);
    void Follow();

    DesignHost& host_;
    std::unique_ptr<Rows> rows_;
    QListView* list_;
    QTimer follow_;
};

}  // namespace bw
