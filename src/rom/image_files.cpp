#include "rom/image_files.h"

#include <algorithm>
#include <utility>

namespace bw {
namespace {

// Goes down at most as many levels as a path that the system opens can name.
void AddFolder(const std::filesystem::path& folder, FolderImages& out) {
    FileResult<std::vector<FolderItem>> items = ReadFolder(folder);
    if (!items) {
        out.unread.push_back(items.Problem());
        return;
    }
    std::ranges::sort(*items, {}, &FolderItem::name);
    const auto index = static_cast<uint32_t>(out.folders.size());
    out.folders.push_back(folder);
    for (FolderItem& item : *items) {
        if (item.isFolder) {
            AddFolder(folder / NamePath(item.name), out);
        } else {
            out.images.push_back({index, std::move(item.name)});
        }
    }
}

}  // namespace

FileResult<File> OpenImage(const std::filesystem::path& path) {
    if (const FileResult<> regular = CheckRegularFile(path); !regular) return regular.Problem();
    return File::OpenForReading(path);
}

std::filesystem::path FolderImages::PathOf(const Image& image) const {
    return folders[image.folder] / NamePath(image.name);
}

FolderImages ListImages(const std::filesystem::path& folder) {
    FolderImages found;
    AddFolder(folder, found);
    return found;
}

bool HasImageExtension(std::string_view name) {
    constexpr std::string_view kExtension = ".nes";
    if (name.size() <= kExtension.size()) return false;
    const std::string_view end = name.substr(name.size() - kExtension.size());
    return std::ranges::equal(end, kExtension, [](char a, char b) {
        return (a >= 'A' && a <= 'Z' ? a - 'A' + 'a' : a) == b;
    });
}

}  // namespace bw
