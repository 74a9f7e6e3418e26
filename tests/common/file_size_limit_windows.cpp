// The system has no such limit. The calls that lengthen files are caught on their way there, in the
// table by which this program finds them ("PE Format", Microsoft Learn), and refused as on a full
// disk. What the C runtime writes, such as a std::ofstream, goes another way and isn't limited.
#include <atomic>
#include <cstdint>
#include <string_view>
#include <utility>

#include "common/file_size_limit.h"
#include "support/windows_api.h"

namespace {

std::atomic<uint64_t> longest = UINT64_MAX;
decltype(&WriteFile) realWriteFile = nullptr;
decltype(&SetEndOfFile) realSetEndOfFile = nullptr;

uint64_t Position(HANDLE file) {
    LARGE_INTEGER position{};
    SetFilePointerEx(file, {}, &position, FILE_CURRENT);
    return static_cast<uint64_t>(position.QuadPart);
}

BOOL Refuse(HANDLE file, uint64_t end) {
    if (GetFileType(file) != FILE_TYPE_DISK || end <= longest) return FALSE;
    SetLastError(ERROR_DISK_FULL);
    return TRUE;
}

BOOL WINAPI LimitedWriteFile(HANDLE file, LPCVOID bytes, DWORD size, LPDWORD written,
                             LPOVERLAPPED place) {
    const uint64_t start =
        place != nullptr ? place->Offset | uint64_t{place->OffsetHigh} << 32 : Position(file);
    if (Refuse(file, start + size)) return FALSE;
    return realWriteFile(file, bytes, size, written, place);
}

BOOL WINAPI LimitedSetEndOfFile(HANDLE file) {
    return !Refuse(file, Position(file)) && realSetEndOfFile(file);
}

// The place where this program keeps the address of a function of the system's.
void** Import(std::string_view name) {
    auto* const base = reinterpret_cast<uint8_t*>(GetModuleHandleW(nullptr));
    const auto at = [&](auto offset) { return base + offset; };
    const auto* const dos = reinterpret_cast<IMAGE_DOS_HEADER*>(base);
    const auto* const headers = reinterpret_cast<IMAGE_NT_HEADERS*>(at(dos->e_lfanew));
    const auto& table = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    auto* library = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(at(table.VirtualAddress));
    for (; library->Name != 0; ++library) {
        auto* called = reinterpret_cast<IMAGE_THUNK_DATA*>(at(library->OriginalFirstThunk));
        auto* address = reinterpret_cast<IMAGE_THUNK_DATA*>(at(library->FirstThunk));
        for (; called->u1.AddressOfData != 0; ++called, ++address) {
            if (IMAGE_SNAP_BY_ORDINAL(called->u1.Ordinal)) continue;
            const auto* const entry =
                reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(at(called->u1.AddressOfData));
            if (name == reinterpret_cast<const char*>(entry->Name))
                return reinterpret_cast<void**>(&address->u1.Function);
        }
    }
    return nullptr;
}

// Gives the function that was there; null where the program doesn't call it.
template <typename Function>
Function Replace(std::string_view name, Function by) {
    void** const place = Import(name);
    if (place == nullptr) return nullptr;
    DWORD before = 0;
    VirtualProtect(place, sizeof *place, PAGE_READWRITE, &before);
    void* const old = std::exchange(*place, reinterpret_cast<void*>(by));
    VirtualProtect(place, sizeof *place, before, &before);
    return reinterpret_cast<Function>(old);
}

}  // namespace

struct FileSizeLimit::State {};

FileSizeLimit::FileSizeLimit(uint64_t bytes) {
    if (realWriteFile == nullptr) {
        realWriteFile = Replace("WriteFile", &LimitedWriteFile);
        realSetEndOfFile = Replace("SetEndOfFile", &LimitedSetEndOfFile);
    }
    longest = bytes;
}

FileSizeLimit::~FileSizeLimit() {
    longest = UINT64_MAX;
}
