#include "rom/image_files.h"

#include <algorithm>
#include <utility>

#include "support/parallel.h"

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

FileResult<uint64_t> ImageFile::Size() const {
    if (const auto* member = std::get_if<Member>(&source_)) return member->size;
    return std::get<File>(source_).Size();
}

FileResult<size_t> ImageFile::ReadAt(uint64_t offset, std::span<uint8_t> buffer) const {
    const auto* member = std::get_if<Member>(&source_);
    if (member == nullptr) return std::get<File>(source_).ReadAt(offset, buffer);
    const std::span<const uint8_t> bytes = member->bytes;
    if (offset >= bytes.size()) return size_t{0};
    const auto part =
        bytes.subspan(static_cast<size_t>(offset))
            .first(std::min<size_t>(buffer.size(), bytes.size() - static_cast<size_t>(offset)));
    std::ranges::copy(part, buffer.begin());
    return part.size();
}

FileResult<ImageFile> OpenImage(const std::filesystem::path& path) {
    if (const FileResult<> regular = CheckRegularFile(path); !regular) return regular.Problem();
    FileResult<File> file = File::OpenForReading(path);
    if (!file) return file.Problem();
    return ImageFile(std::move(*file));
}

std::filesystem::path ContainerOf(const std::filesystem::path& path) {
    return path;
}

bool HasArchiveExtension(const std::filesystem::path&) {
    return false;
}

void VisitImages(std::span<const std::filesystem::path> paths, ImageDepth, size_t threads,
                 const ImageVisit& visit, const std::function<bool()>& goOn) {
    ForPieces(paths.size(), 1, threads, [&](size_t begin, size_t end) {
        for (size_t i = begin; i < end; ++i) {
            if (!goOn || goOn()) visit(i, OpenImage(paths[i]));
        }
    });
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
