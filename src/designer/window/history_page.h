// The undo history as a list: a click or Enter goes to a state.
#pragma once

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
};

}  // namespace bw
