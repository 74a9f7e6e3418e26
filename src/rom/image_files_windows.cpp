#include "rom/image_files.h"
#include "support/file_queries.h"
#include "support/text.h"

namespace bw {
namespace {

// Links to files are followed, links to folders aren't.
bool IsWantedFile(const FolderEntry& entry, const std::string& name) {
    if (!IsWantedName(name)) return false;
    return entry.kind == FileKind::kFile || (entry.kind == FileKind::kLink && IsFile(entry.path));
}

}  // namespace

FileResult<std::vector<FolderItem>> ReadFolder(const std::filesystem::path& folder) {
    const auto entries = ListFolder(folder);
    if (!entries) return entries.Problem();
    std::vector<FolderItem> items;
    for (const FolderEntry& entry : *entries) {
        std::string name = WideToBytes(PathText(entry.path.filename()));
        const bool isFolder = entry.kind == FileKind::kFolder;
        if (isFolder || IsWantedFile(entry, name)) items.push_back({std::move(name), isFolder});
    }
    return items;
}

std::filesystem::path NamePath(const std::string& name) {
    return TextPath(BytesToWide(name));
}

HeaderReader::~HeaderReader() = default;

// The listing saw a regular file; should a device's name have been among them, nothing waits.
ImageStart HeaderReader::ReadOnDisk(const FolderImages::Image& image) {
    const auto file = OpenImage(images_.PathOf(image));
    return file ? StartOf(*file) : ImageStart();
}

}  // namespace bw
