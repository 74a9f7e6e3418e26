// What changes names, not contents, on a POSIX system.
#include "support/file_queries.h"
#include "support/files.h"

namespace bw {

namespace fs = std::filesystem;

namespace {

FileResult<> Outcome(const fs::path& path, std::error_code error) {
    return error ? FileResult<>(ProblemOf(path, error)) : FileResult<>();
}

}  // namespace

FileResult<> RenameFile(const fs::path& from, const fs::path& to) {
    std::error_code error;
    fs::rename(from, to, error);
    return Outcome(from, error);
}

FileResult<> CopyFile(const fs::path& from, const fs::path& to) {
    std::error_code error;
    fs::copy_file(from, to, error);
    return Outcome(from, error);
}

FileResult<> MakeOwnFolder(const fs::path& folder) {
    std::error_code error;
    if (!fs::create_directory(folder, error) && !error)
        error = std::make_error_code(std::errc::file_exists);
    if (!error) fs::permissions(folder, fs::perms::owner_all, error);
    return Outcome(folder, error);
}

FileResult<> MakeFolders(const fs::path& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (IsFolder(folder)) return {};
    return error ? ProblemOf(folder, error) : ProblemOf(folder, std::errc::not_a_directory);
}

FileResult<> RemoveFolder(const fs::path& folder) {
    if (folder.empty()) return ProblemOf(folder, std::errc::no_such_file_or_directory);
    std::error_code error;
    fs::remove_all(folder, error);
    return Outcome(folder, error);
}

FileResult<> DeleteFile(const fs::path& path) {
    if (path.empty()) return ProblemOf(path, std::errc::no_such_file_or_directory);
    // remove() would take an empty folder as well.
    if (EntryKind(path) == FileKind::kFolder) return ProblemOf(path, std::errc::is_a_directory);
    std::error_code error;
    fs::remove(path, error);
    return Outcome(path, error);
}

}  // namespace bw
