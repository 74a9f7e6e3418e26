// ProgramFile by Windows calls.
#include "support/paths.h"
#include "support/windows_path.h"
#include "update/program_file.h"

namespace bw {
namespace {

namespace fs = std::filesystem;
using Kind = UpdateOutcome::Kind;

// Access lists tell little beforehand (inheritance, elevation, virtual stores): a file is made in
// the folder, which is gone with its handle.
bool MayWriteIn(const fs::path& folder) {
    const fs::path file =
        folder / (L"bankweaver-" + std::to_wstring(GetCurrentProcessId()) + L".tmp");
    const HANDLE made =
        CreateFileW(CallPath(file.native()).c_str(), GENERIC_WRITE | DELETE, 0, nullptr, CREATE_NEW,
                    FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (made == INVALID_HANDLE_VALUE) return false;
    CloseHandle(made);
    return true;
}

}  // namespace

ProgramFile ProgramFile::OfThisProcess() {
    return ProgramFile(ExecutablePath());
}

ProgramFile::Identity ProgramFile::IdentityOf(const fs::path& path) {
    const DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE file = CreateFileW(CallPath(path.native()).c_str(), FILE_READ_ATTRIBUTES, share,
                                    nullptr, OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    if (file == INVALID_HANDLE_VALUE) return {};
    BY_HANDLE_FILE_INFORMATION found{};
    const BOOL known = GetFileInformationByHandle(file, &found);
    CloseHandle(file);
    if (!known) return {};
    const uint64_t high = found.nFileIndexHigh;
    return {found.dwVolumeSerialNumber, high << 32 | found.nFileIndexLow};
}

UpdateOutcome ProgramFile::Replaceable() const {
    const Identity now = IdentityOf(path_);
    const DWORD attributes = GetFileAttributesW(CallPath(path_.native()).c_str());
    const DWORD notPlain = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
    if (now == Identity{} || now != identity_ || attributes == INVALID_FILE_ATTRIBUTES ||
        (attributes & notPlain) != 0)
        return {Kind::kChangedMeanwhile};
    if (!MayWriteIn(Folder())) return {Kind::kNotOurs};
    if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) return {Kind::kReadOnly};
    return {};
}

}  // namespace bw
