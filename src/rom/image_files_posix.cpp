#include <cerrno>
#include <memory>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "rom/image_files.h"

namespace bw {
namespace {

enum class ItemKind { kFile, kFolder, kOther };

// Links to files are followed, links to folders aren't.
ItemKind AskForKind(int folder, const char* name, bool wanted) {
    struct stat status {};
    if (fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) != 0) return ItemKind::kOther;
    if (S_ISDIR(status.st_mode)) return ItemKind::kFolder;
    if (S_ISLNK(status.st_mode) && fstatat(folder, name, &status, 0) != 0) return ItemKind::kOther;
    return wanted && S_ISREG(status.st_mode) ? ItemKind::kFile : ItemKind::kOther;
}

// Most file systems tell the kind with the name, which spares a question about each file.
ItemKind KindOf(int folder, const dirent& item) {
    const bool wanted = IsWantedName(item.d_name);
    switch (item.d_type) {
        case DT_REG:
            return wanted ? ItemKind::kFile : ItemKind::kOther;
        case DT_DIR:
            return ItemKind::kFolder;
        case DT_LNK:
            return wanted ? AskForKind(folder, item.d_name, wanted) : ItemKind::kOther;
        case DT_UNKNOWN:
            return AskForKind(folder, item.d_name, wanted);
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

ImageStart HeaderReader::ReadOnDisk(const FolderImages::Image& image) {
    if (openFolder_ != image.folder) {
        if (descriptor_ >= 0) close(descriptor_);
        const std::filesystem::path& folder = images_.folders[image.folder];
        descriptor_ = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        openFolder_ = image.folder;
    }
    // The listing saw a regular file. Should a pipe or a device have taken its place since, then
    // nothing waits (O_NONBLOCK), and a pipe can't be read at an offset.
    ImageStart start;
    const int file =
        openat(descriptor_, image.name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (file < 0) return start;
    const ssize_t arrived = pread(file, start.bytes.data(), start.bytes.size(), 0);
    if (arrived > 0) start.arrived = static_cast<uint8_t>(arrived);
    if (struct stat status{}; fstat(file, &status) == 0) {
        start.size = static_cast<uint64_t>(status.st_size);
    }
    close(file);
    return start;
}

}  // namespace bw
