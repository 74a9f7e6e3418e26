// Process by Windows calls.
#include <algorithm>

#include "support/process.h"
#include "support/windows_words.h"

namespace bw {
namespace {

using Clock = std::chrono::steady_clock;

constexpr size_t kReadSize = 1u << 16;
constexpr size_t kEndlessOutput = 16;  // times the limit: the child will not stop by itself
constexpr DWORD kLookEvery = 5;        // ms; a plain pipe can't be waited for

HANDLE AsHandle(intptr_t handle) {
    return reinterpret_cast<HANDLE>(handle);
}
intptr_t AsNumber(HANDLE handle) {
    return reinterpret_cast<intptr_t>(handle);
}

// The pipe's ends: reading for the parent, writing for the child.
bool MakePipe(HANDLE& reading, HANDLE& writing) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    return CreatePipe(&reading, &writing, &inherited, 0) &&
           SetHandleInformation(reading, HANDLE_FLAG_INHERIT, 0);
}

// The number of bytes that wait in the pipe; 0 when the time is over or the pipe has ended.
DWORD WaitForBytes(HANDLE pipe, std::chrono::milliseconds patience) {
    const auto deadline = Clock::now() + patience;
    for (;;) {
        DWORD waiting = 0;
        if (!PeekNamedPipe(pipe, nullptr, 0, nullptr, &waiting, nullptr)) return 0;
        if (waiting > 0 || Clock::now() >= deadline) return waiting;
        Sleep(kLookEvery);
    }
}

}  // namespace

Process::~Process() {
    Close();
}

bool Process::Start(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                    const std::filesystem::path& workingFolder) {
    Close();
    HANDLE reading = nullptr;
    HANDLE writing = nullptr;
    if (!MakePipe(reading, writing)) return false;
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = writing;
    startup.hStdError = writing;
    std::wstring line = CommandLine(program.native(), arguments);
    const std::filesystem::path folder =
        workingFolder.empty() ? program.parent_path() : workingFolder;
    PROCESS_INFORMATION started{};
    const BOOL success = CreateProcessW(
        nullptr, line.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW | NORMAL_PRIORITY_CLASS,
        nullptr, folder.empty() ? nullptr : folder.c_str(), &startup, &started);
    CloseHandle(writing);
    if (!success) {
        CloseHandle(reading);
        return false;
    }
    CloseHandle(started.hThread);
    process_ = AsNumber(started.hProcess);
    output_ = AsNumber(reading);
    return true;
}

std::string Process::ReadOutput(std::chrono::milliseconds silence, size_t limit) {
    std::string output;
    if (output_ == -1) return output;
    std::vector<char> buffer(kReadSize);
    size_t total = 0;
    while (total / kEndlessOutput <= limit && WaitForBytes(AsHandle(output_), silence) > 0) {
        DWORD count = 0;
        if (!ReadFile(AsHandle(output_), buffer.data(), kReadSize, &count, nullptr)) break;
        total += count;
        output.append(buffer.data(), std::min<size_t>(count, limit - output.size()));
    }
    return output;
}

int Process::ExitStatus(std::chrono::milliseconds patience) {
    if (process_ == -1) return status_ == kStillRunning ? -1 : status_;
    const HANDLE child = AsHandle(process_);
    const auto wait = std::clamp<std::chrono::milliseconds::rep>(patience.count(), 0, INFINITE - 1);
    if (WaitForSingleObject(child, static_cast<DWORD>(wait)) == WAIT_TIMEOUT) return kStillRunning;
    DWORD code = 0;
    status_ = GetExitCodeProcess(child, &code) ? static_cast<int>(code) : -1;
    CloseHandle(child);
    process_ = -1;
    return status_;
}

void Process::Close() {
    if (output_ != -1) CloseHandle(AsHandle(output_));
    output_ = -1;
    if (ExitStatus() == kStillRunning && process_ != -1) {
        TerminateProcess(AsHandle(process_), static_cast<UINT>(-1));
        CloseHandle(AsHandle(process_));
    }
    process_ = -1;
    status_ = kStillRunning;
}

bool StartDetached(const std::filesystem::path& program,
                   const std::filesystem::path& workingFolder) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    std::wstring line = CommandLine(program.native(), {});
    PROCESS_INFORMATION started{};
    if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE,
                        DETACHED_PROCESS | CREATE_NEW_PROCESS_GROUP, nullptr,
                        workingFolder.empty() ? nullptr : workingFolder.c_str(), &startup,
                        &started)) {
        return false;
    }
    CloseHandle(started.hThread);
    CloseHandle(started.hProcess);
    return true;
}

bool ProcessRuns(uint32_t id) {
    const HANDLE process = OpenProcess(SYNCHRONIZE, FALSE, id);
    if (process == nullptr) return GetLastError() != ERROR_INVALID_PARAMETER;
    const bool runs = WaitForSingleObject(process, 0) == WAIT_TIMEOUT;
    CloseHandle(process);
    return runs;
}

}  // namespace bw
