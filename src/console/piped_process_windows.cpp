// PipedProcess by Windows calls. The pipes have names, by which the child opens them like files;
// only programs of this user may, and only the first one that comes can.
#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <random>
#include <utility>

#include "console/piped_process.h"
#include "support/windows_words.h"
// They need what windows.h declares.
#include <sddl.h>
#include <winternl.h>

extern "C" {
// Not in the headers, but in every Windows since XP.
NTSTATUS NTAPI NtSuspendProcess(HANDLE process);
NTSTATUS NTAPI NtResumeProcess(HANDLE process);
}

namespace bw {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

// How long a wait may last before it looks whether it is still wanted.
constexpr milliseconds kStopLook{50};
constexpr DWORD kLastLook = 5000;     // ms; from a kill to the end
constexpr DWORD kPipeSize = 1 << 16;  // bytes
constexpr UINT kKilled = 1;

class Handle {
  public:
    explicit Handle(HANDLE handle = nullptr) : handle_(handle) {}
    Handle(Handle&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    Handle& operator=(Handle&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~Handle() {
        if (*this) CloseHandle(handle_);
    }
    explicit operator bool() const { return handle_ != nullptr && handle_ != INVALID_HANDLE_VALUE; }
    HANDLE Get() const { return handle_; }

  private:
    HANDLE handle_;
};

// Until the event is set, unless the child ends first or the wait isn't wanted any more.
PipeEnd Await(HANDLE event, HANDLE child, Clock::time_point deadline, const std::stop_token& stop) {
    const std::array<HANDLE, 2> either{event, child};
    for (;;) {
        if (stop.stop_requested()) return PipeEnd::kStopped;
        const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::now());
        const auto wait = static_cast<DWORD>(std::clamp(left, milliseconds{0}, kStopLook).count());
        switch (WaitForMultipleObjects(2, either.data(), FALSE, wait)) {
            case WAIT_OBJECT_0:
                return PipeEnd::kDone;
            case WAIT_OBJECT_0 + 1:  // what it wrote last may be on its way
                return WaitForSingleObject(event, kStopLook.count()) == WAIT_OBJECT_0
                           ? PipeEnd::kDone
                           : PipeEnd::kClosed;
            case WAIT_TIMEOUT:
                break;
            default:
                return PipeEnd::kClosed;
        }
        if (left <= milliseconds{0}) return PipeEnd::kSilent;
    }
}

// This side's end of one pipe. An operation whose wait was given up goes on, and is the next one's
// to finish.
class Channel {
  public:
    Channel() = default;
    Channel(const Channel&) = delete;
    Channel& operator=(const Channel&) = delete;
    ~Channel() { Close(); }

    bool Make(const std::wstring& name, DWORD direction, SECURITY_ATTRIBUTES& rights) {
        event_ = Handle(CreateEventW(nullptr, TRUE, FALSE, nullptr));
        pipe_ = Handle(CreateNamedPipeW(
            name.c_str(), direction | FILE_FLAG_OVERLAPPED | FILE_FLAG_FIRST_PIPE_INSTANCE,
            PIPE_TYPE_BYTE | PIPE_READMODE_BYTE | PIPE_WAIT | PIPE_REJECT_REMOTE_CLIENTS, 1,
            kPipeSize, kPipeSize, 0, &rights));
        if (!event_ || !pipe_) return false;
        return Begin([&] { return ConnectNamedPipe(pipe_.Get(), &place_); });
    }

    PipeEnd Write(std::string_view bytes, HANDLE child, Clock::time_point deadline,
                  const std::stop_token& stop) {
        if (const PipeEnd end = Finish(child, deadline, stop); end != PipeEnd::kDone) return end;
        bytes_.assign(bytes.begin(), bytes.end());
        const auto size = static_cast<DWORD>(bytes_.size());
        if (!Begin([&] { return WriteFile(pipe_.Get(), bytes_.data(), size, nullptr, &place_); }))
            return PipeEnd::kClosed;
        return Finish(child, deadline, stop);
    }

