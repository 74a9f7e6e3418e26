// Work beside the window: one task on the list at a time, and others that don't touch it.
#pragma once

#include <atomic>
#include <functional>
#include <list>
#include <memory>
#include <string>
#include <thread>

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
    // `changed` is told on the window's thread that Busy(), Progress() or AnyRunning() differ.
    BackgroundTasks(UiQueue& queue, std::function<void()> changed);
    // Stops and joins all; the queue is closed first, so that nobody waits for an answer.
    ~BackgroundTasks();

    // The one flag that keeps list tasks apart. Commands that would change the list read it first.
    std::atomic<bool>& TaskBusy() { return taskBusy_; }
    bool AnyRunning() const;

    // Starts `work` on a thread of its own and then calls `finish` on the window's thread, when
    // TaskBusy is clear again (on every path). The caller has set TaskBusy, by TryBegin().
    using Work = std::function<void(TaskControl&)>;
    void StartListTask(Work work, std::function<void()> finish);
    // A task that neither reads nor sets TaskBusy.
    void StartFreeTask(Work work, std::function<void()> finish);

    // Sets TaskBusy; false if it was set.
    bool TryBegin() { return !taskBusy_.exchange(true); }
    // Clears TaskBusy of a TryBegin() that no task followed.
    void GiveUp();

    // The newest news of the list task, or of the free task that began last.
    TaskProgress Progress() const;
    // Asks all tasks to stop; returns at once.
    void StopAll();

  private:
    class Task;
    void Start(Work work, std::function<void()> finish, bool ownsBusy);

    UiQueue& queue_;
    std::function<void()> changed_;
    std::atomic<bool> taskBusy_ = false;
    std::list<std::unique_ptr<Task>> tasks_;
};

}  // namespace bw
