// The crash file of Windows: a minidump. Written by a thread that waits for it from the start,
// since the one that crashes may have no stack left; and without the heap, which it may have
// locked.
#include <array>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <exception>
#include <string>

#include "support/crash_file.h"
#include "support/paths.h"
#include "support/windows_path.h"
// It needs what windows.h declares.
#include <dbghelp.h>

namespace bw {
namespace {

constexpr DWORD kUncaught = 0xE0425745;  // any number with the bits of a program's own error
constexpr DWORD kAborted = 0xE0425746;
constexpr DWORD kInvalidParameter = 0xC0000417;  // as the C runtime of newer compilers calls it
constexpr ULONG kHandlerStack = 64 * 1024;       // bytes
constexpr DWORD kMostWait = 60'000;              // ms; what hangs in a broken process is ended then

using PathRoom = std::array<wchar_t, 2048>;

struct Handler {
    PathRoom programFolder{};  // ...\\Dump\\program_
    PathRoom userFolder{};
    std::array<char, 512> exception{};  // the words of the one that nobody caught
    std::atomic<bool> crashed = false;
    HANDLE called = nullptr;
    HANDLE done = nullptr;
    DWORD writer = 0;  // the thread that writes
    DWORD thread = 0;  // the one that crashed
    EXCEPTION_POINTERS* pointers = nullptr;
};

// The system's handlers get nothing else handed in.
Handler handler;  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

void Keep(PathRoom& room, const std::filesystem::path& folder) {
    const std::wstring start =
        CallPath((folder / "Dump").native()) + L'\\' + ExecutablePath().stem().native() + L'_';
    start.copy(room.data(), room.size() - 64);
}

// Each level of the file's folder in turn; a level that is there is no failure.
HANDLE Create(const PathRoom& start, const SYSTEMTIME& time) {
    PathRoom path{};
    const size_t size = std::wcslen(start.data());
    for (size_t i = 0; i < size; ++i) {
        if (start[i] == L'\\' && i > 2) CreateDirectoryW(path.data(), nullptr);
        path[i] = start[i];
    }
    std::swprintf(path.data() + size, path.size() - size, L"%04u-%02u-%02u %02u_%02u_%02u.%u.dmp",
                  time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond,
                  time.wMilliseconds);
    return CreateFileW(path.data(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

void WriteDump() {
    SYSTEMTIME time{};
    GetSystemTime(&time);
    HANDLE file = Create(handler.programFolder, time);
    if (file == INVALID_HANDLE_VALUE) file = Create(handler.userFolder, time);
    if (file == INVALID_HANDLE_VALUE) return;
    // Enough for the calls and their values; all memory could be hundreds of megabytes of games.
    constexpr auto kKinds = static_cast<MINIDUMP_TYPE>(
        MiniDumpWithDataSegs | MiniDumpWithUnloadedModules | MiniDumpWithThreadInfo);
    MINIDUMP_EXCEPTION_INFORMATION exception{handler.thread, handler.pointers, FALSE};
    const auto length = static_cast<ULONG>(std::strlen(handler.exception.data()));
    MINIDUMP_USER_STREAM words{CommentStreamA, length + 1, handler.exception.data()};
    MINIDUMP_USER_STREAM_INFORMATION comment{1, &words};
    MiniDumpWriteDump(GetCurrentProcess(), GetCurrentProcessId(), file, kKinds, &exception,
                      length != 0 ? &comment : nullptr, nullptr);
    CloseHandle(file);
}

DWORD WINAPI WaitAndWrite(void*) {
    WaitForSingleObject(handler.called, INFINITE);
    WriteDump();
    SetEvent(handler.done);
    return 0;
}

LONG WINAPI OnCrash(EXCEPTION_POINTERS* pointers) {
    const DWORD code = pointers->ExceptionRecord->ExceptionCode;
    if (GetCurrentThreadId() != handler.writer) {
        if (handler.crashed.exchange(true)) Sleep(INFINITE);  // the first one's file counts
        handler.thread = GetCurrentThreadId();
        handler.pointers = pointers;
        SignalObjectAndWait(handler.called, handler.done, kMostWait, FALSE);
    }
    TerminateProcess(GetCurrentProcess(), code);
    return EXCEPTION_EXECUTE_HANDLER;
}

// Where the system sees no exception.
[[noreturn]] void CrashHere(DWORD code) {
    CONTEXT context{};
    RtlCaptureContext(&context);
    EXCEPTION_RECORD record{};
    record.ExceptionCode = code;
    record.ExceptionFlags = EXCEPTION_NONCONTINUABLE;
    record.ExceptionAddress = __builtin_return_address(0);
    EXCEPTION_POINTERS pointers{&record, &context};
    OnCrash(&pointers);
    std::_Exit(EXIT_FAILURE);
}

void KeepWords(const char* words) {
    std::strncpy(handler.exception.data(), words, handler.exception.size() - 1);
}

[[noreturn]] void OnTerminate() {
    try {
        if (const std::exception_ptr flying = std::current_exception()) {
            KeepWords("of an unknown type");
            std::rethrow_exception(flying);
        }
    } catch (const std::exception& exception) {
        KeepWords(exception.what());
    } catch (...) {
        // Its type is all that could be told, and there is no portable name for that.
    }
    CrashHere(kUncaught);
}

}  // namespace

void InstallCrashHandler() {
    Keep(handler.programFolder, ExecutableFolder());
    Keep(handler.userFolder, UserConfigFolder());
    handler.called = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    handler.done = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    const HANDLE writer = CreateThread(nullptr, 0, &WaitAndWrite, nullptr, 0, &handler.writer);
    if (writer != nullptr) CloseHandle(writer);
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    SetUnhandledExceptionFilter(&OnCrash);
    std::set_terminate(&OnTerminate);
    std::signal(SIGABRT, [](int) { CrashHere(kAborted); });
    _set_invalid_parameter_handler([](const wchar_t*, const wchar_t*, const wchar_t*, unsigned,
                                      uintptr_t) { CrashHere(kInvalidParameter); });
    ULONG room = kHandlerStack;
    SetThreadStackGuarantee(&room);
}

// The room that the handlers need is kept at the end of the thread's own stack.
struct CrashStack::State {};
CrashStack::CrashStack() {
    ULONG room = kHandlerStack;
    SetThreadStackGuarantee(&room);
}
CrashStack::~CrashStack() = default;

}  // namespace bw
