#include "shell/framework/file_manager.h"

#include <QDesktopServices>
#include <QUrl>

#include "rom/image_files.h"
#include "shell/framework/desktop_ways.h"
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

}  // namespace

void ShowInFileManager(const std::filesystem::path& wanted, QObject& owner, const Failed& failed) {
    const std::filesystem::path path = ContainerOf(wanted);
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) return OpenFolder(path, failed);
    SelectInFileManager(path, owner, [folder = path.parent_path(), failed](bool selected) {
        if (!selected) OpenFolder(folder, failed);
    });
}

}  // namespace bw
