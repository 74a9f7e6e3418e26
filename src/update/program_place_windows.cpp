// The operations of a replacement by Windows calls.
#include "support/windows_api.h"
#include "update/program_place.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

FileProblem ProblemNow(const fs::path& file) {
    return ProblemOf(file, {static_cast<int>(GetLastError()), std::system_category()});
}

FileResult<> Rename(const fs::path& from, const fs::path& to) {
    // Write-through: the name is on the disk before the next step.
    if (MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_WRITE_THROUGH)) return {};
    return ProblemNow(to);
}

}  // namespace

// The rights come with the folder.
FileResult<> MakeRunnable(const fs::path& fetched, const fs::path&) {
    const HANDLE file = CreateFileW(fetched.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ,
                                    nullptr, OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    if (file == INVALID_HANDLE_VALUE) return ProblemNow(fetched);
    BY_HANDLE_FILE_INFORMATION found{};
    const BOOL known = GetFileInformationByHandle(file, &found);
    FlushFileBuffers(file);
    CloseHandle(file);
    if (!known) return ProblemNow(fetched);
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

FileResult<> PutInPlace(const fs::path& fetched, const fs::path& program) {
    return Rename(fetched, program);
}

}  // namespace bw
