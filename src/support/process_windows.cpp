// Process by Windows calls.
#include <algorithm>

#include "support/paths.h"
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

HANDLE OpenEmptyInput() {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    return CreateFileW(L"NUL", GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                       OPEN_EXISTING, 0, nullptr);
}

// What a child inherits: these alone. A pipe of another child that starts at the same time would
// otherwise stay open in both, and never end.
class Inheritance {
  public:
    explicit Inheritance(STARTUPINFOEXW& startup, std::vector<HANDLE>& handles) {
        SIZE_T size = 0;
        InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
        room_.resize(size);
        list_ = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(room_.data());
        InitializeProcThreadAttributeList(list_, 1, 0, &size);
        UpdateProcThreadAttribute(list_, 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, handles.data(),
                                  handles.size() * sizeof(HANDLE), nullptr, nullptr);
        startup.lpAttributeList = list_;
    }
    Inheritance(const Inheritance&) = delete;
    Inheritance& operator=(const Inheritance&) = delete;
    ~Inheritance() { DeleteProcThreadAttributeList(list_); }

  private:
    std::vector<char> room_;
    LPPROC_THREAD_ATTRIBUTE_LIST list_ = nullptr;
};

// A process can't stand in a folder with a long path, but often by the short names of its parts.
std::wstring StartFolder(const std::filesystem::path& folder) {
    const std::wstring name = CallPath(folder.native());
    if (!name.starts_with(LR"(\\?\)")) return name;
    std::wstring brief(name.size(), L'\0');
    brief.resize(GetShortPathNameW(name.c_str(), brief.data(), static_cast<DWORD>(brief.size())));
    return brief.starts_with(LR"(\\?\)") && brief[5] == L':' ? brief.substr(4) : folder.native();
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
    // The current folder is this program's, not the child's; a bare name is looked for.
    const std::filesystem::path file =
        program.has_parent_path() ? FromCurrentFolder(program) : program;
    const std::filesystem::path folder = workingFolder.empty() ? file.parent_path() : workingFolder;
    const std::wstring application = CallPath(file.native());
    const std::wstring startFolder = StartFolder(folder);
    HANDLE reading = nullptr;
    HANDLE writing = nullptr;
    if (!MakePipe(reading, writing)) return false;
    const HANDLE input = OpenEmptyInput();
    std::vector<HANDLE> handles{input, writing};
    STARTUPINFOEXW startup{};
    startup.StartupInfo.cb = sizeof startup;
    startup.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
    startup.StartupInfo.hStdInput = input;
    startup.StartupInfo.hStdOutput = writing;
    startup.StartupInfo.hStdError = writing;
    const Inheritance inheritance(startup, handles);
    std::wstring line = CommandLine(file.native(), arguments);
    PROCESS_INFORMATION started{};
    const BOOL success = CreateProcessW(
        program.has_parent_path() ? application.c_str() : nullptr, line.data(), nullptr, nullptr,
        TRUE, CREATE_NO_WINDOW | EXTENDED_STARTUPINFO_PRESENT, nullptr,
        startFolder.empty() ? nullptr : startFolder.c_str(), &startup.StartupInfo, &started);
    CloseHandle(input);
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
        WaitForSingleObject(AsHandle(process_), INFINITE);  // until its files are closed
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
    const std::wstring folder = StartFolder(workingFolder);
    if (!CreateProcessW(CallPath(program.native()).c_str(), line.data(), nullptr, nullptr, FALSE,
                        DETACHED_PROCESS | CREATE_NEW_PROCESS_GROUP, nullptr,
                        folder.empty() ? nullptr : folder.c_str(), &startup, &started)) {
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