    // kDone: there is something in `Bytes`.
    PipeEnd Fill(HANDLE child, Clock::time_point deadline, const std::stop_token& stop) {
        while (Bytes().empty()) {
            if (!pending_) {
                bytes_.resize(kPipeSize);
                begin_ = end_ = 0;
                if (!Begin([&] {
                        return ReadFile(pipe_.Get(), bytes_.data(), kPipeSize, nullptr, &place_);
                    }))
                    return PipeEnd::kClosed;
            }
            if (const PipeEnd end = Finish(child, deadline, stop); end != PipeEnd::kDone)
                return end;
        }
        return PipeEnd::kDone;
    }
    std::string_view Bytes() const {
        return {bytes_.data() + begin_, static_cast<size_t>(end_ - begin_)};
    }
    void Drop(size_t count) { begin_ += static_cast<DWORD>(count); }

    // What the child hasn't read yet it can still read.
    void Close() {
        DWORD unused = 0;
        if (pending_ && CancelIoEx(pipe_.Get(), &place_))
            GetOverlappedResult(pipe_.Get(), &place_, &unused, TRUE);
        pending_ = false;
        pipe_ = Handle();
    }

  private:
    template <typename Call>
    bool Begin(const Call& call) {
        place_ = {};
        place_.hEvent = event_.Get();
        ResetEvent(event_.Get());
        pending_ = true;
        if (call()) return true;
        const DWORD error = GetLastError();
        if (error == ERROR_IO_PENDING) return true;
        pending_ = false;
        return error == ERROR_PIPE_CONNECTED;
    }
    // Of what has begun, if anything has.
    PipeEnd Finish(HANDLE child, Clock::time_point deadline, const std::stop_token& stop) {
        if (!pending_) return PipeEnd::kDone;
        if (const PipeEnd end = Await(event_.Get(), child, deadline, stop); end != PipeEnd::kDone)
            return end;
        pending_ = false;
        end_ = 0;
        return GetOverlappedResult(pipe_.Get(), &place_, &end_, FALSE) ? PipeEnd::kDone
                                                                       : PipeEnd::kClosed;
    }

    Handle event_;
    Handle pipe_;
    OVERLAPPED place_{};
    bool pending_ = false;
    std::string bytes_;  // being written, or read: from begin_ to end_
    DWORD begin_ = 0;
    DWORD end_ = 0;
};

// All rights for this process's user, none for anybody else.
class OwnRights {
  public:
    OwnRights() {
        const std::wstring user = UserSid();
        if (user.empty()) return;
        const std::wstring text = L"D:P(A;;GA;;;" + user + L")";
        ConvertStringSecurityDescriptorToSecurityDescriptorW(
            text.c_str(), SDDL_REVISION_1, &attributes_.lpSecurityDescriptor, nullptr);
    }
    OwnRights(const OwnRights&) = delete;
    OwnRights& operator=(const OwnRights&) = delete;
    ~OwnRights() { LocalFree(attributes_.lpSecurityDescriptor); }

    bool Known() const { return attributes_.lpSecurityDescriptor != nullptr; }
    SECURITY_ATTRIBUTES& Attributes() { return attributes_; }

  private:
    static std::wstring UserSid() {
        HANDLE opened = nullptr;
        if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &opened)) return {};
        const Handle token(opened);
        alignas(TOKEN_USER) std::array<uint8_t, sizeof(TOKEN_USER) + SECURITY_MAX_SID_SIZE> user{};
        DWORD size = 0;
        wchar_t* text = nullptr;
        if (!GetTokenInformation(token.Get(), TokenUser, user.data(), user.size(), &size) ||
            !ConvertSidToStringSidW(reinterpret_cast<TOKEN_USER*>(user.data())->User.Sid, &text))
            return {};
        std::wstring sid(text);
        LocalFree(text);
        return sid;
    }
    SECURITY_ATTRIBUTES attributes_{sizeof attributes_, nullptr, FALSE};
};

// A name that no program has and none can guess.
std::wstring PipeName() {
    std::random_device random;
    std::wstring name = LR"(\\.\pipe\bankweaver-)" + std::to_wstring(GetCurrentProcessId());
    for (int i = 0; i < 3; ++i)
        name += L"-" + std::to_wstring(random());
    return name;
}

