#include "common/special_files.h"
#include "support/windows_path.h"

namespace bw::test {

// A device's name counts in every folder.
std::vector<std::filesystem::path> SpecialFiles(const std::filesystem::path& folder) {
    return {folder / "NUL", "NUL"};
}

void MakeOlder(const std::filesystem::path& path, std::chrono::hours age) {
    FILETIME time{};
    GetSystemTimeAsFileTime(&time);
    ULARGE_INTEGER steps{{time.dwLowDateTime, time.dwHighDateTime}};  // of 100 ns
    steps.QuadPart -= static_cast<ULONGLONG>(std::chrono::nanoseconds(age).count()) / 100;
    time = {steps.LowPart, steps.HighPart};
    const HANDLE object = CreateFileW(CallPath(path.native()).c_str(), FILE_WRITE_ATTRIBUTES, 7,
                                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    SetFileTime(object, nullptr, nullptr, &time);
    CloseHandle(object);
}

}  // namespace bw::test
