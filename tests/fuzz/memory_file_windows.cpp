// A temporary file that the system keeps in its cache, and removes with its last handle.
#include <windows.h>
// It needs what windows.h declares.
#include <winioctl.h>

#include "fuzz.h"
#include "memory_file.h"

namespace {

HANDLE AsHandle(intptr_t handle) {
    return reinterpret_cast<HANDLE>(handle);
}

std::filesystem::path TemporaryName() {
    wchar_t name[MAX_PATH] = {};
    Expect(GetTempFileNameW(std::filesystem::temp_directory_path().c_str(), L"bwf", 0, name) != 0);
    return name;
}

}  // namespace

MemoryFile::MemoryFile(std::span<const uint8_t> bytes) : path_(TemporaryName()) {
    const HANDLE file =
        CreateFileW(path_.c_str(), GENERIC_READ | GENERIC_WRITE | DELETE,
                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, CREATE_ALWAYS,
                    FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    Expect(file != INVALID_HANDLE_VALUE);
    handle_ = reinterpret_cast<intptr_t>(file);
    DWORD unused = 0;
    DeviceIoControl(file, FSCTL_SET_SPARSE, nullptr, 0, nullptr, 0, &unused, nullptr);
    if (!bytes.empty()) WriteAt(0, bytes);
}

MemoryFile::~MemoryFile() {
    CloseHandle(AsHandle(handle_));
}

void MemoryFile::Lengthen(uint64_t size) const {
    LARGE_INTEGER end{};
    end.QuadPart = static_cast<LONGLONG>(size);
    Expect(SetFilePointerEx(AsHandle(handle_), end, nullptr, FILE_BEGIN) != 0 &&
           SetEndOfFile(AsHandle(handle_)) != 0);
}

void MemoryFile::WriteAt(uint64_t offset, std::span<const uint8_t> bytes) const {
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(offset);
    place.OffsetHigh = static_cast<DWORD>(offset >> 32);
    DWORD written = 0;
    Expect(WriteFile(AsHandle(handle_), bytes.data(), static_cast<DWORD>(bytes.size()), &written,
                     &place) != 0 &&
           written == bytes.size());
}
