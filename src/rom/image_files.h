// Game images on disk and in archives: the one door to their bytes. An image in an archive has the
// path of the archive followed by its place inside ("games.zip/USA/Game.nes"); a file that really
// has that path wins. Archives (.zip .7z .rar .gz .tar and .tar.* ) are read only, through memory,
// and nothing of them is written to disk.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "support/files.h"

namespace bw {

// An image for reading: a file, or the bytes of a member of an archive. Moves, doesn't copy.
class ImageFile {
  public:
    explicit ImageFile(File file) : source_(std::move(file)) {}
    // `size`: of the member as the archive has it; `bytes` may be fewer, see OpenImage.
    ImageFile(std::vector<uint8_t> bytes, uint64_t size)
        : source_(Member{std::move(bytes), size}) {}

    FileResult<uint64_t> Size() const;
    // As File's.
    FileResult<size_t> ReadAt(uint64_t offset, std::span<uint8_t> buffer) const;

  private:
    struct Member {
        std::vector<uint8_t> bytes;
        uint64_t size;
    };
    std::variant<File, Member> source_;
};

// An image for reading. Only regular files open: a folder, a pipe or a device counts as a file
// that can't be opened, and nothing waits for its other end. Of a member of an archive as much is
// in memory as its header announces (at most 6.3 MB); a foreign file in an archive has its first 16
// bytes. Reads an archive up to the member: for many images use VisitImages.
FileResult<ImageFile> OpenImage(const std::filesystem::path& path);

// The file on disk that an image lies in: the archive, or the path itself.
std::filesystem::path ContainerOf(const std::filesystem::path& path);
// By the name alone, letter case aside.
bool HasArchiveExtension(const std::filesystem::path& path);

// Opens many images, each archive once and in its own order, whatever order the paths have, by at
// most `threads` threads. `visit` is called once for each path, from several threads at once; the
// image lives until it returns. After `goOn` has given false (asked before each image) no more are
// visited.
enum class ImageDepth : uint8_t {
    kHeader,  // 16 bytes are enough
    kWhole,   // the data too
    kAll,     // what is behind the data too, for its sums: of at most kSummedBytes
};
using ImageVisit = std::function<void(size_t index, FileResult<ImageFile>& image)>;
void VisitImages(std::span<const std::filesystem::path> paths, ImageDepth depth, size_t threads,
                 const ImageVisit& visit, const std::function<bool()>& goOn = {});

// What an archive holds, or is, that isn't taken in, and why. list/left_out.h has the words.
struct LeftOut {
    enum class Reason : uint8_t {
        kEncrypted,
        kNested,      // an archive in an archive
        kUnsafePath,  // absolute, or with ".."
        kLink,
        kTooLarge,  // unpacks to more than games take
        kDamaged,   // the archive, from here on
        kTooMany,   // members; the rest isn't looked at
        kNoImages,  // an archive without a single one
        kNoGame,    // named like an image, and is none
    };
    std::filesystem::path place;  // of the archive, or of the member
    Reason reason = Reason::kDamaged;
};

// The first bytes of an image.
struct ImageStart {
    std::array<uint8_t, 16> bytes{};
    uint8_t arrived = 0;  // 0 if the image can't be read
    uint64_t size = 0;    // bytes of the image, as far as known
};
// Of one that was opened.
ImageStart StartOf(const ImageFile& image);

// The images of a folder tree, in order of path, component by component.
struct FolderImages {
    static constexpr uint32_t kOnDisk = UINT32_MAX;
    struct Image {
        uint32_t folder;           // index into `folders`
        std::string name;          // a POSIX file name, or UTF-8; in an archive the place
        uint32_t start = kOnDisk;  // in an archive: index into `starts`
    };
    // Each begins with the path that was searched. An archive counts as a folder.
    std::vector<std::filesystem::path> folders;
    std::vector<Image> images;
    std::vector<ImageStart> starts;   // of the images in archives, which are read but once
    std::vector<FileProblem> unread;  // folders and archives that couldn't be read
    std::vector<LeftOut> leftOut;

    std::filesystem::path PathOf(const Image& image) const;
};

// All regular files with the extension .nes, in any letter case, and those in archives. Links to
// files count, links to folders below `folder` are not followed. `folder` may be an archive, or a
// folder in one. Archives are read by several threads.
FolderImages ListImages(const std::filesystem::path& folder);

// Reads the starts of images that lie together, without opening each by its whole path. One object
// per thread.
class HeaderReader {
  public:
    explicit HeaderReader(const FolderImages& images) : images_(images) {}
    HeaderReader(const HeaderReader&) = delete;
    HeaderReader& operator=(const HeaderReader&) = delete;
    ~HeaderReader();

    ImageStart Read(const FolderImages::Image& image);

  private:
    ImageStart ReadOnDisk(const FolderImages::Image& image);

    const FolderImages& images_;
    std::optional<uint32_t> openFolder_;
    int descriptor_ = -1;  // of that folder, on POSIX systems
};

// What the search needs of the system. Names are as in FolderImages.
struct FolderItem {
    std::string name;
    bool isFolder;
};
// The folders, images and archives of one folder, in any order.
FileResult<std::vector<FolderItem>> ReadFolder(const std::filesystem::path& folder);
std::filesystem::path NamePath(const std::string& name);
bool HasImageExtension(std::string_view name);
// An image's or an archive's.
bool IsWantedName(std::string_view name);

}  // namespace bw
