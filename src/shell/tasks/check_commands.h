// The check of a cart in the emulator, from the window: of the one that was built last, or of one
// that is built for it from the checked games.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "console/cart_check.h"
#include "shell/dialogs/check_report.h"
#include "shell/tasks/build_commands.h"
#include "shell/tasks/list_host.h"

namespace bw {

// What a check stands on; null for the real ones, FindEmulator and CheckCart.
struct CheckServices {
    std::function<std::unique_ptr<Emulator>()> findEmulator = nullptr;
    std::function<CheckOutcome(const Emulator&, const CheckSubject&, const CheckOptions&,
                               CheckListener&, std::stop_token)>
        checkCart = nullptr;
};

class CheckCommands {
  public:
    // Told on the window's thread.
    struct Listener {
        std::function<void()> begun;               // the report is a new one
        std::function<void(size_t game)> checked;  // of the report
        std::function<void()> ended;
    };

    // `builds` must live longer.
    CheckCommands(ListHost& host, const BuildCommands& builds, CheckServices services,
                  Listener listener);

    // Runs beside anything else, on a snapshot of the list. Refuses while a task has the list and
    // without an emulator, which the user is told.
    void Check();
    // After a build: a check of a file that was built anew ends. `wanted`: then the new cart is
    // checked, without a message where there is no emulator.
    void FollowBuild(bool wanted);
    bool Running() const { return running_ != nullptr; }

    // Of the last check that has begun.
    const CheckReport& Report() const { return report_; }
    // What the list calls the file of a game of the report.
    const std::u16string& PathInList(size_t game) const { return paths_[game]; }
    // Its row in the list, if it is still there.
    std::optional<size_t> RowInList(size_t game) const;

  private:
    struct Job;
    class Watch;

    // The last built cart, if it is what a build of the checked games would make again.
    const BuiltCart* UsableCart(const GameList& checked) const;
    BoardType BoardFor(const GameList& checked) const;
    std::unique_ptr<Emulator> Emulate() const;
    void Start(std::unique_ptr<Emulator> emulator, const BuiltCart* cart, GameList checked);
    void Run(const std::shared_ptr<Job>& job, TaskControl& control);
    void Begin(Job& job);
    void End(Job& job);

    ListHost& host_;
    const BuildCommands& builds_;
    CheckServices services_;
    Listener listener_;
    CheckReport report_;
    std::vector<std::u16string> paths_;  // of the report's games
    std::shared_ptr<Job> running_;
    bool again_ = false;  // another one is to begin at its end
};

}  // namespace bw
