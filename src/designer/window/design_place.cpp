// Where the designer's window, its frame and its panel stand, from one opening to the next.
#include <QDockWidget>
#include <QScreen>
#include <algorithm>

#include "designer/window/design_parts.h"
#include "settings/setting_names.h"
#include "shell/framework/placement.h"

namespace bw {
namespace {

constexpr int kPanelWidth = 300;
// What frames, scroll bars, menu and status line take beside the designer's frame.
constexpr QSize kAround(40, 110);
// What the window manager puts around a window, which nobody knows before it shows: twice a title's
// height, since a window is centred without it.
constexpr QSize kDecoration(16, 64);
constexpr std::string_view kZoom = "Zoom";
constexpr std::string_view kPanels = "Panels";

}  // namespace

void CDesignDialog::Parts::SetZoom(int wanted) {
    const QSize room = window.screen()->availableSize();
    zoom = std::clamp(wanted, 1, 3);
    frame->SetScale(WholeScale(zoom, frame->devicePixelRatioF(), room));
    for (const ViewRow& row : ViewRows())
        frame->Of(row.control).update();
    frame->Dragged().hide();
    StoreNumber(Store(), kDesignKey, kZoom, static_cast<uint32_t>(zoom));
}

void CDesignDialog::Parts::RestorePlace() {
    const QSize room = window.screen()->availableSize();
    uint32_t stored = 0;
    const bool kept = Store().RegReadDword(kDesignKey, kZoom, stored) && stored >= 1 && stored <= 3;
    SetZoom(kept ? static_cast<int>(stored)
                 : FittingZoom(frame->devicePixelRatioF(), room - kAround - QSize(kPanelWidth, 0)));
    const std::vector<uint8_t> panels = ReadWholeBinary(Store(), kDesignKey, kPanels);
    inner.restoreState(QByteArray(reinterpret_cast<const char*>(panels.data()),
                                  static_cast<qsizetype>(panels.size())));
    window.setMinimumSize(400, 300);
    window.resize((frame->size() + kAround + QSize(kPanelWidth, 0)).boundedTo(room - kDecoration));
    if (StoredPlacement(Store(), kDesignKey)) {
        RestorePlacement(Store(), kDesignKey, window);
    } else {
        window.Centre();
    }
}

void CDesignDialog::Parts::StorePlace() {
    StorePlacement(Store(), kDesignKey, window);
    const QByteArray panels = inner.saveState();
    Store().RegWriteBinary(kDesignKey, kPanels,
                           std::span(reinterpret_cast<const uint8_t*>(panels.constData()),
                                     static_cast<size_t>(panels.size())));
}

void CDesignDialog::Parts::AddPage(PanelPage* page, const char* name, int command) {
    auto* dock = new QDockWidget(&inner);
    dock->setObjectName(QString::fromLatin1(name));
    dock->setWidget(page);
    inner.addDockWidget(Qt::RightDockWidgetArea, dock);
    menu.CheckMenuItem(command, true);
    QObject::connect(dock->toggleViewAction(), &QAction::toggled, &window,
                     [this, command](bool shown) { menu.CheckMenuItem(command, shown); });
    pages_.push_back({page, dock, command});
}

void CDesignDialog::Parts::TogglePage(int command) {
    for (const Page& page : pages_)
        if (page.command == command) page.dock->setVisible(page.dock->isHidden());
}

}  // namespace bw
