// The way from background threads to the window's thread.
#pragma once

#include <QObject>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace bw {

// Runs functions on the thread that made the queue, in the order of posting, when that thread comes
// round to its events. What is handed over passes through a mutex of ours, not through Qt. The
// functions throw nothing. Whoever posts must have ended before the queue is destroyed.
class UiQueue : public QObject {
  public:
    UiQueue() = default;
    // Whatever still waits is dropped, as if by Close().
    ~UiQueue() override;

    // From any thread. Dropped if the queue is closed.
    void Post(std::function<void()> work);

    // From a background thread only (the queue's own would wait for itself): runs `ask` on the
    // window's thread and waits for its answer. Nothing if the queue is closed before `ask` begins.
    template <typename Ask>
    auto Call(Ask ask) -> std::optional<decltype(ask())> {
        struct Exchange {
            std::mutex lock;
            std::condition_variable changed;
            std::optional<decltype(ask())> answer;
            bool ended = false;
        };
        const auto exchange = std::make_shared<Exchange>();
        // The queue drops what it can't run; the last copy of this then ends the waiting.
        auto ending = std::shared_ptr<void>(nullptr, [exchange](void*) {
            const std::lock_guard guard(exchange->lock);
            exchange->ended = true;
            exchange->changed.notify_all();
        });
        Post([ask = std::move(ask), exchange, ending = std::move(ending)]() mutable {
            auto answer = ask();
            const std::lock_guard guard(exchange->lock);
            exchange->answer = std::move(answer);
        });
        std::unique_lock guard(exchange->lock);
        exchange->changed.wait(guard, [&] { return exchange->ended; });
        return std::move(exchange->answer);
    }

    // No more work is taken, and none that waits is run; work at hand ends as usual. On the
    // window's thread.
    void Close();

  protected:
    bool event(QEvent* event) override;

  private:
    std::mutex lock_;
    std::deque<std::function<void()>> waiting_;
    bool closed_ = false;
};

}  // namespace bw
