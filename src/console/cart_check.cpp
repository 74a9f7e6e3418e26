#include "console/cart_check.h"

#include <algorithm>
#include <memory>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

#include "console/game_check.h"
#include "console/scratch_folder.h"

namespace bw {
namespace {

// Games in a row that end their emulator, each of them twice, before the check is given up.
constexpr uint32_t kMostFailures = 5;

std::vector<uint32_t> Selection(const CheckSubject& subject, const CheckOptions& options) {
    const auto count = static_cast<uint32_t>(subject.tables.games.size());
    std::vector<uint32_t> indices = options.only;
    for (uint32_t i = 0; options.only.empty() && i < count; ++i)
        indices.push_back(i);
    std::ranges::sort(indices);
    indices.erase(std::unique(indices.begin(), indices.end()), indices.end());
    std::erase_if(indices, [&](uint32_t index) { return index >= count; });
    return indices;
}

class CartCheck {
  public:
    CartCheck(const Emulator& emulator, const CheckSubject& subject, const CheckOptions& options,
              CheckListener& listener, const std::stop_token& stop)
        : emulator_(emulator),
          subject_(subject),
          options_(options),
          listener_(listener),
          wanted_(Selection(subject, options)),
          passOn_(stop, [this] { stop_.request_stop(); }) {
        outcome_.board = subject.tables.board;
        outcome_.emulator = emulator.Name();
        words_.emplace(options.language, outcome_.board, outcome_.emulator);
    }

    CheckOutcome Run(const std::stop_token& stop) {
        const size_t cores = std::max(1u, std::thread::hardware_concurrency());
        const size_t jobs =
            std::min(wanted_.size(), options_.jobs == 0 ? cores : size_t{options_.jobs});
        {
            std::vector<std::jthread> workers;
            try {
                for (size_t i = 1; i < jobs; ++i)
                    workers.emplace_back([this] { Work(); });
            } catch (const std::system_error&) {
                // No more threads to be had: those that started do the work.
            }
            Work();
        }
        std::ranges::sort(outcome_.games, {}, &CheckedGame::index);
        outcome_.stopped = stop.stop_requested() && outcome_.games.size() < wanted_.size();
        return std::move(outcome_);
    }

  private:
    // An emulator that shows the cart's menu, and what belongs to it.
    struct Station {
        std::unique_ptr<Console> console;
        MenuDriver menu;
    };

    ConsoleStart StartOf(const std::filesystem::path& rom) const {
        ConsoleStart start;
        start.rom = rom;
        start.stop = stop_.get_token();
        return start;
    }

    ConsoleResult<std::unique_ptr<Station>> Open() const {
        ConsoleResult<std::unique_ptr<Console>> console = emulator_.Start(StartOf(subject_.cart));
        if (!console) return console.Problem();
        Console& running = **console;
        auto station = std::make_unique<Station>(
            Station{std::move(*console), MenuDriver(running, subject_.tables.ownProgram)});
        if (const ConsoleResult<> booted = station->menu.Boot(); !booted) return booted.Problem();
        return station;
    }

    void Work() {
        const ScratchFolder scratch("check");
        AlonePlayer alone(emulator_, StartOf({}));
        std::unique_ptr<Station> station;
        for (auto index = Take(); index; index = Take()) {
            ConsoleResult<CheckedGame> game = ConsoleProblem{};
            for (int attempt = 0; attempt < 2 && !game; ++attempt) {
                game = CheckOne(*index, station, alone, scratch);
                if (!game) station.reset();
            }
            if (stop_.stop_requested()) return;
            if (!game && !GoesOnWithout(game.Problem())) return;
            Deliver(game ? std::move(*game) : NotRun(*index, game.Problem()), bool{game});
        }
    }

    ConsoleResult<CheckedGame> CheckOne(uint32_t index, std::unique_ptr<Station>& station,
                                        AlonePlayer& alone, const ScratchFolder& scratch) const {
        if (!station) {
            ConsoleResult<std::unique_ptr<Station>> opened = Open();
            if (!opened) return opened.Problem();
            station = std::move(*opened);
        }
        return CheckGame({subject_, options_, *words_, *station->console, station->menu, alone,
                          scratch.Path() / "alone.nes"},
                         index);
    }

    std::optional<uint32_t> Take() {
        const std::scoped_lock hold(mutex_);
        if (stop_.stop_requested() || next_ == wanted_.size()) return std::nullopt;
        return wanted_[next_++];
    }

    CheckedGame NotRun(uint32_t index, const ConsoleProblem& problem) const {
        CheckedGame game = UncheckedGame(subject_, index);
        game.notRun = words_->NotRun(problem);
        return game;
    }

    // False if the emulator never works, or not any more.
    bool GoesOnWithout(const ConsoleProblem& problem) {
        const std::scoped_lock hold(mutex_);
        const bool never = !worked_ && (problem.kind == ConsoleProblem::Kind::kNotStarted ||
                                        problem.kind == ConsoleProblem::Kind::kRefused ||
                                        problem.kind == ConsoleProblem::Kind::kSilent);
        if (!never && ++failures_ < kMostFailures) return true;
        if (outcome_.problem.empty()) outcome_.problem = words_->Broken(problem);
        stop_.request_stop();
        return false;
    }

    void Deliver(CheckedGame game, bool worked) {
        const std::scoped_lock hold(mutex_);
        if (worked) {
            worked_ = true;
            failures_ = 0;
        }
        listener_.Checked(game, outcome_.games.size() + 1, wanted_.size());
        if (!options_.keepPictures) game.picture = {};
        outcome_.games.push_back(std::move(game));
    }

    const Emulator& emulator_;
    const CheckSubject& subject_;
    const CheckOptions& options_;
    CheckListener& listener_;
    const std::vector<uint32_t> wanted_;
    std::optional<FindingWords> words_;
    std::stop_source stop_;  // the caller's stop, or the end of all hope
    std::stop_callback<std::function<void()>> passOn_;

    std::mutex mutex_;  // of what follows
    size_t next_ = 0;
    bool worked_ = false;  // some game was run to its end
    uint32_t failures_ = 0;
    CheckOutcome outcome_;
};

}  // namespace

bool CheckOutcome::HasErrors() const {
    return std::ranges::any_of(games, &CheckedGame::HasErrors);
}

CheckOutcome CheckCart(const Emulator& emulator, const CheckSubject& subject,
                       const CheckOptions& options, CheckListener& listener,
                       const std::stop_token& stop) {
    return CartCheck(emulator, subject, options, listener, stop).Run(stop);
}

}  // namespace bw
