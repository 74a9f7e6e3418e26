// Process by POSIX calls, with Linux's process descriptors for the wait.
#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <thread>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/process.h"

namespace bw {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr size_t kReadSize = 1u << 16;  // what a Linux pipe holds
constexpr size_t kEndlessOutput = 16;   // times the limit: the child will not stop by itself

struct SpawnActions {
    posix_spawn_file_actions_t value;
    SpawnActions() { posix_spawn_file_actions_init(&value); }
    SpawnActions(const SpawnActions&) = delete;
    SpawnActions& operator=(const SpawnActions&) = delete;
    ~SpawnActions() { posix_spawn_file_actions_destroy(&value); }
};

struct SpawnAttributes {
    posix_spawnattr_t value;
    SpawnAttributes() { posix_spawnattr_init(&value); }
    SpawnAttributes(const SpawnAttributes&) = delete;
    SpawnAttributes& operator=(const SpawnAttributes&) = delete;
    ~SpawnAttributes() { posix_spawnattr_destroy(&value); }
};

// The child gets no blocked signals and the usual end by SIGPIPE, whatever the parent has set.
void ResetSignals(SpawnAttributes& attributes) {
    sigset_t none, pipe;
    sigemptyset(&none);
    sigemptyset(&pipe);
    sigaddset(&pipe, SIGPIPE);
    posix_spawnattr_setsigmask(&attributes.value, &none);
    posix_spawnattr_setsigdefault(&attributes.value, &pipe);
    short flags = 0;
    posix_spawnattr_getflags(&attributes.value, &flags);
    flags |= POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF;
    posix_spawnattr_setflags(&attributes.value, flags);
}

// What the child has open beside its outputs: an empty input, and nothing of what libraries of the
// parent hold. The folder that it runs in.
void AddUsualActions(SpawnActions& actions, const fs::path& folder) {
    posix_spawn_file_actions_addopen(&actions.value, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addclosefrom_np(&actions.value, STDERR_FILENO + 1);
    if (!folder.empty()) posix_spawn_file_actions_addchdir_np(&actions.value, folder.c_str());
}

// True as soon as the descriptor has something to tell, false when the time is over.
bool WaitFor(int descriptor, std::chrono::milliseconds patience) {
    const auto deadline = Clock::now() + std::min(patience, std::chrono::milliseconds{INT_MAX});
    for (;;) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        pollfd question{descriptor, POLLIN, 0};
        const auto wait = std::clamp<std::chrono::milliseconds::rep>(left.count(), 0, INT_MAX);
        const int answer = poll(&question, 1, static_cast<int>(wait));
        if (answer >= 0 || errno != EINTR) return answer > 0;
    }
}

// Waits for a child's end without collecting its status.
void WaitForEnd(pid_t child, std::chrono::milliseconds patience) {
    const auto descriptor = static_cast<int>(syscall(SYS_pidfd_open, child, 0));
    if (descriptor != -1) {
        WaitFor(descriptor, patience);
        close(descriptor);
        return;
    }
    // Kernels before 5.3 can't be asked to wait for one child for a limited time.
    const auto deadline = Clock::now() + patience;
    siginfo_t ended{};
    while (waitid(P_PID, static_cast<id_t>(child), &ended, WEXITED | WNOHANG | WNOWAIT) == 0 &&
           ended.si_pid == 0 && Clock::now() < deadline) {
        std::this_thread::sleep_for(std::chrono::milliseconds{1});
    }
}

pid_t Collect(pid_t child, int& status, int options) {
    pid_t ended = -1;
    do {
        ended = waitpid(child, &status, options);
    } while (ended == -1 && errno == EINTR);
    return ended;
}

}  // namespace

Process::~Process() {
    Close();
}

bool Process::Start(const fs::path& program, const std::vector<std::string>& arguments,
                    const fs::path& workingFolder) {
    Close();
    // The child changes its folder before it looks for the program.
    std::error_code error;
    const fs::path file = program.has_parent_path() ? fs::absolute(program, error) : program;
    const fs::path folder = workingFolder.empty() ? file.parent_path() : workingFolder;
    std::vector<char*> words{const_cast<char*>(file.c_str())};
    for (const std::string& word : arguments)
        words.push_back(const_cast<char*>(word.c_str()));
    words.push_back(nullptr);

    std::array<int, 2> pipe{};
    if (error || pipe2(pipe.data(), O_CLOEXEC) != 0) return false;
    const auto [reading, writing] = pipe;
    SpawnActions actions;
    SpawnAttributes attributes;
    ResetSignals(attributes);
    posix_spawn_file_actions_adddup2(&actions.value, writing, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions.value, writing, STDERR_FILENO);
    // Last, since the pipe itself may be number 0 in a parent without a standard input.
    AddUsualActions(actions, folder);
    pid_t child = -1;
    const int failure = posix_spawnp(&child, file.c_str(), &actions.value, &attributes.value,
                                     words.data(), environ);
    close(writing);
    if (failure != 0) {
        close(reading);
        return false;
    }
    process_ = child;
    output_ = reading;
    return true;
}

std::string Process::ReadOutput(std::chrono::milliseconds silence, size_t limit) {
    std::string output;
    if (output_ == -1) return output;
    std::vector<char> buffer(kReadSize);
    size_t total = 0;
    while (total / kEndlessOutput <= limit && WaitFor(static_cast<int>(output_), silence)) {
        const ssize_t count = read(static_cast<int>(output_), buffer.data(), buffer.size());
        if (count == 0 || (count < 0 && errno != EINTR)) break;
        if (count < 0) continue;
        total += static_cast<size_t>(count);
        output.append(buffer.data(), std::min(static_cast<size_t>(count), limit - output.size()));
    }
    return output;
}

int Process::ExitStatus(std::chrono::milliseconds patience) {
    if (process_ == -1) return status_ == kStillRunning ? -1 : status_;
    const auto child = static_cast<pid_t>(process_);
    int status = 0;
    pid_t ended = Collect(child, status, WNOHANG);
    if (ended == 0 && patience.count() > 0) {
        WaitForEnd(child, patience);
        ended = Collect(child, status, WNOHANG);
    }
    if (ended == 0) return kStillRunning;
    process_ = -1;
    status_ = ended == child && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return status_;
}

void Process::Close() {
    if (output_ != -1) close(static_cast<int>(output_));
    output_ = -1;
    if (ExitStatus() == kStillRunning) {
        const auto child = static_cast<pid_t>(process_);
        kill(child, SIGKILL);
        int status = 0;
        Collect(child, status, 0);
    }
    process_ = -1;
    status_ = kStillRunning;
}

bool StartDetached(const fs::path& program, const fs::path& workingFolder) {
    SpawnActions actions;
    SpawnAttributes attributes;
    posix_spawnattr_setflags(&attributes.value, POSIX_SPAWN_SETSID);
    ResetSignals(attributes);
    AddUsualActions(actions, workingFolder);
    std::array<char*, 2> words{const_cast<char*>(program.c_str()), nullptr};
    pid_t child = -1;
    if (posix_spawn(&child, program.c_str(), &actions.value, &attributes.value, words.data(),
                    environ) != 0)
        return false;
    // If it ends first, its entry in the system's table shouldn't stay until this program ends.
    std::thread([child] {
        int status = 0;
        Collect(child, status, 0);
    }).detach();
    return true;
}

bool ProcessRuns(uint32_t id) {
    if (id == 0 || id > INT_MAX) return false;  // other meanings to kill()
    return kill(static_cast<pid_t>(id), 0) == 0 || errno != ESRCH;
}

}  // namespace bw
