#include <algorithm>
#include <utility>

#include "rom/image_files.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

struct Item {
    std::filesystem::path path;
    bool isFolder;
};

std::vector<Item> ReadFolder(const std::filesystem::path& folder) {
    std::vector<Item> items;
    std::error_code error;
    std::filesystem::directory_iterator item(folder, error);
    for (; !error && item != std::filesystem::directory_iterator(); item.increment(error)) {
        std::error_code ignored;
        const bool isFolder = item->is_directory(ignored) && !item->is_symlink(ignored);
        if (isFolder || (HasExtension(item->path(), "nes") && item->is_regular_file(ignored))) {
            items.push_back({item->path(), isFolder});
        }
    }
    std::sort(items.begin(), items.end(),
              [](const Item& a, const Item& b) { return a.path.filename() < b.path.filename(); });
    return items;
}

void AddFolder(const std::filesystem::path& folder, FolderImages& out) {
    const std::vector<Item> items = ReadFolder(folder);
    if (items.empty()) return;
    const auto index = static_cast<uint32_t>(out.folders.size());
    out.folders.push_back(folder);
    for (const Item& item : items) {
        if (item.isFolder) {
            AddFolder(item.path, out);
        } else {
            out.images.push_back({index, ToUtf8(PathText(item.path.filename()))});
        }
    }
}

}  // namespace

std::optional<ImageFile> ImageFile::Open(const std::filesystem::path& path) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) return std::nullopt;
    std::optional<File> file = File::OpenForReading(path);
    if (!file) return std::nullopt;
    ImageFile image;
    image.size_ = file->Size().value_or(0);
    image.file_ = std::move(*file);
    return image;
}

ImageFile::ImageFile(ImageFile&& other) noexcept
    : file_(std::move(other.file_)), size_(other.size_) {}

ImageFile::~ImageFile() = default;

std::optional<size_t> ImageFile::ReadAt(uint64_t offset, std::span<uint8_t> buffer) const {
    return file_.ReadAt(offset, buffer);
}

std::filesystem::path FolderImages::PathOf(const Image& image) const {
    return folders[image.folder] / TextPath(ToWide(image.name));
}

FolderImages ListImages(const std::filesystem::path& folder) {
    FolderImages found;
    AddFolder(folder, found);
    return found;
}

HeaderReader::~HeaderReader() = default;

size_t HeaderReader::Read(const FolderImages::Image& image, std::span<uint8_t> buffer) {
    const auto file = ImageFile::Open(images_.PathOf(image));
    return file ? file->ReadAt(0, buffer).value_or(0) : 0;
}

}  // namespace bw
