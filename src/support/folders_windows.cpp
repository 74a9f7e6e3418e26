// What changes names, not contents, on Windows.
#include <cstring>
#include <vector>

#include "support/file_queries.h"
#include "support/files.h"
#include "support/windows_error.h"
#include "support/windows_path.h"
#include "support/windows_patience.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

// As FILE_RENAME_INFO with the flags of newer systems, which the headers lack.
struct RenameOrder {
    DWORD flags;
    HANDLE root;
    DWORD size;  // of the name, in bytes
    wchar_t name[1];
};
constexpr auto kRenameWithFlags = static_cast<FILE_INFO_BY_HANDLE_CLASS>(22);
constexpr DWORD kReplace = 1;
constexpr DWORD kLikePosix = 2;  // though somebody reads the file that is replaced

// From Windows 10 on, and not on every file system.
bool RenameLikePosix(const std::wstring& from, const std::wstring& to) {
    const HANDLE file = CreateFileW(
        from.c_str(), DELETE | SYNCHRONIZE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
        nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    const size_t bytes = to.size() * sizeof(wchar_t);
    std::vector<uint64_t> room((sizeof(RenameOrder) + bytes) / sizeof(uint64_t) + 1);
    auto* const order = reinterpret_cast<RenameOrder*>(room.data());
    order->flags = kReplace | kLikePosix;
    order->size = static_cast<DWORD>(bytes);
    std::memcpy(order->name, to.c_str(), bytes + sizeof(wchar_t));
    const bool done = SetFileInformationByHandle(
        file, kRenameWithFlags, order, static_cast<DWORD>(room.size() * sizeof(uint64_t)));
    CloseHandle(file);
    return done;
}

DWORD AttributesOf(const std::wstring& name) {
    const DWORD attributes = GetFileAttributesW(name.c_str());
    return attributes == INVALID_FILE_ATTRIBUTES ? 0 : attributes;
}

// The protection against writing is the file's here; on other systems a name is its folder's
// matter.
void Unprotect(const std::wstring& name) {
    const DWORD attributes = AttributesOf(name);
    if ((attributes & FILE_ATTRIBUTE_READONLY) != 0)
        SetFileAttributesW(name.c_str(), attributes & ~DWORD{FILE_ATTRIBUTE_READONLY});
}

// A name that is gone already is as good.
template <typename Call>
FileResult<> Remove(const fs::path& path, const Call& call) {
    const std::wstring name = CallPath(path.native());
    if (call(name.c_str())) return {};
    if (GetLastError() == ERROR_ACCESS_DENIED) Unprotect(name);
    const auto mayPass = [](DWORD error) {
        return IsHeldElsewhere(error) || error == ERROR_DIR_NOT_EMPTY;
    };
    if (WithPatience([&] { return call(name.c_str()) != 0; }, mayPass)) return {};
    const FileProblem problem = LastFileProblem(path);
    if (problem.kind == FileProblem::Kind::kNotFound) return {};
    return problem;
}

}  // namespace

FileResult<> RenameFile(const fs::path& from, const fs::path& to) {
    const std::wstring source = CallPath(from.native());
    const std::wstring target = CallPath(to.native());
    const bool done = WithPatience(
        [&] {
            return RenameLikePosix(source, target) ||
                   MoveFileExW(source.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING);
        },
        [&](DWORD error) {
            constexpr DWORD kForGood = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY;
            return IsHeldElsewhere(error) && (AttributesOf(target) & kForGood) == 0;
        });
    return done ? FileResult<>() : FileResult<>(LastFileProblem(from));
}

FileResult<> CopyFile(const fs::path& from, const fs::path& to) {
    if (CopyFileW(CallPath(from.native()).c_str(), CallPath(to.native()).c_str(), TRUE)) return {};
    return LastFileProblem(from);
}

// Below the user's own folders nobody else may look.
FileResult<> MakeOwnFolder(const fs::path& folder) {
    if (CreateDirectoryW(CallPath(folder.native()).c_str(), nullptr)) return {};
    return LastFileProblem(folder);
}

FileResult<> MakeFolders(const fs::path& folder) {
    const std::wstring name = CallPath(folder.native());
    if (IsFolder(folder) || CreateDirectoryW(name.c_str(), nullptr)) return {};
    if (GetLastError() == ERROR_PATH_NOT_FOUND && folder.has_relative_path() &&
        folder.has_parent_path()) {
        if (FileResult<> upper = MakeFolders(folder.parent_path()); !upper) return upper;
        if (IsFolder(folder) || CreateDirectoryW(name.c_str(), nullptr)) return {};
    }
    if (GetLastError() == ERROR_ALREADY_EXISTS) {
        // Somebody else may have made it meanwhile.
        if (IsFolder(folder)) return {};
        return ProblemOf(folder, std::errc::not_a_directory);
    }
    return LastFileProblem(folder);
}

FileResult<> RemoveFolder(const fs::path& folder) {
    if (folder.empty()) return ProblemOf(folder, std::errc::no_such_file_or_directory);
    switch (EntryKind(folder)) {
        case FileKind::kNone:
            return {};
        case FileKind::kLink:  // of a folder or of a file
            if (RemoveDirectoryW(CallPath(folder.native()).c_str())) return {};
            [[fallthrough]];
        default:
            return DeleteFile(folder);
        case FileKind::kFolder:
            break;
    }
    const auto entries = ListFolder(folder);
    if (!entries) return entries.Problem();
    FileResult<> removed;
    for (const FolderEntry& entry : *entries)
        removed.Join(RemoveFolder(entry.path));
    if (!removed) return removed;
    return Remove(folder, RemoveDirectoryW);
}

FileResult<> DeleteFile(const fs::path& path) {
    if (path.empty()) return ProblemOf(path, std::errc::no_such_file_or_directory);
    const FileKind kind = EntryKind(path);
    if (kind == FileKind::kFolder) return ProblemOf(path, std::errc::is_a_directory);
    if (kind == FileKind::kOther)
        return FileProblem{.file = path, .kind = FileProblem::Kind::kNotRegular};
    return Remove(path, DeleteFileW);
}

}  // namespace bw
