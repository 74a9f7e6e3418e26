#include <QProcess>
#include <QUrl>

#include "shell/framework/desktop_ways.h"
#include "shell/framework/texts.h"

namespace bw {
namespace {

// A call of org.freedesktop.FileManager1 (freedesktop.org, "File Manager DBus Interface"), which
// the large desktops' file managers answer.
QStringList SelectArguments(const std::filesystem::path& file) {
    QString url = QUrl::fromLocalFile(PathToQt(file)).toString(QUrl::FullyEncoded);
    url.replace(QLatin1Char(','), QStringLiteral("%2C"));  // dbus-send cuts lists at commas
    return {QStringLiteral("--session"),
            QStringLiteral("--print-reply"),
            QStringLiteral("--reply-timeout=3000"),
            QStringLiteral("--dest=org.freedesktop.FileManager1"),
            QStringLiteral("/org/freedesktop/FileManager1"),
            QStringLiteral("org.freedesktop.FileManager1.ShowItems"),
            QStringLiteral("array:string:") + url,
            QStringLiteral("string:")};
}

}  // namespace

void SelectInFileManager(const std::filesystem::path& file, QObject& owner,
                         const std::function<void(bool)>& end) {
    auto* call = new QProcess(&owner);
    const auto ended = [call, end](bool selected) {
        call->deleteLater();
        end(selected);
    };
    QObject::connect(call, &QProcess::errorOccurred, call, [ended](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) ended(false);
    });
    QObject::connect(call, &QProcess::finished, call,
                     [ended](int code, QProcess::ExitStatus status) {
                         ended(code == 0 && status == QProcess::NormalExit);
                     });
    call->start(QStringLiteral("dbus-send"), SelectArguments(file));
}

bool FileDialogsTellCase() {
    return true;
}

}  // namespace bw
