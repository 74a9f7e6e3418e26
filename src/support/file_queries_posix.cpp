#include "support/file_queries.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

constexpr int kMostLinks = 40;  // as the Linux kernel follows at most

FileKind KindOf(fs::file_type type) {
    switch (type) {
        case fs::file_type::none:
        case fs::file_type::not_found:
            return FileKind::kNone;
        case fs::file_type::regular:
            return FileKind::kFile;
        case fs::file_type::directory:
            return FileKind::kFolder;
        case fs::file_type::symlink:
            return FileKind::kLink;
        default:
            return FileKind::kOther;
    }
}

}  // namespace

FileKind KindOf(const fs::path& path) {
    std::error_code error;
    return KindOf(fs::status(path, error).type());
}

FileKind EntryKind(const fs::path& path) {
    std::error_code error;
    return KindOf(fs::symlink_status(path, error).type());
}

FileProblem WhyNotThere(const fs::path& path) {
    std::error_code error;
    const bool known = fs::status_known(fs::status(path, error));
    return known && !error ? ProblemOf(path, std::errc::no_such_file_or_directory)
                           : ProblemOf(path, error);
}

FileResult<uint64_t> FileSize(const fs::path& file) {
    std::error_code error;
    const uintmax_t size = fs::file_size(file, error);
    if (error) return ProblemOf(file, error);
    return uint64_t{size};
}

FileResult<fs::file_time_type> FileTime(const fs::path& path) {
    std::error_code error;
    const fs::file_time_type time = fs::last_write_time(path, error);
    if (error) return ProblemOf(path, error);
    return time;
}

bool IsSameFile(const fs::path& a, const fs::path& b) {
    std::error_code error;
    return fs::equivalent(a, b, error) && !error;
}

fs::path RealPath(const fs::path& path) {
    std::error_code error;
    const fs::path absolute = fs::absolute(path, error);
    fs::path real = fs::weakly_canonical(absolute, error);
    return error ? absolute.lexically_normal() : real;
}

FileResult<fs::path> LinkedFile(const fs::path& link) {
    fs::path path = link;
    std::error_code error;
    for (int i = 0; i < kMostLinks; ++i) {
        if (!fs::is_symlink(path, error)) return path;
        const fs::path destination = fs::read_symlink(path, error);
        if (error) return ProblemOf(path, error);
        path = path.parent_path() / destination;
    }
    return ProblemOf(link, std::errc::too_many_symbolic_link_levels);
}

FileResult<std::vector<FolderEntry>> ListFolder(const fs::path& folder) {
    std::vector<FolderEntry> entries;
    std::error_code error;
    for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
        std::error_code unknown;
        entries.push_back({at->path(), KindOf(at->symlink_status(unknown).type())});
    }
    if (error) return ProblemOf(folder, error);
    return entries;
}

}  // namespace bw
