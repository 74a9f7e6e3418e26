#include "shell/framework/background_tasks.h"

#include <algorithm>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

#include "support/crash_file.h"
#include "support/text.h"

namespace bw {
namespace {

// Often enough to look alive, seldom enough to cost nothing. Shorter tasks show no progress.
constexpr int kNewsInterval = 60;  // milliseconds

}  // namespace

class BackgroundTasks::Task : public TaskControl {
  public:
    Task(UiQueue& queue, Turn turn) : queue_(queue), turn_(std::move(turn)) {}

    // `atEnd` runs on the task's thread, last of all.
    void Run(Work work, std::function<void()> atEnd) {
        thread_ = std::jthread([this, work = std::move(work), atEnd = std::move(atEnd)] {
            const CrashStack crashStack;
            Guarded(work);
            atEnd();
        });
    }

    void Progress(TaskProgress progress) override {
        const std::lock_guard guard(lock_);
        news_ = std::move(progress);
        ++newsNumber_;
    }
    const std::atomic<bool>& Stop() const override { return stop_; }
    UiQueue& Queue() override { return queue_; }

    void AskToStop() { stop_ = true; }
    void Join() {
        if (thread_.joinable()) thread_.join();
    }
    bool OnList() const { return turn_ != nullptr; }
    Turn TakeTurn() { return std::move(turn_); }
    TaskProgress News() const {
        const std::lock_guard guard(lock_);
        return news_;
    }
    // True if there are news that this hasn't told of.
    bool TakeNews() {
        const std::lock_guard guard(lock_);
        return std::exchange(shownNumber_, newsNumber_) != newsNumber_;
    }
    // What ended the work before its time. Valid when the thread has ended.
    const std::u16string& Failure() const { return failure_; }
    void Fail(const std::exception& error) { failure_ = ToWide(error.what()); }

  private:
    // What is thrown must not end the program and with it the list.
    void Guarded(const Work& work) {
        try {
            work(*this);
        } catch (const std::exception& error) {
            Fail(error);
        } catch (...) {
            failure_ = u"?";
        }
    }

    UiQueue& queue_;
    Turn turn_;  // of a list task
    std::atomic<bool> stop_ = false;
    mutable std::mutex lock_;
    TaskProgress news_;
    size_t newsNumber_ = 0;
    size_t shownNumber_ = 0;
    std::u16string failure_;
    std::jthread thread_;  // last, so that it has ended when the rest goes
};

BackgroundTasks::BackgroundTasks(UiQueue& queue, std::function<void()> changed,
                                 std::function<void(std::u16string_view)> failed)
    : queue_(queue), changed_(std::move(changed)), failed_(std::move(failed)) {
    newsTimer_.setInterval(kNewsInterval);
    QObject::connect(&newsTimer_, &QTimer::timeout, [this] {
        bool news = false;
        for (const auto& task : tasks_)
            news |= task->TakeNews();
        if (news) Changed();
    });
}

BackgroundTasks::~BackgroundTasks() {
    queue_.Close();
    StopAll();
    changed_ = {};
    tasks_.clear();
}

void BackgroundTasks::GiveUp::operator()(BackgroundTasks* tasks) const {
    tasks->ClearBusy();
    tasks->Changed();
}

BackgroundTasks::Turn BackgroundTasks::TryBegin() {
    return Turn(std::exchange(taskBusy_, true) ? nullptr : this);
}

void BackgroundTasks::StartListTask(Turn turn, Work work, std::function<void()> finish) {
    Start(std::move(work), std::move(finish), std::move(turn));
}

void BackgroundTasks::StartFreeTask(Work work, std::function<void()> finish) {
    Start(std::move(work), std::move(finish), nullptr);
}

void BackgroundTasks::Start(Work work, std::function<void()> finish, Turn turn) {
    Task& task = *tasks_.emplace_back(std::make_unique<Task>(queue_, std::move(turn)));
    const auto atEnd = [this, &task, finish = std::move(finish)] {
        queue_.Post([this, &task, finish] { End(task, finish); });
    };
    try {
        task.Run(std::move(work), atEnd);
    } catch (const std::system_error& error) {  // no more threads to be had
        task.Fail(error);
        atEnd();
    }
    newsTimer_.start();
    Changed();
}

void BackgroundTasks::End(Task& task, const std::function<void()>& finish) {
    const auto place = std::ranges::find(tasks_, &task, &std::unique_ptr<Task>::get);
    const std::unique_ptr<Task> ended = std::move(*place);
    tasks_.erase(place);
    ended->Join();
    if (tasks_.empty()) newsTimer_.stop();
    // Told of below, with the rest.
    if (ended->TakeTurn().release() != nullptr) ClearBusy();
    if (!ended->Failure().empty() && failed_) failed_(ended->Failure());
    if (finish) finish();
    Changed();
}

void BackgroundTasks::ClearBusy() {
    taskBusy_ = false;
    for (std::function<void()>& work : std::exchange(waiting_, {}))
        queue_.Post(std::move(work));
}

void BackgroundTasks::WhenFree(std::function<void()> work) {
    if (taskBusy_) {
        waiting_.push_back(std::move(work));
    } else {
        work();
    }
}

TaskProgress BackgroundTasks::Progress() const {
    const auto listTask =
        std::ranges::find_if(tasks_, [](const auto& task) { return task->OnList(); });
    if (listTask != tasks_.end()) return (*listTask)->News();
    return tasks_.empty() ? TaskProgress{} : tasks_.back()->News();
}

void BackgroundTasks::StopAll() {
    for (const auto& task : tasks_)
        task->AskToStop();
}

void BackgroundTasks::Changed() const {
    if (changed_) changed_();
}

}  // namespace bw
