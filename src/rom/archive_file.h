// An archive, read once from its start to its end, through memory. Nothing of it is written to
// disk, and what isn't an image isn't unpacked where its format allows going past it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "rom/image_files.h"

struct archive;
struct archive_entry;

namespace bw {

// An image among the members.
struct ArchiveImage {
    std::string place;  // UTF-8, '/' between components
    uint64_t size = 0;  // bytes; 0 where the archive doesn't tell
};

class ArchiveFile {
  public:
    // A problem of the file itself; what its format is shows at the first Next().
    static FileResult<ArchiveFile> Open(const std::filesystem::path& path);
    ArchiveFile(ArchiveFile&&) noexcept;
    ArchiveFile& operator=(ArchiveFile&&) = delete;
    ~ArchiveFile();

    // Goes to the next image, in the archive's order. Nothing at the end, or where going on would
    // cost too much or isn't possible: LeftOutSoFar() tells.
    std::optional<ArchiveImage> Next();
    // The image that Next() has given, once.
    FileResult<ImageFile> Read(ImageDepth depth);

    const std::vector<LeftOut>& LeftOutSoFar() const { return leftOut_; }
    // Why a place wasn't among the images, after the end.
    FileProblem WhyMissing(const std::string& place) const;

  private:
    struct Source;
    struct Close {
        void operator()(archive* opened) const;
    };

    ArchiveFile(std::filesystem::path path, std::unique_ptr<Source> source);
    void OpenFormats();
    // False at the end.
    bool Advance(archive_entry*& entry);
    bool PassRest();
    std::optional<ArchiveImage> Look(archive_entry* entry);
    std::string NameOf(archive_entry* entry) const;
    // False if the data is damaged.
    bool Fill(std::vector<uint8_t>& bytes, uint64_t size);
    std::optional<uint64_t> SizeOf(archive_entry* entry) const;
    std::filesystem::path MemberPath(const std::string& place) const;
    void LeaveOut(const std::string& place, LeftOut::Reason reason);
    void End(LeftOut::Reason reason);

    std::filesystem::path path_;
    std::unique_ptr<Source> source_;
    std::unique_ptr<archive, Close> archive_;
    std::vector<LeftOut> leftOut_;
    std::string place_;             // of the member at hand
    std::optional<uint64_t> size_;  // its bytes, where the archive tells
    uint64_t read_ = 0;             // its bytes that were unpacked
    bool atMember_ = false;
    bool ended_ = false;
    bool single_ = false;  // compressed data without members
    size_t members_ = 0;
    uint64_t unpacked_ = 0;  // bytes, of all members
    uint64_t oversize_ = 0;  // those of members that are larger than games
};

}  // namespace bw
