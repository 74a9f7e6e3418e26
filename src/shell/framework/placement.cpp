#include "shell/framework/placement.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <vector>

#include "settings/settings_store.h"

namespace bw {
namespace {

// What must be seen of a window's upper edge to get hold of it, and the height of a title bar that
// the desktop may put above.
constexpr int kHandleWidth = 80;
constexpr int kTitleHeight = 32;

bool Reachable(const QRect& place, const QRect& screen) {
    const QRect edge(place.left(), place.top(), place.width(), kTitleHeight);
    const QRect seen = edge.intersected(screen);
    return seen.width() >= std::min(kHandleWidth, place.width()) && seen.height() == kTitleHeight;
}

}  // namespace

void StorePlacement(SettingsStore& store, std::string_view key, const QWidget& window) {
    const QRect place = window.normalGeometry();
    // Left of, or above, the first screen the numbers are negative: stored modulo 2^32.
    StoreNumber(store, key, "PosX", static_cast<uint32_t>(place.x()));
    StoreNumber(store, key, "PosY", static_cast<uint32_t>(place.y()));
    StoreNumber(store, key, "SizeX", static_cast<uint32_t>(place.width()));
    StoreNumber(store, key, "SizeY", static_cast<uint32_t>(place.height()));
}

std::optional<QRect> StoredPlacement(const SettingsStore& store, std::string_view key) {
    uint32_t x = 0;
    uint32_t y = 0;
    uint32_t width = 0;
    uint32_t height = 0;
    const bool all = store.RegReadDword(key, "SizeX", width) &&
                     store.RegReadDword(key, "SizeY", height) &&
                     store.RegReadDword(key, "PosX", x) && store.RegReadDword(key, "PosY", y);
    if (!all) return std::nullopt;
    // Numbers that no desktop has are held where arithmetic with them can't overflow.
    const auto held = [](uint32_t value) {
        return std::clamp(static_cast<int32_t>(value), -1'000'000, 1'000'000);
    };
    return QRect(held(x), held(y), held(width), held(height));
}

QRect OntoScreen(const QRect& place, std::span<const QRect> screens) {
    if (screens.empty()) return place;
    QRect desktop;
    for (const QRect& screen : screens)
        desktop |= screen;
    const auto found =
        std::ranges::find_if(screens, [&](const QRect& one) { return Reachable(place, one); });
    // The same size takes more of a screen whose pixels were made larger.
    const bool fits = place.width() <= desktop.width() && place.height() <= desktop.height();
    if (found != screens.end() && fits) return place;
    const QRect& screen = found != screens.end() ? *found : screens.front();
    const int width = std::clamp(place.width(), 1, screen.width());
    const int height = std::clamp(place.height(), 1, std::max(1, screen.height() - kTitleHeight));
    const int x = std::clamp(place.x(), screen.left(), screen.left() + screen.width() - width);
    const int top = screen.top() + kTitleHeight;
    const int y = std::clamp(place.y(), top, screen.top() + screen.height() - height);
    return {x, y, width, height};
}

void RestorePlacement(const SettingsStore& store, std::string_view key, QWidget& window) {
    std::vector<QRect> screens;
    for (const QScreen* screen : QGuiApplication::screens())
        screens.push_back(screen->availableGeometry());
    if (const std::optional<QRect> place = StoredPlacement(store, key)) {
        window.setGeometry(OntoScreen(
            QRect(place->topLeft(), place->size().expandedTo(window.minimumSize())), screens));
        return;
    }
    const QRect work = window.screen()->availableGeometry();
    const QSize size = window.size().boundedTo(work.size());
    window.setGeometry(QRect(work.center() - QPoint(size.width() / 2, size.height() / 2), size));
}

}  // namespace bw