struct IgnoringCase {
    bool operator()(const std::wstring& a, const std::wstring& b) const {
        return CompareStringOrdinal(a.c_str(), -1, b.c_str(), -1, TRUE) == CSTR_LESS_THAN;
    }
};
using Variables = std::map<std::wstring, std::wstring, IgnoringCase>;

// Names may begin with "=": the current folders of drives are kept that way.
std::pair<std::wstring, std::optional<std::wstring>> Parted(const std::wstring& variable) {
    const size_t equal = variable.find(L'=', 1);
    if (equal == variable.npos) return {variable, std::nullopt};
    return {variable.substr(0, equal), variable.substr(equal + 1)};
}

Variables OwnEnvironment() {
    Variables all;
    wchar_t* const block = GetEnvironmentStringsW();
    for (const wchar_t* at = block; *at != L'\0';) {
        const std::wstring variable(at);
        const auto [name, value] = Parted(variable);
        all[name] = value.value_or(L"");
        at += variable.size() + 1;
    }
    FreeEnvironmentStringsW(block);
    return all;
}

// As the system wants it: each with a zero behind it, one more at the end.
std::wstring EnvironmentBlock(const PipedCommand& command, const std::wstring& pipe) {
    Variables all = OwnEnvironment();
    for (const std::string& change : command.environment) {
        const auto [name, value] = Parted(WideOf(change));
        all.erase(name);
        if (value) all[name] = *value;
    }
    all[WideOf(PipedProcess::kOrders)] = pipe + L"-orders";
    all[WideOf(PipedProcess::kAnswers)] = pipe + L"-answers";
    std::wstring block;
    for (const auto& [name, value] : all)
        block.append(name).append(L"=").append(value).push_back(L'\0');
    return block + L'\0';
}

// A file for the child's standard streams.
Handle Inherited(const std::wstring& file, DWORD access, DWORD disposition) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    const DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    return Handle(CreateFileW(CallPath(file).c_str(), access, share, &inherited, disposition,
                              FILE_ATTRIBUTE_NORMAL, nullptr));
}

// Whatever is in it is killed with its last handle, which is ours.
Handle MakeJob() {
    Handle job(CreateJobObjectW(nullptr, nullptr));
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    if (!SetInformationJobObject(job.Get(), JobObjectExtendedLimitInformation, &limits,
                                 sizeof limits))
        return Handle();
    return job;
}

// The one thing that CreateProcessW is told beside the usual: which handles the child gets. Others
// that may be inherited belong to children that start at the same time.
class HandleList {
  public:
    explicit HandleList(std::array<HANDLE, 2>& handles) {
        SIZE_T size = 0;
        InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
        bytes_.resize(size);
        made_ = InitializeProcThreadAttributeList(Get(), 1, 0, &size) &&
                UpdateProcThreadAttribute(Get(), 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST,
                                          handles.data(), sizeof handles, nullptr, nullptr);
    }
    HandleList(const HandleList&) = delete;
    HandleList& operator=(const HandleList&) = delete;
    ~HandleList() {
        if (made_) DeleteProcThreadAttributeList(Get());
    }
    bool Made() const { return made_; }
    LPPROC_THREAD_ATTRIBUTE_LIST Get() {
        return reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(bytes_.data());
    }

  private:
    std::vector<uint8_t> bytes_;
    bool made_ = false;
};

}  // namespace

class PipedProcess::State {
  public:
    State() = default;
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    ~State() {
        if (!child) return;
        TerminateProcess(child.Get(), kKilled);
        WaitForSingleObject(child.Get(), kLastLook);  // its files are free then
    }

    bool Start(const PipedCommand& command) {
        const std::wstring pipe = PipeName();
        OwnRights rights;
        job = MakeJob();
        return rights.Known() && job &&
               orders.Make(pipe + L"-orders", PIPE_ACCESS_OUTBOUND, rights.Attributes()) &&
               answers.Make(pipe + L"-answers", PIPE_ACCESS_INBOUND, rights.Attributes()) &&
               Run(command, EnvironmentBlock(command, pipe));
    }

    Handle job;
    Handle child;
    Channel orders;
    Channel answers;

