#include "support/paths.h"

#include <charconv>
#include <chrono>

#include "support/file_queries.h"
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
    const std::string name = ToUtf8(PathText(workFolder.filename()));
    uint32_t id = 0;
    const auto end = std::from_chars(name.data(), name.data() + name.size(), id);
    return end.ec == std::errc() ? id : 0;
}

bool IsAbandoned(const fs::path& workFolder) {
    const FileResult<FileLock> lock = FileLock::TryTake(workFolder);
    if (!lock && lock.Problem().system == std::errc::operation_would_block) return false;
    const FileResult<fs::file_time_type> touched = FileTime(workFolder);
    if (touched && *touched < fs::file_time_type::clock::now() - std::chrono::hours(24))
        return true;
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

bool IsAbsoluteElsewhere(std::u16string_view path) {
    if constexpr (fs::path::preferred_separator == '/') {
        return path.starts_with(u"\\\\") ||
               (path.size() > 2 && path[1] == u':' && IsSeparator(path[2]));
    } else {
        return path.starts_with(u"/") && !path.starts_with(u"//");
    }
}

bool HasExtension(const fs::path& path, std::string_view extension) {
    const std::u16string text = PathText(path);
    const std::u16string_view name = FileName(text);
    const size_t point = name.rfind(u'.');
    return point != name.npos && EqualIgnoringAsciiCase(name.substr(point + 1), ToWide(extension));
}

void RemoveAbandonedWorkFolders() {
    const auto entries = ListFolder(WorkFolder().parent_path());
    if (!entries) return;
    for (const FolderEntry& entry : *entries) {
        if (IsAbandoned(entry.path)) RemoveFolder(entry.path);
    }
}

}  // namespace bw
