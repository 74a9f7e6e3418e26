#include "rom/image_files.h"
#include "support/text.h"

namespace bw {

FileResult<std::vector<FolderItem>> ReadFolder(const std::filesystem::path& folder) {
    std::vector<FolderItem> items;
    std::error_code error;
    std::filesystem::directory_iterator item(folder, error);
    if (error) return ProblemOf(folder, error);
    for (; !error && item != std::filesystem::directory_iterator(); item.increment(error)) {
        std::error_code ignored;
        std::string name = WideToBytes(PathText(item->path().filename()));
        const bool isFolder = item->is_directory(ignored) && !item->is_symlink(ignored);
        if (isFolder || (IsWantedName(name) && item->is_regular_file(ignored))) {
            items.push_back({std::move(name), isFolder});
        }
    }
    return items;
}

std::filesystem::path NamePath(const std::string& name) {
    return TextPath(BytesToWide(name));
}

HeaderReader::~HeaderReader() = default;

ImageStart HeaderReader::ReadOnDisk(const FolderImages::Image& image) {
    const auto file = OpenImage(images_.PathOf(image));
    return file ? StartOf(*file) : ImageStart();
}

}  // namespace bw
