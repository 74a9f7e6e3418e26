// Questions about files and folders. Asked here, not of std::filesystem, by everything above: on
// Windows its functions know no paths longer than 260 units, no links and no devices.
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

#include "support/file_problem.h"

namespace bw {

enum class FileKind : uint8_t {
    kNone,  // nothing there, or not to be seen
    kFile,
    kFolder,
    kLink,   // symbolic; on Windows a junction, too
    kOther,  // a device, a pipe
};

// What the path leads to, links followed: never kLink.
FileKind KindOf(const std::filesystem::path& path);
// What the name itself is.
FileKind EntryKind(const std::filesystem::path& path);

inline bool Exists(const std::filesystem::path& path) {
    return KindOf(path) != FileKind::kNone;
}
inline bool IsFile(const std::filesystem::path& path) {
    return KindOf(path) == FileKind::kFile;
}
inline bool IsFolder(const std::filesystem::path& path) {
    return KindOf(path) == FileKind::kFolder;
}

// Of a path where nothing is to be seen.
FileProblem WhyNotThere(const std::filesystem::path& path);

// In bytes.
FileResult<uint64_t> FileSize(const std::filesystem::path& file);
// When it was changed last.
FileResult<std::filesystem::file_time_type> FileTime(const std::filesystem::path& path);
// Both are there and are one.
bool IsSameFile(const std::filesystem::path& a, const std::filesystem::path& b);

// The absolute path without links and "..", as far as it is there; what isn't there yet follows as
// given. Two paths of one file have the same.
std::filesystem::path RealPath(const std::filesystem::path& path);
// The file that is meant, behind links that may lead nowhere yet.
FileResult<std::filesystem::path> LinkedFile(const std::filesystem::path& path);

struct FolderEntry {
    std::filesystem::path path;  // begins with the folder's
    FileKind kind;               // as EntryKind tells it
};
// What a folder holds, in any order.
FileResult<std::vector<FolderEntry>> ListFolder(const std::filesystem::path& folder);

}  // namespace bw
