#include "support/paths.h"

#include <charconv>
#include <chrono>
#include <vector>

#include "support/files.h"
#include "support/process.h"
#include "support/text.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

constexpr std::u16string_view kSeparators = fs::path::preferred_separator == '\\' ? u"\\/" : u"/";

std::u16string_view FileName(std::u16string_view path) {
    const size_t separator = path.find_last_of(kSeparators);
    return separator == path.npos ? path : path.substr(separator + 1);
}

// The process number that the name of a work folder begins with; 0 for another name.
uint32_t OwnerOf(const fs::path& workFolder) {
    const std::string name = workFolder.filename().string();
    uint32_t id = 0;
    const auto end = std::from_chars(name.data(), name.data() + name.size(), id);
    return end.ec == std::errc() ? id : 0;
}

bool IsAbandoned(const fs::path& workFolder) {
    const FileResult<FileLock> lock = FileLock::TryTake(workFolder);
    if (!lock && lock.Problem().system == std::errc::operation_would_block) return false;
    std::error_code error;
    const fs::file_time_type touched = fs::last_write_time(workFolder, error);
    if (!error && touched < fs::file_time_type::clock::now() - std::chrono::hours(24)) return true;
    const uint32_t owner = OwnerOf(workFolder);
    return owner != 0 && !ProcessRuns(owner) && lock;
}

bool IsSeparator(char16_t unit) {
    return unit == u'/' || unit == u'\\';
}

}  // namespace

fs::path ExecutableFolder() {
    return ExecutablePath().parent_path();
}

std::u16string NameWithoutExtension(std::u16string_view path) {
    const std::u16string_view name = FileName(path);
    return std::u16string(name.substr(0, name.rfind(u'.')));
}

fs::path AbsolutePath(const fs::path& path, const fs::path& base) {
    return (base / path).lexically_normal();
}

bool IsAbsoluteElsewhere(std::u16string_view path) {
    if constexpr (fs::path::preferred_separator == '/') {
        return path.starts_with(u"\\\\") ||
               (path.size() > 2 && path[1] == u':' && IsSeparator(path[2]));
    } else {
        return path.starts_with(u"/") && !path.starts_with(u"//");
    }
}

fs::path RelativePath(const fs::path& path, const fs::path& base) {
    fs::path relative = path.lexically_normal().lexically_relative(base.lexically_normal());
    return relative.empty() ? path : relative;
}

bool HasExtension(const fs::path& path, std::string_view extension) {
    const std::u16string text = PathText(path);
    const std::u16string_view name = FileName(text);
    const size_t point = name.rfind(u'.');
    return point != name.npos && EqualIgnoringAsciiCase(name.substr(point + 1), ToWide(extension));
}

void RemoveAbandonedWorkFolders() {
    std::error_code error;
    std::vector<fs::path> abandoned;
    for (fs::directory_iterator at(WorkFolder().parent_path(), error), end; !error && at != end;
         at.increment(error)) {
        if (IsAbandoned(at->path())) abandoned.push_back(at->path());
    }
    for (const fs::path& folder : abandoned)
        fs::remove_all(folder, error);
}

}  // namespace bw
