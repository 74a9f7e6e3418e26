#include <memory>
#include <optional>
#include <utility>

#include "support/file_queries.h"
#include "support/paths.h"
#include "support/windows_error.h"
#include "support/windows_path.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

struct CloseObject {
    void operator()(void* object) const { CloseHandle(object); }
};
using Handle = std::unique_ptr<void, CloseObject>;

// The file or folder behind the path for questions; null where it can't be opened.
Handle OpenForQuestions(const fs::path& path) {
    const DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    void* const object = CreateFileW(CallPath(path.native()).c_str(), FILE_READ_ATTRIBUTES, share,
                                     nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    return Handle(object == INVALID_HANDLE_VALUE ? nullptr : object);
}

// "NUL", "con.nes" and their like, in any folder: the system makes "\\.\" of them.
bool IsDevice(const fs::path& path) {
    wchar_t full[16];
    const DWORD size = GetFullPathNameW(path.c_str(), std::size(full), full, nullptr);
    return size > 0 && size < std::size(full) && std::wstring_view(full).starts_with(LR"(\\.\)");
}

// Not every reparse point is a link: files in a cloud's folder are some, too.
bool IsLink(DWORD attributes, DWORD tag) {
    return (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
           (tag == IO_REPARSE_TAG_SYMLINK || tag == IO_REPARSE_TAG_MOUNT_POINT);
}

FileKind KindOf(DWORD attributes) {
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? FileKind::kFolder : FileKind::kFile;
}

struct Facts {
    FileKind kind;
    uint64_t size;
    FILETIME changed;
};

uint64_t Joined(DWORD high, DWORD low) {
    return uint64_t{high} << 32 | low;
}

// Of what the path leads to; nothing, with the system's word for it, if there is none.
std::optional<Facts> Ask(const fs::path& path) {
    if (path.empty()) {
        SetLastError(ERROR_FILE_NOT_FOUND);
        return std::nullopt;
    }
    if (IsDevice(path)) return Facts{FileKind::kOther, 0, {}};
    WIN32_FILE_ATTRIBUTE_DATA own{};
    if (!GetFileAttributesExW(CallPath(path.native()).c_str(), GetFileExInfoStandard, &own))
        return std::nullopt;
    if ((own.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) {
        return Facts{KindOf(own.dwFileAttributes), Joined(own.nFileSizeHigh, own.nFileSizeLow),
                     own.ftLastWriteTime};
    }
    const Handle linked = OpenForQuestions(path);
    BY_HANDLE_FILE_INFORMATION info{};
    if (!linked || !GetFileInformationByHandle(linked.get(), &info)) return std::nullopt;
    return Facts{KindOf(info.dwFileAttributes), Joined(info.nFileSizeHigh, info.nFileSizeLow),
                 info.ftLastWriteTime};
}

// Files count in steps of 100 ns since 1601.
fs::file_time_type TimeOf(const FILETIME& time) {
    using Steps = std::chrono::duration<int64_t, std::ratio<1, 10'000'000>>;
    constexpr std::chrono::seconds kFrom1601To1970{11'644'473'600};
    const Steps since1601(static_cast<int64_t>(Joined(time.dwHighDateTime, time.dwLowDateTime)));
    const auto since1970 = std::chrono::duration_cast<std::chrono::system_clock::duration>(
        since1601 - kFrom1601To1970);
    return fs::file_time_type::clock::from_sys(
        std::chrono::sys_time<std::chrono::system_clock::duration>(since1970));
}

// Of something that is there: without links, in the letters of the disk.
fs::path FinalPath(const fs::path& path) {
    const Handle object = OpenForQuestions(path);
    if (!object) return {};
    const DWORD size = GetFinalPathNameByHandleW(object.get(), nullptr, 0, 0);
    std::wstring text(size, L'\0');
    text.resize(GetFinalPathNameByHandleW(object.get(), text.data(), size, 0));
    if (text.starts_with(LR"(\\?\UNC\)")) return L'\\' + text.substr(7);
    return text.starts_with(LR"(\\?\)") ? text.substr(4) : text;
}

}  // namespace

FileKind KindOf(const fs::path& path) {
    const std::optional<Facts> facts = Ask(path);
    return facts ? facts->kind : FileKind::kNone;
}

FileKind EntryKind(const fs::path& path) {
    if (path.empty() || IsDevice(path)) return KindOf(path);
    WIN32_FIND_DATAW found{};
    found.dwFileAttributes = GetFileAttributesW(CallPath(path.native()).c_str());
    if (found.dwFileAttributes == INVALID_FILE_ATTRIBUTES) return FileKind::kNone;
    if ((found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) {
        const HANDLE search = FindFirstFileW(CallPath(path.native()).c_str(), &found);
        if (search != INVALID_HANDLE_VALUE) FindClose(search);
        if (IsLink(found.dwFileAttributes, found.dwReserved0)) return FileKind::kLink;
    }
    return KindOf(found.dwFileAttributes);
}

FileProblem WhyNotThere(const fs::path& path) {
    return Ask(path) ? ProblemOf(path, std::errc::no_such_file_or_directory)
                     : LastFileProblem(path);
}

FileResult<uint64_t> FileSize(const fs::path& file) {
    const std::optional<Facts> facts = Ask(file);
    if (!facts) return LastFileProblem(file);
    if (facts->kind == FileKind::kFolder) return ProblemOf(file, std::errc::is_a_directory);
    return facts->size;
}

FileResult<fs::file_time_type> FileTime(const fs::path& path) {
    const std::optional<Facts> facts = Ask(path);
    if (!facts) return LastFileProblem(path);
    return TimeOf(facts->changed);
}

bool IsSameFile(const fs::path& a, const fs::path& b) {
    const Handle one = OpenForQuestions(a);
    const Handle other = OpenForQuestions(b);
    BY_HANDLE_FILE_INFORMATION first{};
    BY_HANDLE_FILE_INFORMATION second{};
    return one && other && GetFileInformationByHandle(one.get(), &first) &&
           GetFileInformationByHandle(other.get(), &second) &&
           first.dwVolumeSerialNumber == second.dwVolumeSerialNumber &&
           first.nFileIndexHigh == second.nFileIndexHigh &&
           first.nFileIndexLow == second.nFileIndexLow;
}

fs::path RealPath(const fs::path& path) {
    const fs::path absolute = NormalPath(FromCurrentFolder(path));
    fs::path there = absolute;
    fs::path rest;
    for (;;) {
        if (const fs::path real = FinalPath(there); !real.empty())
            return rest.empty() ? real : real / rest;
        if (!there.has_relative_path()) return absolute;
        rest = rest.empty() ? there.filename() : there.filename() / rest;
        there = there.parent_path();
    }
}

FileResult<fs::path> LinkedFile(const fs::path& path) {
    if (EntryKind(path) != FileKind::kLink) return path;
    fs::path linked = FinalPath(path);
    if (linked.empty()) return LastFileProblem(path);
    return linked;
}

FileResult<std::vector<FolderEntry>> ListFolder(const fs::path& folder) {
    // Without the short names, and many at a time: both spare the disk work.
    WIN32_FIND_DATAW found{};
    const HANDLE search =
        FindFirstFileExW(CallPath((folder / L"*").native()).c_str(), FindExInfoBasic, &found,
                         FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH);
    if (search == INVALID_HANDLE_VALUE) {
        const DWORD error = GetLastError();
        // An empty drive hasn't even "." in it.
        if (error == ERROR_FILE_NOT_FOUND && IsFolder(folder)) return std::vector<FolderEntry>();
        if (IsFile(folder)) return ProblemOf(folder, std::errc::not_a_directory);
        return FileProblemOf(folder, error);
    }
    const std::unique_ptr<void, decltype(&FindClose)> end(search, &FindClose);
    std::vector<FolderEntry> entries;
    do {
        const std::wstring_view name = found.cFileName;
        if (name == L"." || name == L"..") continue;
        const bool link = IsLink(found.dwFileAttributes, found.dwReserved0);
        entries.push_back({folder / name, link ? FileKind::kLink : KindOf(found.dwFileAttributes)});
    } while (FindNextFileW(search, &found));
    if (GetLastError() != ERROR_NO_MORE_FILES) return LastFileProblem(folder);
    return entries;
}

}  // namespace bw
