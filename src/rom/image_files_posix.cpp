#include <cerrno>
#include <memory>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "rom/image_files.h"

namespace bw {
namespace {

enum class ItemKind { kImage, kFolder, kOther };

// Links to files are followed, links to folders aren't.
ItemKind AskForKind(int folder, const char* name, bool image) {
    struct stat status {};
    if (fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) != 0) return ItemKind::kOther;
    if (S_ISDIR(status.st_mode)) return ItemKind::kFolder;
    if (S_ISLNK(status.st_mode) && fstatat(folder, name, &status, 0) != 0) return ItemKind::kOther;
    return image && S_ISREG(status.st_mode) ? ItemKind::kImage : ItemKind::kOther;
}

// Most file systems tell the kind with the name, which spares a question about each file.
ItemKind KindOf(int folder, const dirent& item) {
    const bool image = HasImageExtension(item.d_name);
    switch (item.d_type) {
        case DT_REG:
            return image ? ItemKind::kImage : ItemKind::kOther;
        case DT_DIR:
            return ItemKind::kFolder;
        case DT_LNK:
            return image ? AskForKind(folder, item.d_name, image) : ItemKind::kOther;
        case DT_UNKNOWN:
            return AskForKind(folder, item.d_name, image);
        default:
            return ItemKind::kOther;
    }
}

}  // namespace

FileResult<std::vector<FolderItem>> ReadFolder(const std::filesystem::path& folder) {
    struct CloseFolder {
        void operator()(DIR* opened) const { closedir(opened); }
    };
    std::vector<FolderItem> items;
    const std::unique_ptr<DIR, CloseFolder> opened(opendir(folder.c_str()));
    if (!opened) return ProblemOf(folder, {errno, std::generic_category()});
    while (const dirent* item = readdir(opened.get())) {
        std::string name = item->d_name;
        if (name == "." || name == "..") continue;
        const ItemKind kind = KindOf(dirfd(opened.get()), *item);
        if (kind == ItemKind::kOther) continue;
        items.push_back({std::move(name), kind == ItemKind::kFolder});
    }
    return items;
}

std::filesystem::path NamePath(const std::string& name) {
    return name;
}

HeaderReader::~HeaderReader() {
    if (descriptor_ >= 0) close(descriptor_);
}

size_t HeaderReader::Read(const FolderImages::Image& image, std::span<uint8_t> buffer) {
    if (openFolder_ != image.folder) {
        if (descriptor_ >= 0) close(descriptor_);
        const std::filesystem::path& folder = images_.folders[image.folder];
        descriptor_ = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        openFolder_ = image.folder;
    }
    // The listing saw a regular file. Should a pipe or a device have taken its place since, then
    // nothing waits (O_NONBLOCK), and a pipe can't be read at an offset.
    const int file =
        openat(descriptor_, image.name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (file < 0) return 0;
    const ssize_t arrived = pread(file, buffer.data(), buffer.size(), 0);
    close(file);
    return arrived < 0 ? 0 : static_cast<size_t>(arrived);
}

}  // namespace bw
