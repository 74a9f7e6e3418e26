#include "shell/framework/file_manager.h"

#include <QDesktopServices>
#include <QProcess>
#include <QUrl>

#include "rom/image_files.h"
#include "shell/framework/texts.h"

namespace bw {
namespace {

using Failed = std::function<void(const std::filesystem::path&)>;

void OpenFolder(const std::filesystem::path& folder, const Failed& failed) {
    std::error_code error;
    const bool opens = std::filesystem::is_directory(folder, error) &&
                       QDesktopServices::openUrl(QUrl::fromLocalFile(PathToQt(folder)));
    if (!opens) failed(folder);
}

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

// Where nobody answers the call, the folder has to do.
void SelectFile(const std::filesystem::path& file, QObject& owner, const Failed& failed) {
    auto* call = new QProcess(&owner);
    const auto end = [call, folder = file.parent_path(), failed](bool selected) {
        call->deleteLater();
        if (!selected) OpenFolder(folder, failed);
    };
    QObject::connect(call, &QProcess::errorOccurred, call, [end](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) end(false);
    });
    QObject::connect(call, &QProcess::finished, call, [end](int code, QProcess::ExitStatus status) {
        end(code == 0 && status == QProcess::NormalExit);
    });
    call->start(QStringLiteral("dbus-send"), SelectArguments(file));
}

}  // namespace

void ShowInFileManager(const std::filesystem::path& wanted, QObject& owner, const Failed& failed) {
    const std::filesystem::path path = ContainerOf(wanted);
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) {
        OpenFolder(path, failed);
    } else {
        SelectFile(path, owner, failed);
    }
}

}  // namespace bw
