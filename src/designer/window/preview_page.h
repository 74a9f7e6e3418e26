// The page of the panel that shows the menu as a console shows it, with the list and the design of
// now.
#pragma once

#include <QLabel>
#include <QVBoxLayout>
#include <optional>

#include "designer/window/design_host.h"
#include "designer/window/menu_preview.h"
#include "designer/window/panel_page.h"
#include "designer/window/preview_view.h"

class QDockWidget;

namespace bw {

class PreviewPage : public PanelPage {
    Q_OBJECT
  public:
    // `host` must outlive the page. `find` as MenuPreview has it.
    PreviewPage(DesignHost& host, std::shared_ptr<const GameList> games,
                MenuPreview::FindConsole find = FindEmulator);

    TextId Title() const override { return TextId::kPreviewTitle; }
    void SetLanguage(Language language) override;
    void Changed(Views stale) override;

    void SetGames(std::shared_ptr<const GameList> games);
    // What takes keys.
    QWidget& Screen() { return screen_; }

  protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    // What a snapshot was taken of: a step of the history and what is typed beside it.
    struct Mark {
        uint64_t revision;
        size_t step;
        std::u16string caption;
        bool operator==(const Mark&) const = default;
    };

    void FollowSight();
    void Follow();
    void Hold(uint8_t buttons);
    void ShowNews();
    QString Line(TextId id) const;
    QString KeysHint() const;

    DesignHost& host_;
    std::shared_ptr<const GameList> games_;
    Language language_;
    std::optional<Mark> taken_;
    bool inFront_ = true;  // of the pages that share a place
    bool startPressed_ = false;
    QDockWidget* dock_ = nullptr;
    PlayKeys keys_;
    QVBoxLayout layout_;
    PreviewView screen_;
    QLabel words_;
    QLabel hint_;
    MenuPreview preview_;
};

}  // namespace bw
