#include "support/file_problem.h"

#include "support/file_queries.h"

namespace bw {
namespace {

namespace fs = std::filesystem;
using Kind = FileProblem::Kind;

Kind KindOfAnswer(const std::error_code& answer) {
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
        const FileKind kind = KindOf(upper);
        if (kind != FileKind::kNone && kind != FileKind::kFolder) return upper;
    }
    return path;
}

}  // namespace

FileProblem ProblemOf(const fs::path& file, std::error_code answer) {
    const Kind kind = KindOfAnswer(answer);
    return {
        .file = kind == Kind::kNotFolder ? InTheWay(file) : file, .kind = kind, .system = answer};
}

}  // namespace bw
