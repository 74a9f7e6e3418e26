#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <sstream>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "common/child_process.h"

namespace bw::test {
namespace {

constexpr int kPassedDescriptor = 3;
constexpr int kNoSuchProgram = 127;
constexpr int kSignalStatus = 128;

std::vector<std::string> MergedEnvironment(const std::vector<std::string>& changes) {
    std::vector<std::string> merged = changes;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        const std::string_view text = *entry;
        const std::string_view name = text.substr(0, text.find('=') + 1);
        if (std::ranges::none_of(changes, [&](const auto& it) { return it.starts_with(name); }))
            merged.emplace_back(text);
    }
    return merged;
}

std::vector<char*> Pointers(std::vector<std::string>& words) {
    std::vector<char*> pointers;
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    return pointers;
}

// Runs between fork and exec, where a program with threads may only make system calls.
[[noreturn]] void BecomeProgram(char* const* words, char* const* environment,
                                const ChildCommand& command) {
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    constexpr int kNew = O_WRONLY | O_CREAT | O_TRUNC;
    const char* const input = command.inputFile.empty() ? "/dev/null" : command.inputFile.c_str();
    const char* const folder = command.workingFolder.c_str();
    const char* const errors = command.errorFile.c_str();
    const int passed = command.passedDescriptor;
    dup2(open(input, O_RDONLY), STDIN_FILENO);
    dup2(open(command.logFile.c_str(), kNew, 0600), STDOUT_FILENO);
    dup2(*errors != '\0' ? open(errors, kNew, 0600) : STDOUT_FILENO, STDERR_FILENO);
    if (passed >= 0) dup2(passed, kPassedDescriptor);
    syscall(SYS_close_range, kPassedDescriptor + (passed >= 0 ? 1 : 0), ~0U, 0);
    if (*folder != '\0' && chdir(folder) != 0) _exit(kNoSuchProgram);
    execve(words[0], words, environment);
    _exit(kNoSuchProgram);
}

}  // namespace

std::optional<ChildProcess> ChildProcess::Start(const ChildCommand& command) {
    std::vector<std::string> words = command.words;
    std::vector<std::string> environment = MergedEnvironment(command.environment);
    const std::vector<char*> wordPointers = Pointers(words);
    const std::vector<char*> environmentPointers = Pointers(environment);
    const pid_t id = fork();
    if (id == 0) BecomeProgram(wordPointers.data(), environmentPointers.data(), command);
    if (id < 0) return std::nullopt;
    setpgid(id, id);  // here too, so that the group stands before the first kill
    return ChildProcess(id, -id);
}

ChildProcess::ChildProcess(ChildProcess&& other) noexcept
    : id_(std::exchange(other.id_, -1)), group_(other.group_), status_(other.status_) {}

ChildProcess::~ChildProcess() {
    if (id_ < 0) return;
    kill(static_cast<pid_t>(group_), SIGKILL);
    waitpid(static_cast<pid_t>(id_), nullptr, 0);
}

bool ChildProcess::WaitFor(std::chrono::milliseconds patience) {
    if (id_ < 0) return true;
    const int descriptor = static_cast<int>(syscall(SYS_pidfd_open, id_, 0));
    if (descriptor < 0) return false;
    pollfd ended{.fd = descriptor, .events = POLLIN, .revents = 0};
    const bool done = poll(&ended, 1, static_cast<int>(patience.count())) == 1;
    close(descriptor);
    if (!done) return false;
    int status = 0;
    waitpid(static_cast<pid_t>(id_), &status, 0);
    status_ = WIFEXITED(status) ? WEXITSTATUS(status) : kSignalStatus + WTERMSIG(status);
    id_ = -1;
    return true;
}

bool ChildProcess::Signal(int number) const {
    return id_ >= 0 && kill(static_cast<pid_t>(id_), number) == 0;
}

bool ChildProcess::Kill() const {
    return Signal(SIGKILL);
}

std::optional<std::filesystem::path> FindProgram(const std::string& name) {
    const char* path = std::getenv("PATH");
    std::istringstream folders(std::string(path != nullptr ? path : "/usr/bin") + ":/usr/games");
    for (std::string folder; std::getline(folders, folder, ':');) {
        const std::filesystem::path candidate = std::filesystem::path(folder) / name;
        if (access(candidate.c_str(), X_OK) == 0 && !std::filesystem::is_directory(candidate))
            return candidate;
    }
    return std::nullopt;
}

}  // namespace bw::test
