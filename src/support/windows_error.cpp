#include "support/windows_error.h"

#include <algorithm>

#include "support/file_queries.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

constexpr DWORD kQuotaExceeded = 1295;  // not in the headers

constexpr size_t kLongestName = 255;  // of one component, in units

bool HasLongName(const fs::path& path) {
    return std::ranges::any_of(
        path, [](const fs::path& name) { return name.native().size() > kLongestName; });
}

// A file stands where a folder would have to.
bool IsBehindFile(const fs::path& path) {
    for (fs::path upper = path.parent_path(); upper.has_relative_path();
         upper = upper.parent_path()) {
        const FileKind kind = KindOf(upper);
        if (kind != FileKind::kNone) return kind != FileKind::kFolder;
    }
    return false;
}

// Windows has more words than we have kinds of problems; what is left keeps its own.
std::error_code AnswerOf(const fs::path& path, DWORD error) {
    const bool noSuch = error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
    if ((noSuch || error == ERROR_INVALID_NAME) && HasLongName(path))
        return std::make_error_code(std::errc::filename_too_long);
    switch (error) {
        case ERROR_FILE_NOT_FOUND:
            return std::make_error_code(std::errc::no_such_file_or_directory);
        case ERROR_PATH_NOT_FOUND:
        case ERROR_DIRECTORY:
            return std::make_error_code(IsBehindFile(path) ? std::errc::not_a_directory
                                                           : std::errc::no_such_file_or_directory);
        case ERROR_ACCESS_DENIED:
            // Opening a folder is refused as if it were a matter of permission.
            return std::make_error_code(IsFolder(path) ? std::errc::is_a_directory
                                                       : std::errc::permission_denied);
        case ERROR_DISK_FULL:
        case ERROR_HANDLE_DISK_FULL:
        case kQuotaExceeded:
            return std::make_error_code(std::errc::no_space_on_device);
        case ERROR_FILE_TOO_LARGE:
            return std::make_error_code(std::errc::file_too_large);
        case ERROR_WRITE_PROTECT:
            return std::make_error_code(std::errc::read_only_file_system);
        case ERROR_LOCK_VIOLATION:
            return std::make_error_code(std::errc::operation_would_block);
        case ERROR_FILENAME_EXCED_RANGE:
            return std::make_error_code(std::errc::filename_too_long);
        case ERROR_ALREADY_EXISTS:
        case ERROR_FILE_EXISTS:
            return std::make_error_code(std::errc::file_exists);
        default:
            return {static_cast<int>(error), std::system_category()};
    }
}

}  // namespace

FileProblem FileProblemOf(const fs::path& path, DWORD error) {
    return ProblemOf(path, AnswerOf(path, error));
}

FileProblem LastFileProblem(const fs::path& path) {
    return FileProblemOf(path, GetLastError());
}

}  // namespace bw
