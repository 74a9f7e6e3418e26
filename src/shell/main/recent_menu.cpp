#include "shell/main/recent_menu.h"

#include <QFontMetrics>
#include <cstddef>
#include <system_error>
#include <utility>

#include "shell/framework/commands.h"
#include "shell/framework/texts.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr int kWidest = 480;  // pixels; the tip has the whole path

QString EntryText(int number, const QString& path, const QFontMetrics& metrics) {
    QString shown = metrics.elidedText(path, Qt::ElideMiddle, kWidest);
    shown.replace(QLatin1Char('&'), QStringLiteral("&&"));
    return QStringLiteral("&%1  %2").arg(number).arg(shown);
}

}  // namespace

int FirstRecentCommand(RecentKind kind) {
    switch (kind) {
        case RecentKind::kLists:
            return kCommandRecentLists;
        case RecentKind::kDesigns:
            return kCommandRecentDesigns;
        default:
            return kCommandRecentCarts;
    }
}

RecentMenu::RecentMenu(ListHost& host, CommandMenu& menu, Open open)
    : host_(host), menu_(menu), open_(std::move(open)) {
    QObject::connect(&menu_.PopupOf(kCommandOpenCart), &QMenu::aboutToShow, &menu_.Bar(),
                     [this] { Show(); });
}

void RecentMenu::Show() {
    for (const RecentKind kind : kRecentKinds) {
        const std::vector<std::filesystem::path> files = RecentFiles(host_.Store(), kind);
        const int first = FirstRecentCommand(kind);
        QMenu& popup = menu_.PopupOf(first);
        popup.menuAction()->setEnabled(!files.empty());
        for (int i = 0; i < kRecentFiles; ++i) {
            const bool used = static_cast<size_t>(i) < files.size();
            const QString path = used ? PathToQt(files[static_cast<size_t>(i)]) : QString();
            menu_.SetEntryText(first + i,
                               used ? EntryText(i + 1, path, popup.fontMetrics()) : QString());
            menu_.Entry(first + i).setToolTip(path);
        }
    }
}

void RecentMenu::Choose(RecentKind kind, int number) {
    const std::vector<std::filesystem::path> files = RecentFiles(host_.Store(), kind);
    if (static_cast<size_t>(number) >= files.size()) return;
    const std::filesystem::path file = files[static_cast<size_t>(number)];
    std::error_code error;
    if (std::filesystem::exists(file, error)) return open_(kind, file);
    ForgetRecentFile(host_.Store(), kind, file);
    host_.Tell(FormatText(LoadText(TextId::kPlayNoFile, host_.CurrentLanguage()), PathText(file)));
}

}  // namespace bw
