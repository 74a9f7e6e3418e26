#include <QSocketNotifier>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

#include "app/end_signals.h"

namespace bw {
namespace {

constexpr std::array kSignals{SIGTERM, SIGINT, SIGHUP};

// A signal handler gets nothing handed in: where it writes to must be global.
std::atomic<int> writeEnd = -1;  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

}  // namespace

// A handler may do next to nothing, so it sends the number through a pipe that the event loop
// reads.
class EndSignals::State {
  public:
    explicit State(std::function<void(int)> end) : end_(std::move(end)) {
        if (pipe2(pipe_.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
        writeEnd = pipe_[1];
        notifier_ = std::make_unique<QSocketNotifier>(pipe_[0], QSocketNotifier::Read);
        QObject::connect(notifier_.get(), &QSocketNotifier::activated, [this] { Read(); });
        for (size_t i = 0; i < kSignals.size(); ++i) {
            struct sigaction action {};
            action.sa_handler = &State::OnSignal;
            action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
            sigaction(kSignals[i], nullptr, &old_[i]);
            if (old_[i].sa_handler != SIG_IGN) sigaction(kSignals[i], &action, nullptr);
        }
    }
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    ~State() {
        if (pipe_[0] == -1) return;
        for (size_t i = 0; i < kSignals.size(); ++i)
            sigaction(kSignals[i], &old_[i], nullptr);
        notifier_.reset();
        writeEnd = -1;
        close(pipe_[0]);
        close(pipe_[1]);
    }

  private:
    static void OnSignal(int signal) {
        const int saved = errno;
        const auto number = static_cast<unsigned char>(signal);
        [[maybe_unused]] const ssize_t done = write(writeEnd, &number, 1);
        errno = saved;
    }
    void Read() {
        unsigned char number = 0;
        while (read(pipe_[0], &number, 1) == 1)
            end_(number);
    }

    std::function<void(int)> end_;
    std::array<int, 2> pipe_{-1, -1};
    std::array<struct sigaction, kSignals.size()> old_{};
    std::unique_ptr<QSocketNotifier> notifier_;
};

EndSignals::EndSignals(std::function<void(int)> end)
    : state_(std::make_unique<State>(std::move(end))) {}

EndSignals::~EndSignals() = default;

}  // namespace bw
