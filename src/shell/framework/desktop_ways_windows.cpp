#include <QDir>
#include <QProcess>

#include "shell/framework/desktop_ways.h"
#include "shell/framework/texts.h"

namespace bw {

// A process of its own, which may wait for a disk or a server without the window doing so. Its
// status tells nothing: it is 1 in any case.
void SelectInFileManager(const std::filesystem::path& file, QObject&,
                         const std::function<void(bool)>& end) {
    std::error_code error;
    if (!std::filesystem::exists(file, error)) return end(false);  // it would open another folder
    std::filesystem::path shown = file;
    shown.make_preferred();
    QProcess explorer;
    explorer.setProgram(QDir::toNativeSeparators(qEnvironmentVariable("SystemRoot")) +
                        QStringLiteral("\\explorer.exe"));
    // It takes its command line apart at commas and by rules of its own, the name in quotes.
    explorer.setNativeArguments(QStringLiteral("/select,\"%1\"").arg(PathToQt(shown)));
    end(explorer.startDetached());
}

bool FileDialogsTellCase() {
    return false;
}

}  // namespace bw
