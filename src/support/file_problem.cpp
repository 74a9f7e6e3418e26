#include "support/file_problem.h"

namespace bw {
namespace {

namespace fs = std::filesystem;
using Kind = FileProblem::Kind;

Kind KindOf(const std::error_code& answer) {
    if (answer == std::errc::no_such_file_or_directory) return Kind::kNotFound;
    if (answer == std::errc::permission_denied) return Kind::kNoPermission;
    if (answer == std::errc::operation_not_permitted) return Kind::kNoPermission;
    if (answer == std::errc::is_a_directory) return Kind::kIsFolder;
    if (answer == std::errc::not_a_directory) return Kind::kNotFolder;
    if (answer == std::errc::file_too_large) return Kind::kTooLarge;
    if (answer == std::errc::no_space_on_device) return Kind::kDiskFull;
    if (answer == std::errc::read_only_file_system) return Kind::kReadOnly;
    if (answer == std::errc::filename_too_long) return Kind::kNameTooLong;
    return Kind::kOther;
}

// The file that stands in the way of `path`, or `path` itself.
fs::path InTheWay(const fs::path& path) {
    for (fs::path upper = path; upper.has_relative_path(); upper = upper.parent_path()) {
        std::error_code error;
        const fs::file_status status = fs::status(upper, error);
        if (fs::exists(status) && !fs::is_directory(status)) return upper;
    }
    return path;
}

}  // namespace

FileProblem ProblemOf(const fs::path& file, std::error_code answer) {
    const Kind kind = KindOf(answer);
    return {
        .file = kind == Kind::kNotFolder ? InTheWay(file) : file, .kind = kind, .system = answer};
}

}  // namespace bw
