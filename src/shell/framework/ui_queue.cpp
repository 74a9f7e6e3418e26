#include "shell/framework/ui_queue.h"

#include <QCoreApplication>
#include <QEvent>
#include <utility>

namespace bw {

UiQueue::~UiQueue() {
    Close();
}

void UiQueue::Post(std::function<void()> work) {
    const std::lock_guard guard(lock_);
    if (closed_) return;
    waiting_.push_back(std::move(work));
    // Posted under the lock, so that the queue can't be gone in between.
    QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

void UiQueue::Close() {
    std::deque<std::function<void()>> dropped;
    const std::lock_guard guard(lock_);
    closed_ = true;
    // Destroyed outside the lock: that ends the waiting of Call().
    dropped.swap(waiting_);
}

bool UiQueue::event(QEvent* event) {
    std::function<void()> work;
    {
        // Before the event is looked at, since another thread has made it.
        const std::lock_guard guard(lock_);
        if (event->type() != QEvent::User) return QObject::event(event);
        if (waiting_.empty()) return true;
        work = std::move(waiting_.front());
        waiting_.pop_front();
    }
    // It may run events of its own, and may end the queue: nothing here is touched after it.
    work();
    return true;
}

}  // namespace bw
