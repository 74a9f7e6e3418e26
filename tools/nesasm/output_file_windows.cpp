#include <algorithm>

#include "nesasm/output_file.h"
#include "support/windows_path.h"

namespace bw::nesasm {
namespace {

constexpr size_t kLargestStep = size_t{1} << 30;  // a call takes 32 bits of length

bool WriteAll(HANDLE file, const char* bytes, size_t size) {
    while (size != 0) {
        const auto step = static_cast<DWORD>(std::min(size, kLargestStep));
        DWORD done = 0;
        if (!WriteFile(file, bytes, step, &done, nullptr) || done == 0) return false;
        bytes += done;
        size -= done;
    }
    return true;
}

// What looks into every new file may hold the old one for a moment.
bool Replace(const std::wstring& temporary, const std::wstring& target) {
    constexpr int kTries = 20;
    constexpr DWORD kBetween = 100;  // ms
    for (int i = 0; i < kTries; ++i) {
        if (i > 0) Sleep(kBetween);
        if (MoveFileExW(temporary.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING)) return true;
        const DWORD error = GetLastError();
        if (error != ERROR_SHARING_VIOLATION && error != ERROR_ACCESS_DENIED) return false;
        const DWORD attributes = GetFileAttributesW(target.c_str());
        if (attributes != INVALID_FILE_ATTRIBUTES &&
            (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) != 0)
            return false;
    }
    return false;
}

}  // namespace

bool ReplaceFile(const std::string& path, const void* bytes, size_t size) {
    const std::wstring target = CallPath(WideOf(path));
    const std::wstring temporary =
        CallPath(WideOf(path) + L"." + std::to_wstring(GetCurrentProcessId()) + L".tmp");
    const HANDLE file = CreateFileW(temporary.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    bool done = WriteAll(file, static_cast<const char*>(bytes), size);
    done = CloseHandle(file) && done;
    done = done && Replace(temporary, target);
    if (!done) DeleteFileW(temporary.c_str());
    return done;
}

}  // namespace bw::nesasm
