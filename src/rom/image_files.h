// Game images on disk: opening one, and finding those of a folder. One implementation for POSIX
// systems, one with the standard library's means for others.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "support/files.h"

namespace bw {

// An image opened for reading. Only regular files open: a folder, a pipe or a device counts as a
// file that can't be opened, and opening one doesn't wait for its other end.
class ImageFile {
  public:
    static std::optional<ImageFile> Open(const std::filesystem::path& path);
    ImageFile(ImageFile&& other) noexcept;
    ImageFile& operator=(ImageFile&&) = delete;
    ~ImageFile();

    // Bytes; the size at the time of opening.
    uint64_t Size() const { return size_; }
    // The number of bytes that arrived: fewer than asked for at the file's end or at an error in
    // the middle; nothing if the first byte can't be read.
    std::optional<size_t> ReadAt(uint64_t offset, std::span<uint8_t> buffer) const;

  private:
    ImageFile() = default;
    int descriptor_ = -1;  // POSIX
    File file_;            // elsewhere
    uint64_t size_ = 0;
};

// The images of a folder tree, in order of path.
struct FolderImages {
    struct Image {
        uint32_t folder;   // index into `folders`
        std::string name;  // UTF-8, or the bytes of a POSIX file name
    };
    std::vector<std::filesystem::path> folders;  // each begins with the path that was searched
    std::vector<Image> images;

    std::filesystem::path PathOf(const Image& image) const;
};

// All regular files with the extension .nes, in any letter case. Links to files count, links to
// folders below `folder` are not followed. Folders that can't be read are left out.
FolderImages ListImages(const std::filesystem::path& folder);

// Reads the starts of images that lie together without opening each by its whole path. One object
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
    int descriptor_ = -1;  // of that folder
};

}  // namespace bw
