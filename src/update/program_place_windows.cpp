// The operations of a replacement by Windows calls. A program that runs can be renamed, but neither
// deleted nor written over, by whatever means and names.
#include "support/windows_path.h"
#include "update/program_place.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

// What looks into every new file, and into every program that comes to its name, may hold it for a
// moment.
constexpr int kTries = 30;
constexpr DWORD kBetweenTries = 100;  // ms

bool IsHeld(DWORD error) {
    return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION ||
           error == ERROR_ACCESS_DENIED;
}

FileProblem ProblemOf(const fs::path& file, DWORD error) {
    return ProblemOf(file, std::error_code(static_cast<int>(error), std::system_category()));
}

// Calls until it succeeds, or fails for another reason than that somebody holds the file.
template <typename Call>
DWORD WhenFree(const Call& call) {
    for (int i = 1;; ++i) {
        if (call()) return ERROR_SUCCESS;
        const DWORD error = GetLastError();
        if (!IsHeld(error) || i == kTries) return error;
        Sleep(kBetweenTries);
    }
}

// Never over another file.
FileResult<> Rename(const fs::path& from, const fs::path& to) {
    const std::wstring old = CallPath(from.native()), fresh = CallPath(to.native());
    // Write-through: the name is on the disk before the next step.
    const DWORD error = WhenFree(
        [&] { return MoveFileExW(old.c_str(), fresh.c_str(), MOVEFILE_WRITE_THROUGH) != 0; });
    if (error == ERROR_SUCCESS) return {};
    return ProblemOf(to, error);
}

}  // namespace

// The rights come with the folder.
FileResult<> MakeRunnable(const fs::path& fetched, const fs::path&) {
    const std::wstring name = CallPath(fetched.native());
    HANDLE file = INVALID_HANDLE_VALUE;
    const DWORD error = WhenFree([&] {
        file = CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                           OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
        return file != INVALID_HANDLE_VALUE;
    });
    if (error != ERROR_SUCCESS) return ProblemOf(fetched, error);
    BY_HANDLE_FILE_INFORMATION found{};
    const bool known = GetFileInformationByHandle(file, &found) && FlushFileBuffers(file);
    const DWORD unknown = GetLastError();
    CloseHandle(file);
    if (!known) return ProblemOf(fetched, unknown);
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
