#include <algorithm>
#include <csignal>
#include <cwctype>
#include <string_view>
#include <utility>

#include "common/child_process.h"
#include "support/windows_words.h"

namespace bw::test {
namespace {

constexpr DWORD kNoSuchProgram = 127;

HANDLE AsHandle(intptr_t handle) {
    return reinterpret_cast<HANDLE>(handle);
}
intptr_t AsNumber(HANDLE handle) {
    return reinterpret_cast<intptr_t>(handle);
}

std::wstring NameOf(std::wstring_view entry) {
    // A name may begin with "=".
    std::wstring name(entry.substr(0, entry.find(L'=', 1)));
    std::ranges::transform(name, name.begin(), [](wchar_t unit) { return std::towupper(unit); });
    return name;
}

// Entries with a zero behind each, and one more at the end.
std::wstring MergedEnvironment(const std::vector<std::string>& changes) {
    std::vector<std::wstring> merged;
    for (const std::string& change : changes)
        merged.push_back(WideOf(change));
    const size_t changed = merged.size();
    wchar_t* const parents = GetEnvironmentStringsW();
    for (const wchar_t* entry = parents; *entry != L'\0'; entry += merged.back().size() + 1)
        merged.emplace_back(entry);
    FreeEnvironmentStringsW(parents);
    std::wstring block;
    for (size_t i = 0; i < merged.size(); ++i) {
        const auto same = [&](const std::wstring& it) { return NameOf(it) == NameOf(merged[i]); };
        if (i >= changed && std::ranges::any_of(merged.begin(), merged.begin() + changed, same))
            continue;
        block.append(merged[i]) += L'\0';
    }
    return block + L'\0';
}

// A file that the child inherits; "NUL" takes everything and has nothing.
HANDLE OpenForChild(const std::filesystem::path& file, DWORD access, DWORD disposition) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    const std::wstring name = file.empty() ? L"NUL" : CallPath(file.native());
    return CreateFileW(name.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                       &inherited, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
}

// A job that ends with its last handle, and all that is in it.
HANDLE MakeJob() {
    const HANDLE job = CreateJobObjectW(nullptr, nullptr);
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits);
    return job;
}

}  // namespace

std::optional<ChildProcess> ChildProcess::Start(const ChildCommand& command) {
    std::wstring line = CommandLine(WideOf(command.words.front()),
                                    {command.words.begin() + 1, command.words.end()});
    std::wstring environment = MergedEnvironment(command.environment);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = OpenForChild(command.inputFile, GENERIC_READ, OPEN_EXISTING);
    startup.hStdOutput = OpenForChild(command.logFile, GENERIC_WRITE, CREATE_ALWAYS);
    startup.hStdError = command.errorFile.empty()
                            ? startup.hStdOutput
                            : OpenForChild(command.errorFile, GENERIC_WRITE, CREATE_ALWAYS);
    const std::filesystem::path& folder = command.workingFolder;
    PROCESS_INFORMATION started{};
    const BOOL success = CreateProcessW(
        nullptr, line.data(), nullptr, nullptr, TRUE,
        CREATE_SUSPENDED | CREATE_NEW_PROCESS_GROUP | CREATE_UNICODE_ENVIRONMENT,
        environment.data(), folder.empty() ? nullptr : folder.c_str(), &startup, &started);
    const DWORD problem = GetLastError();
    CloseHandle(startup.hStdInput);
    CloseHandle(startup.hStdOutput);
    if (!command.errorFile.empty()) CloseHandle(startup.hStdError);
    if (!success) {
        if (problem != ERROR_FILE_NOT_FOUND && problem != ERROR_PATH_NOT_FOUND) return std::nullopt;
        ChildProcess missing(-1, -1);
        missing.status_ = kNoSuchProgram;
        return missing;
    }
    const HANDLE job = MakeJob();
    AssignProcessToJobObject(job, started.hProcess);
    ResumeThread(started.hThread);
    CloseHandle(started.hThread);
    return ChildProcess(AsNumber(started.hProcess), AsNumber(job));
}

ChildProcess::ChildProcess(ChildProcess&& other) noexcept
    : id_(std::exchange(other.id_, -1)),
      group_(std::exchange(other.group_, -1)),
      status_(other.status_) {}

ChildProcess::~ChildProcess() {
    if (group_ != -1) {
        TerminateJobObject(AsHandle(group_), kKilled);
        CloseHandle(AsHandle(group_));
    }
    if (id_ != -1) CloseHandle(AsHandle(id_));
}

bool ChildProcess::WaitFor(std::chrono::milliseconds patience) {
    if (id_ == -1) return true;
    if (WaitForSingleObject(AsHandle(id_), static_cast<DWORD>(patience.count())) != WAIT_OBJECT_0)
        return false;
    DWORD status = 0;
    GetExitCodeProcess(AsHandle(id_), &status);
    status_ = static_cast<int>(status);
    CloseHandle(AsHandle(std::exchange(id_, -1)));
    return true;
}

bool ChildProcess::Signal(int number) const {
    if (id_ == -1 || (number != SIGINT && number != SIGTERM)) return false;
    return GenerateConsoleCtrlEvent(CTRL_BREAK_EVENT, GetProcessId(AsHandle(id_))) != 0;
}

bool ChildProcess::Kill() const {
    return id_ != -1 && TerminateProcess(AsHandle(id_), kKilled) != 0;
}

std::optional<std::filesystem::path> FindProgram(const std::string& name) {
    std::wstring found(MAX_PATH, L'\0');
    const DWORD size = SearchPathW(nullptr, WideOf(name).c_str(), L".exe",
                                   static_cast<DWORD>(found.size()), found.data(), nullptr);
    if (size == 0 || size >= found.size()) return std::nullopt;
    found.resize(size);
    return found;
}

}  // namespace bw::test
