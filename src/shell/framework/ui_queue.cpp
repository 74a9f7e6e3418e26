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
    dropped.swap(waiting_);
}

bool UiQueue::event(QEvent* event) {
    if (event->type() != QEvent::User) return QObject::event(event);
    std::function<void()> work;
    {
        const std::lock_guard guard(lock_);
        if (waiting_.empty()) return true;
        work = std::move(waiting_.front());
        waiting_.pop_front();
    }
    work();
    return true;
}

}  // namespace bw
