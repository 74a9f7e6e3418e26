// The operations of a replacement by Windows calls. A program that runs can be renamed, but neither
// deleted nor written over, by whatever means and names.
#include "support/windows_error.h"
#include "support/windows_path.h"
#include "support/windows_patience.h"
#include "update/program_place.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

// Never over another file.
FileResult<> Rename(const fs::path& from, const fs::path& to) {
    const std::wstring old = CallPath(from.native()), fresh = CallPath(to.native());
    // Write-through: the name is on the disk before the next step.
    const bool renamed = WithPatience(
        [&] { return MoveFileExW(old.c_str(), fresh.c_str(), MOVEFILE_WRITE_THROUGH) != 0; },
        IsHeldElsewhere);
    if (!renamed) return LastFileProblem(to);
    return {};
}

}  // namespace

// The rights come with the folder.
FileResult<> MakeRunnable(const fs::path& fetched, const fs::path&) {
    const std::wstring name = CallPath(fetched.native());
    HANDLE file = INVALID_HANDLE_VALUE;
    const auto open = [&] {
        file = CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                           OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
        return file != INVALID_HANDLE_VALUE;
    };
    if (!WithPatience(open, IsHeldElsewhere)) return LastFileProblem(fetched);
    BY_HANDLE_FILE_INFORMATION found{};
    const bool known = GetFileInformationByHandle(file, &found) && FlushFileBuffers(file);
    const DWORD unknown = GetLastError();
    CloseHandle(file);
    if (!known) return FileProblemOf(fetched, unknown);
    const DWORD notPlain = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
    if ((found.dwFileAttributes & notPlain) != 0 || found.nNumberOfLinks != 1)
        return FileProblem{.file = fetched, .kind = FileProblem::Kind::kNotRegular};
    return {};
}

FileResult<> KeepAs(const fs::path& old, const fs::path& program) {
    return Rename(program, old);
}

void DropKept(const fs::path& old, const fs::path& program) {
    Rename(old, program);
}

bool PutBack(const fs::path& old) {
    const fs::path program = old.parent_path() / old.stem();  // ".bak" goes
    return GetFileAttributesW(CallPath(program.native()).c_str()) == INVALID_FILE_ATTRIBUTES &&
           GetLastError() == ERROR_FILE_NOT_FOUND && Rename(old, program);
}

FileResult<> PutInPlace(const fs::path& fetched, const fs::path& program) {
    return Rename(fetched, program);
}

}  // namespace bw
