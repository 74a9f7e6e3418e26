// Game images on disk: opening one, finding those of a folder, and reading the starts of many.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "support/files.h"

namespace bw {

// An image for reading. Only regular files open: a folder, a pipe or a device counts as a file
// that can't be opened, and nothing waits for its other end.
FileResult<File> OpenImage(const std::filesystem::path& path);

// The images of a folder tree, in order of path, component by component.
struct FolderImages {
    struct Image {
        uint32_t folder;   // index into `folders`
        std::string name;  // a POSIX file name, or UTF-8
    };
    std::vector<std::filesystem::path> folders;  // each begins with the path that was searched
    std::vector<Image> images;
    std::vector<FileProblem> unread;  // folders that couldn't be read

    std::filesystem::path PathOf(const Image& image) const;
};

// All regular files with the extension .nes, in any letter case. Links to files count, links to
// folders below `folder` are not followed.
FolderImages ListImages(const std::filesystem::path& folder);

// Reads the starts of images that lie together, without opening each by its whole path. One object
// per thread.
class HeaderReader {
  public:
    explicit HeaderReader(const FolderImages& images) : images_(images) {}
    HeaderReader(const HeaderReader&) = delete;
    HeaderReader& operator=(const HeaderReader&) = delete;
    ~HeaderReader();

    // The number of bytes that arrived; 0 if the image can't be read.
    size_t Read(const FolderImages::Image& image, std::span<uint8_t> buffer);

  private:
    const FolderImages& images_;
    std::optional<uint32_t> openFolder_;
    int descriptor_ = -1;  // of that folder, on POSIX systems
};

// What the search needs of the system. Names are as in FolderImages.
struct FolderItem {
    std::string name;
    bool isFolder;
};
// The folders and the images of one folder, in any order.
FileResult<std::vector<FolderItem>> ReadFolder(const std::filesystem::path& folder);
std::filesystem::path NamePath(const std::string& name);
bool HasImageExtension(std::string_view name);

}  // namespace bw
