#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "rom/image_files.h"

namespace bw {
namespace {

// Without O_NONBLOCK, opening a pipe waits until somebody writes to it.
constexpr int kOpenFlags = O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;

std::optional<size_t> ReadFully(int descriptor, uint64_t offset, std::span<uint8_t> buffer) {
    size_t done = 0;
    while (done < buffer.size()) {
        const ssize_t count = pread(descriptor, buffer.data() + done, buffer.size() - done,
                                    static_cast<off_t>(offset + done));
        if (count == 0) break;
        if (count > 0) {
            done += static_cast<size_t>(count);
        } else if (errno != EINTR) {
            if (done == 0) return std::nullopt;
            break;
        }
    }
    return done;
}

bool HasImageExtension(std::string_view name) {
    constexpr std::string_view kExtension = ".nes";
    if (name.size() <= kExtension.size()) return false;
    const std::string_view end = name.substr(name.size() - kExtension.size());
    return std::equal(end.begin(), end.end(), kExtension.begin(), [](char a, char b) {
        return (a >= 'A' && a <= 'Z' ? a - 'A' + 'a' : a) == b;
    });
}

enum class ItemKind { kImage, kFolder, kOther };

ItemKind KindOf(int folder, const dirent& item) {
    const bool image = HasImageExtension(item.d_name);
    switch (item.d_type) {
        case DT_REG:
            return image ? ItemKind::kImage : ItemKind::kOther;
        case DT_DIR:
            return ItemKind::kFolder;
        case DT_LNK:
            if (!image) return ItemKind::kOther;
            break;
        case DT_UNKNOWN:
            break;
        default:
            return ItemKind::kOther;
    }
    // A link, or a file system that doesn't tell.
    struct stat status {};
    if (fstatat(folder, item.d_name, &status, AT_SYMLINK_NOFOLLOW) != 0) return ItemKind::kOther;
    if (S_ISDIR(status.st_mode)) return ItemKind::kFolder;
    if (S_ISLNK(status.st_mode) && fstatat(folder, item.d_name, &status, 0) != 0) {
        return ItemKind::kOther;
    }
    return image && S_ISREG(status.st_mode) ? ItemKind::kImage : ItemKind::kOther;
}

struct Item {
    std::string name;
    bool isFolder;
};

std::vector<Item> ReadFolder(const std::filesystem::path& folder) {
    struct CloseFolder {
        void operator()(DIR* opened) const { closedir(opened); }
    };
    std::vector<Item> items;
    const std::unique_ptr<DIR, CloseFolder> opened(opendir(folder.c_str()));
    if (!opened) return items;
    while (const dirent* item = readdir(opened.get())) {
        const std::string_view name = item->d_name;
        if (name == "." || name == "..") continue;
        const ItemKind kind = KindOf(dirfd(opened.get()), *item);
        if (kind != ItemKind::kOther)
            items.push_back({std::string(name), kind == ItemKind::kFolder});
    }
    std::sort(items.begin(), items.end(),
              [](const Item& a, const Item& b) { return a.name < b.name; });
    return items;
}

// Goes down at most as many levels as a path that the system opens can name.
void AddFolder(const std::filesystem::path& folder, FolderImages& out) {
    std::vector<Item> items = ReadFolder(folder);
    if (items.empty()) return;
    const auto index = static_cast<uint32_t>(out.folders.size());
    out.folders.push_back(folder);
    for (Item& item : items) {
        if (item.isFolder) {
            AddFolder(folder / item.name, out);
        } else {
            out.images.push_back({index, std::move(item.name)});
        }
    }
}

}  // namespace

std::optional<ImageFile> ImageFile::Open(const std::filesystem::path& path) {
    ImageFile image;
    image.descriptor_ = open(path.c_str(), kOpenFlags);
    struct stat status {};
    if (image.descriptor_ < 0 || fstat(image.descriptor_, &status) != 0 ||
        !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    image.size_ = static_cast<uint64_t>(status.st_size);
    return image;
}

ImageFile::ImageFile(ImageFile&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)), size_(other.size_) {}

ImageFile::~ImageFile() {
    if (descriptor_ >= 0) close(descriptor_);
}

std::optional<size_t> ImageFile::ReadAt(uint64_t offset, std::span<uint8_t> buffer) const {
    return ReadFully(descriptor_, offset, buffer);
}

std::filesystem::path FolderImages::PathOf(const Image& image) const {
    return folders[image.folder] / image.name;
}

FolderImages ListImages(const std::filesystem::path& folder) {
    FolderImages found;
    AddFolder(folder, found);
    return found;
}

HeaderReader::~HeaderReader() {
    if (descriptor_ >= 0) close(descriptor_);
}

size_t HeaderReader::Read(const FolderImages::Image& image, std::span<uint8_t> buffer) {
    if (openFolder_ != image.folder) {
        if (descriptor_ >= 0) close(descriptor_);
        descriptor_ =
            open(images_.folders[image.folder].c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        openFolder_ = image.folder;
    }
    // The listing saw a regular file. Should a pipe or a device have taken its place since, then
    // nothing waits, and reading at an offset fails.
    const int descriptor = openat(descriptor_, image.name.c_str(), kOpenFlags);
    if (descriptor < 0) return 0;
    const size_t arrived = ReadFully(descriptor, 0, buffer).value_or(0);
    close(descriptor);
    return arrived;
}

}  // namespace bw