  private:
    bool Run(const PipedCommand& command, std::wstring environment) {
        const Handle log = Inherited(command.log.native(), FILE_APPEND_DATA, OPEN_ALWAYS);
        const Handle nothing = Inherited(L"NUL", GENERIC_READ, OPEN_EXISTING);
        std::array<HANDLE, 2> streams{log.Get(), nothing.Get()};
        HandleList handles(streams);
        if (!log || !nothing || !handles.Made()) return false;
        STARTUPINFOEXW startup{};
        startup.StartupInfo.cb = sizeof startup;
        startup.StartupInfo.dwFlags = STARTF_USESTDHANDLES | STARTF_USESHOWWINDOW;
        startup.StartupInfo.wShowWindow = SW_HIDE;
        startup.StartupInfo.hStdInput = nothing.Get();
        startup.StartupInfo.hStdOutput = startup.StartupInfo.hStdError = log.Get();
        startup.lpAttributeList = handles.Get();
        // A console of its own, which nobody sees: an interrupt is this program's to deal with.
        const DWORD flags = CREATE_NO_WINDOW | CREATE_SUSPENDED | CREATE_UNICODE_ENVIRONMENT |
                            EXTENDED_STARTUPINFO_PRESENT;
        std::wstring line = CommandLine(command.program.native(), command.arguments);
        PROCESS_INFORMATION started{};
        if (!CreateProcessW(CallPath(command.program.native()).c_str(), line.data(), nullptr,
                            nullptr, TRUE, flags, environment.data(), command.folder.c_str(),
                            &startup.StartupInfo, &started))
            return false;
        child = Handle(started.hProcess);
        const Handle thread(started.hThread);
        return AssignProcessToJobObject(job.Get(), child.Get()) &&
               ResumeThread(thread.Get()) != static_cast<DWORD>(-1);
    }
};

PipedProcess::PipedProcess() = default;

PipedProcess::~PipedProcess() {
    End(milliseconds{0});
}

bool PipedProcess::Start(const PipedCommand& command) {
    End(milliseconds{0});
    auto state = std::make_unique<State>();
    if (!state->Start(command)) return false;
    state_ = std::move(state);
    id_ = GetProcessId(state_->child.Get());
    return true;
}

PipeEnd PipedProcess::Write(std::string_view bytes, milliseconds patience,
                            const std::stop_token& stop) {
    if (!state_) return PipeEnd::kClosed;
    Wake();
    return state_->orders.Write(bytes, state_->child.Get(), Clock::now() + patience, stop);
}

PipeEnd PipedProcess::Read(std::span<char> bytes, milliseconds patience,
                           const std::stop_token& stop) {
    if (!state_) return PipeEnd::kClosed;
    Wake();
    const auto deadline = Clock::now() + patience;
    Channel& answers = state_->answers;
    while (!bytes.empty()) {
        const PipeEnd end = answers.Fill(state_->child.Get(), deadline, stop);
        if (end != PipeEnd::kDone) return end;
        const size_t count = std::min(bytes.size(), answers.Bytes().size());
        std::copy_n(answers.Bytes().begin(), count, bytes.begin());
        answers.Drop(count);
        bytes = bytes.subspan(count);
    }
    return PipeEnd::kDone;
}

PipeEnd PipedProcess::AwaitBytes(milliseconds patience, const std::stop_token& stop) {
    if (!state_) return PipeEnd::kClosed;
    Wake();
    return state_->answers.Fill(state_->child.Get(), Clock::now() + patience, stop);
}

void PipedProcess::Rest() {
    if (state_ && !resting_) resting_ = NtSuspendProcess(state_->child.Get()) >= 0;
}

void PipedProcess::Wake() {
    if (resting_) NtResumeProcess(state_->child.Get());
    resting_ = false;
}

void PipedProcess::End(milliseconds patience) {
    if (!state_) return;
    Wake();
    const HANDLE child = state_->child.Get();
    Channel& answers = state_->answers;
    const auto deadline = Clock::now() + patience;
    state_->orders.Close();
    // What it still writes must not hold it.
    while (patience > milliseconds{0} && answers.Fill(child, deadline, {}) == PipeEnd::kDone)
        answers.Drop(answers.Bytes().size());
    const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::now());
    WaitForSingleObject(child, static_cast<DWORD>(std::max(left, milliseconds{0}).count()));
    state_.reset();
    id_ = -1;
}

}  // namespace bw
