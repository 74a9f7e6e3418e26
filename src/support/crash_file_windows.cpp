// The crash file of Windows: a minidump.
#include <exception>
#include <string>

#include <fmt/format.h>
#include <fmt/xchar.h>

#include "support/crash_file.h"
#include "support/files.h"
#include "support/paths.h"
#include "support/windows_api.h"
// It needs what windows.h declares.
#include <dbghelp.h>

namespace bw {
namespace {

constexpr DWORD kUncaught = 0xE0425745;  // any number with the bits of a program's own error

HANDLE CreateDump(const std::filesystem::path& folder, const SYSTEMTIME& time) {
    MakeFolders(folder);
    const std::wstring name =
        fmt::format(L"{}_{:04}-{:02}-{:02} {:02}_{:02}_{:02}.{}.dmp",
                    ExecutablePath().stem().native(), time.wYear, time.wMonth, time.wDay,
                    time.wHour, time.wMinute, time.wSecond, time.wMilliseconds);
    return CreateFileW((folder / name).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

LONG WINAPI OnCrash(EXCEPTION_POINTERS* pointers) {
    SYSTEMTIME time{};
    GetSystemTime(&time);
    HANDLE file = CreateDump(ExecutableFolder() / "Dump", time);
    if (file == INVALID_HANDLE_VALUE) file = CreateDump(UserConfigFolder() / "Dump", time);
    if (file != INVALID_HANDLE_VALUE) {
        MINIDUMP_EXCEPTION_INFORMATION exception{GetCurrentThreadId(), pointers, FALSE};
        MiniDumpWriteDump(GetCurrentProcess(), GetCurrentProcessId(), file, MiniDumpWithFullMemory,
                          &exception, nullptr, nullptr);
        CloseHandle(file);
    }
    return EXCEPTION_EXECUTE_HANDLER;
}

}  // namespace

void InstallCrashHandler() {
    SetUnhandledExceptionFilter(&OnCrash);
    // abort(), the usual end of an exception that nobody catches, would pass the filter by.
    std::set_terminate([] { RaiseException(kUncaught, EXCEPTION_NONCONTINUABLE, 0, nullptr); });
}

// The system keeps room on each stack for its handlers.
struct CrashStack::State {};
CrashStack::CrashStack() = default;
CrashStack::~CrashStack() = default;

}  // namespace bw
