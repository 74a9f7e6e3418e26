// PipedProcess by POSIX calls. The child opens its ends by their numbers under /dev/fd, so that no
// name of theirs is ever seen in a folder.
#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <optional>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "console/piped_process.h"

namespace bw {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

// How long a wait may last before it looks whether it is still wanted.
constexpr milliseconds kStopLook{50};
constexpr int kOrdersNumber = 3;
constexpr int kAnswersNumber = 4;
constexpr std::string_view kOrdersPath = "/dev/fd/3";
constexpr std::string_view kAnswersPath = "/dev/fd/4";

struct Pipe {
    int ends[2] = {-1, -1};  // reading, writing
    Pipe() = default;
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    ~Pipe() {
        for (int& end : ends)
            Drop(end);
    }
    // No other child of this process gets them.
    bool Make() { return pipe2(ends, O_CLOEXEC) == 0; }
    int Take(int which) { return std::exchange(ends[which], -1); }
    static void Drop(int& end) {
        if (end >= 0) close(end);
        end = -1;
    }
};

std::string_view NameOf(std::string_view variable) {
    return variable.substr(0, variable.find('='));
}

// This process's environment with the command's changes and the paths of the pipes.
std::vector<std::string> Environment(const PipedCommand& command) {
    std::vector<std::string> all;
    for (const auto& [name, path] : {std::pair(PipedProcess::kOrders, kOrdersPath),
                                     std::pair(PipedProcess::kAnswers, kAnswersPath)}) {
        all.emplace_back(name).append("=").append(path);
    }
    for (char** variable = environ; *variable != nullptr; ++variable) {
        const std::string_view name = NameOf(*variable);
        if (std::none_of(command.environment.begin(), command.environment.end(),
                         [&](const std::string& change) { return NameOf(change) == name; })) {
            all.emplace_back(*variable);
        }
    }
    for (const std::string& change : command.environment) {
        if (change.find('=') != std::string::npos) all.push_back(change);
    }
    return all;
}

std::vector<char*> Pointers(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

// What the child needs, made before the fork: after it only system calls are safe.
struct Preparation {
    std::vector<std::string> words;
    std::vector<std::string> variables;
    std::vector<char*> arguments;
    std::vector<char*> environment;
    std::string folder;
    int log = -1;
    int orders = -1;
    int answers = -1;
    pid_t parent = getpid();
};

// Above the numbers that the child's own descriptors will take.
int OutOfTheWay(int descriptor) {
    return fcntl(descriptor, F_DUPFD, kAnswersNumber + 1);
}

[[noreturn]] void BecomeProgram(const Preparation& child) {
    // The kernel ends the child with the thread that made it; if that is gone already, at once.
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != child.parent) _exit(127);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    for (const int number : {SIGPIPE, SIGINT, SIGTERM, SIGHUP})
        signal(number, SIG_DFL);
    // Out of the terminal's group: an interrupt there is this program's to deal with.
    setsid();
    const int orders = OutOfTheWay(child.orders);
    const int answers = OutOfTheWay(child.answers);
    const int log = OutOfTheWay(child.log);
    const int nothing = open("/dev/null", O_RDONLY);
    if (orders < 0 || answers < 0 || log < 0 || nothing < 0) _exit(127);
    dup2(nothing, STDIN_FILENO);
    dup2(log, STDOUT_FILENO);
    dup2(log, STDERR_FILENO);
    dup2(orders, kOrdersNumber);
    dup2(answers, kAnswersNumber);
    syscall(SYS_close_range, kAnswersNumber + 1, ~0U, 0);
    if (chdir(child.folder.c_str()) != 0) _exit(127);
    execve(child.arguments.front(), child.arguments.data(), child.environment.data());
    _exit(127);
}

// What `poll` says of the descriptor within the time; 0 if nothing, -1 if the wait isn't wanted.
int Poll(int descriptor, short events, Clock::time_point deadline, const std::stop_token& stop) {
    for (;;) {
        if (stop.stop_requested()) return -1;
        const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::now());
        const milliseconds wait = std::clamp(left, milliseconds{0}, kStopLook);
        pollfd question{descriptor, events, 0};
        const int answer = poll(&question, 1, static_cast<int>(wait.count()));
        if (answer > 0) return question.revents;
        if (answer < 0 && errno != EINTR) return POLLERR;
        if (left <= milliseconds{0}) return 0;
    }
}

// A write to a pipe that nobody reads fails instead of ending this process.
class NoPipeSignal {
  public:
    NoPipeSignal() {
        sigemptyset(&pipe_);
        sigaddset(&pipe_, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &pipe_, &before_);
    }
    NoPipeSignal(const NoPipeSignal&) = delete;
    NoPipeSignal& operator=(const NoPipeSignal&) = delete;
    ~NoPipeSignal() {
        if (sigismember(&before_, SIGPIPE) == 0) {
            constexpr timespec kAtOnce{};
            while (sigtimedwait(&pipe_, nullptr, &kAtOnce) == -1 && errno == EINTR) {
            }
        }
        pthread_sigmask(SIG_SETMASK, &before_, nullptr);
    }

