// What the flow of updates and notices wants of the window that it belongs to.
#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <optional>

#include "update/update_outcome.h"

namespace bw {

enum class UpdateTimer : int { kCheck = 169, kNotice = 173 };

// The side of a task that runs on a thread of its own.
class UpdateTask {
  public:
    virtual ~UpdateTask() = default;
    // Set when the program ends.
    virtual const std::atomic<bool>& Stop() const = 0;
    // Runs on the window's thread, later; dropped when the program ends.
    virtual void Publish(std::function<void()> work) = 0;
};

// All calls on the window's thread; the functions handed over run there, too, but for `work`.
class UpdateHost {
  public:
    virtual ~UpdateHost() = default;

    // Runs `work` on a thread of its own and then `finish`, unless the program ends before.
    virtual void StartTask(std::function<void(UpdateTask&)> work, std::function<void()> finish) = 0;
    // Ticks again and again, until it is killed; set again, from the beginning.
    virtual void SetTimer(UpdateTimer timer, std::chrono::milliseconds interval) = 0;
    virtual void KillTimer(UpdateTimer timer) = 0;
    virtual std::chrono::milliseconds Since1970() const = 0;

    // Messages to the window, which act when it comes round to them: there is an offer to show, a
    // program to install, a notice to show.
    virtual void PostOffer() = 0;
    virtual void PostReady() = 0;
    virtual void PostNotice() = 0;

    // The user wanted to know, and the host gave no answer.
    virtual void TellNoAnswer() = 0;
    // The window's title: the usual one, or how much of the new program is there.
    virtual void ShowTitle(std::optional<double> percent) = 0;
    // Something came of an attempt to install that the user should know of; `asked` if it was the
    // user's own wish.
    virtual void TellOutcome(const UpdateOutcome& outcome, bool asked) = 0;
};

}  // namespace bw
