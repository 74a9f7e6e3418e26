// Names and places in archives.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace bw {

// The kinds of archives, told by their names alone, letter case aside.
enum class ArchiveKind { kNone, kZip, kSevenZip, kRar, kTar, kGzip };
ArchiveKind ArchiveKindOf(std::string_view name);

// A member's name as a place below the archive: UTF-8 (names that are none are taken for code page
// 437, the zip format's own), components parted by '/', no control characters.
std::string PlaceText(std::string_view name);
// Without "." and empty components. Nothing for a place that is absolute, leads up ("..") or is too
// long for a path.
std::optional<std::string> NormalPlace(std::string_view place);
// Component by component, byte by byte.
bool PlaceLess(std::string_view a, std::string_view b);

// Where a path leads into an archive.
struct ArchivePlace {
    std::filesystem::path archive;
    std::string place;  // not normalised
};
// The splits of a path behind each component that is named like an archive, the highest first;
// `whole` counts the last component too. Looks at the text alone: no cost for other paths.
class ArchiveSplits {
  public:
    explicit ArchiveSplits(const std::filesystem::path& path, bool whole = false)
        : path_(path.native()), whole_(whole) {}
    // False if there is none any more.
    bool Next();
    std::filesystem::path Archive() const { return path_.substr(0, end_); }
    std::filesystem::path::string_type Prefix() const { return path_.substr(0, end_); }
    std::string Place() const;

  private:
    const std::filesystem::path::string_type& path_;
    bool whole_;
    size_t end_ = 0;
};
// The archive that really stands there. Nothing for the archive itself unless `whole`.
std::optional<ArchivePlace> FindInArchive(const std::filesystem::path& path, bool whole = false);

}  // namespace bw