  private:
    sigset_t pipe_{};
    sigset_t before_{};
};

}  // namespace

class PipedProcess::State {
  public:
    State(int writing, int reading) : orders(writing), answers(reading) {}
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    ~State() {
        Pipe::Drop(orders);
        Pipe::Drop(answers);
    }
    int orders;
    int answers;
};

PipedProcess::PipedProcess() = default;

PipedProcess::~PipedProcess() {
    End(milliseconds{0});
}

bool PipedProcess::Start(const PipedCommand& command) {
    End(milliseconds{0});
    Pipe orders, answers;
    Preparation child;
    child.words = {command.program.string()};
    child.words.insert(child.words.end(), command.arguments.begin(), command.arguments.end());
    child.variables = Environment(command);
    child.arguments = Pointers(child.words);
    child.environment = Pointers(child.variables);
    child.folder = command.folder.string();
    child.log = open(command.log.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    if (child.log < 0) return false;
    const bool made = orders.Make() && answers.Make();
    child.orders = orders.ends[0];
    child.answers = answers.ends[1];
    const pid_t id = made ? fork() : -1;
    if (id == 0) BecomeProgram(child);
    close(child.log);
    if (id < 0) return false;
    id_ = id;
    state_ = std::make_unique<State>(orders.Take(1), answers.Take(0));
    // Whole orders are short; a full pipe must not hold this side.
    fcntl(state_->orders, F_SETFL, O_NONBLOCK);
    // A picture in one go.
    fcntl(state_->answers, F_SETPIPE_SZ, 1 << 19);
    return true;
}

PipeEnd PipedProcess::Write(std::string_view bytes, milliseconds patience,
                            const std::stop_token& stop) {
    if (!state_) return PipeEnd::kClosed;
    Wake();
    const NoPipeSignal quiet;
    const auto deadline = Clock::now() + patience;
    while (!bytes.empty()) {
        const int state = Poll(state_->orders, POLLOUT, deadline, stop);
        if (state < 0) return PipeEnd::kStopped;
        if (state == 0) return PipeEnd::kSilent;
        const ssize_t written = write(state_->orders, bytes.data(), bytes.size());
        if (written >= 0) {
            bytes.remove_prefix(static_cast<size_t>(written));
        } else if (errno != EINTR && errno != EAGAIN) {
            return PipeEnd::kClosed;
        }
    }
    return PipeEnd::kDone;
}

PipeEnd PipedProcess::Read(std::span<char> bytes, milliseconds patience,
                           const std::stop_token& stop) {
    if (!state_) return PipeEnd::kClosed;
    Wake();
    const auto deadline = Clock::now() + patience;
    while (!bytes.empty()) {
        const int state = Poll(state_->answers, POLLIN, deadline, stop);
        if (state < 0) return PipeEnd::kStopped;
        if (state == 0) return PipeEnd::kSilent;
        const ssize_t count = read(state_->answers, bytes.data(), bytes.size());
        if (count > 0) {
            bytes = bytes.subspan(static_cast<size_t>(count));
        } else if (count == 0 || errno != EINTR) {
            return PipeEnd::kClosed;
        }
    }
    return PipeEnd::kDone;
}

PipeEnd PipedProcess::AwaitBytes(milliseconds patience, const std::stop_token& stop) {
    if (!state_) return PipeEnd::kClosed;
    Wake();
    const int state = Poll(state_->answers, POLLIN, Clock::now() + patience, stop);
    if (state < 0) return PipeEnd::kStopped;
    if (state == 0) return PipeEnd::kSilent;
    return (state & POLLIN) != 0 ? PipeEnd::kDone : PipeEnd::kClosed;
}

void PipedProcess::Rest() {
    if (id_ > 0 && !resting_) resting_ = kill(static_cast<pid_t>(id_), SIGSTOP) == 0;
}

void PipedProcess::Wake() {
    if (resting_) kill(static_cast<pid_t>(id_), SIGCONT);
    resting_ = false;
}

void PipedProcess::End(milliseconds patience) {
    if (!state_) return;
    Wake();
    const auto id = static_cast<pid_t>(id_);
    Pipe::Drop(state_->orders);
    const auto deadline = Clock::now() + patience;
    // What it still writes must not hold it.
    while (patience > milliseconds{0} && Poll(state_->answers, POLLIN, deadline, {}) > 0) {
        char rest[4096];
        if (read(state_->answers, rest, sizeof rest) <= 0) break;
    }
    bool gone = false;
    while (!(gone = waitpid(id, nullptr, WNOHANG) != 0) && Clock::now() < deadline)
        std::this_thread::sleep_for(milliseconds{1});
    if (!gone) {
        kill(id, SIGKILL);
        while (waitpid(id, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
    state_.reset();
    id_ = -1;
}

}  // namespace bw
