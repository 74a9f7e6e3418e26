// Work beside the window: one task on the list at a time, and others that don't touch it.
#pragma once

#include <QTimer>
#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "shell/framework/ui_queue.h"

namespace bw {

// What a running task says of itself; for the status bar.
struct TaskProgress {
    std::u16string what;  // such as the stage and the game at hand
    size_t done = 0;
    size_t total = 0;  // 0 if nobody knows
};

// The task's side. Lives as long as the task's thread runs.
class TaskControl {
  public:
    virtual ~TaskControl() = default;
    // Cheap enough for every row; only the newest news reaches the window.
    virtual void Progress(TaskProgress progress) = 0;
    // Set when the user, or the end of the program, wants the task to stop.
    virtual const std::atomic<bool>& Stop() const = 0;
    // Runs functions on the window's thread; see UiQueue.
    virtual UiQueue& Queue() = 0;
};

class BackgroundTasks {
  public:
    // `changed` is told on the window's thread that TaskBusy(), Progress() or AnyRunning() differ;
    // news of progress a few times a second. `failed` is told what an exception said that ended a
    // task's work, before the task's `finish`.
    explicit BackgroundTasks(UiQueue& queue, std::function<void()> changed = {},
                             std::function<void(std::u16string_view)> failed = {});
    BackgroundTasks(const BackgroundTasks&) = delete;
    BackgroundTasks& operator=(const BackgroundTasks&) = delete;
    // Stops and joins all; the queue is closed first, so that nobody waits for an answer. No
    // `finish` is called any more.
    ~BackgroundTasks();

    // The one flag that keeps list tasks apart. Commands that would change the list read it first.
    bool TaskBusy() const { return taskBusy_; }
    // Sets TaskBusy while somebody has it: whoever prepares a list task, then the task. Not to
    // outlive the tasks.
    struct GiveUp {
        void operator()(BackgroundTasks* tasks) const;
    };
    using Turn = std::unique_ptr<BackgroundTasks, GiveUp>;
    // Null if TaskBusy is set.
    [[nodiscard]] Turn TryBegin();

    bool AnyRunning() const { return !tasks_.empty(); }

    // Starts `work` on a thread of its own and then calls `finish` on the window's thread, when
    // TaskBusy is clear again (on every path).
    using Work = std::function<void(TaskControl&)>;
    void StartListTask(Turn turn, Work work, std::function<void()> finish);
    // A task that neither reads nor sets TaskBusy.
    void StartFreeTask(Work work, std::function<void()> finish);

    // Calls `work` on the window's thread as soon as TaskBusy is clear: now or after the task at
    // hand. Another task may have begun by then if several wait.
    void WhenFree(std::function<void()> work);

    // The newest news of the list task, or of the free task that began last; empty if none runs.
    TaskProgress Progress() const;
    // Asks all tasks to stop; returns at once.
    void StopAll();

  private:
    class Task;
    void Start(Work work, std::function<void()> finish, Turn turn);
    void End(Task& task, const std::function<void()>& finish);
    void ClearBusy();
    void Changed() const;

    UiQueue& queue_;
    std::function<void()> changed_;
    std::function<void(std::u16string_view)> failed_;
    bool taskBusy_ = false;  // the window's thread alone looks at it
    std::vector<std::unique_ptr<Task>> tasks_;
    std::vector<std::function<void()>> waiting_;
    QTimer newsTimer_;  // runs while a task does
};

}  // namespace bw
