#include "shell/tasks/check_commands.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <iterator>
#include <thread>
#include <utility>

#include "builder/build_words.h"
#include "builder/layout/board_space.h"
#include "console/emulator_words.h"
#include "language/problem_text.h"
#include "shell/tasks/scratch_cart.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr auto kStopInterval = 50ms;
// Before that the first games tell too little of the others.
constexpr auto kGuessAfter = 2s;

// Hands a task's flag on to what waits for a token. Lives as long as the work does.
class StopFollower {
  public:
    StopFollower(const std::atomic<bool>& flag, std::stop_source stop)
        : thread_([&flag, stop = std::move(stop)](const std::stop_token& ended) mutable {
              while (!ended.stop_requested() && !flag)
                  std::this_thread::sleep_for(kStopInterval);
              if (flag) stop.request_stop();
          }) {}

  private:
    std::jthread thread_;
};

std::optional<std::chrono::seconds> TimeLeft(Clock::duration passed, size_t done, size_t total) {
    if (done == 0 || done >= total || passed < kGuessAfter) return std::nullopt;
    return std::chrono::ceil<std::chrono::seconds>(passed / done * (total - done));
}

GameList CheckedGames(const GameList& games) {
    GameList checked;
    std::ranges::copy_if(games, std::back_inserter(checked), &GameEntry::checked);
    return checked;
}

std::filesystem::path FileOf(const GameEntry& entry, const std::filesystem::path& base) {
    return AbsolutePath(TextPath(entry.path), base);
}

}  // namespace

// The task's thread has it until the task ends, but for what the window's thread sets before.
struct CheckCommands::Job {
    std::unique_ptr<Emulator> emulator;
    std::filesystem::path built;  // the cart that is checked; empty for one that is built for it
    CheckSubject subject{};
    std::vector<std::u16string> paths{};  // of the games, as the list has them
    BoardType board = BoardType::kCoolboy;
    Language language = Language::kEnglish;
    std::optional<BuildJob> build{};  // of a cart for this check alone
    std::stop_source stop{};
    bool begun = false;    // the window's thread alone
    bool stopped = false;  // by the user, or the end of the program
    CheckOutcome outcome{};
};

// Brings what was checked to the window.
class CheckCommands::Watch final : public CheckListener {
  public:
    Watch(CheckCommands& owner, std::shared_ptr<Job> job, TaskControl& control)
        : owner_(owner), job_(std::move(job)), control_(control) {}

    void Checked(const CheckedGame& game, size_t done, size_t total) override {
        const auto left = TimeLeft(Clock::now() - start_, done, total);
        std::u16string what =
            FormatText(LoadText(TextId::kCheckingGame, job_->language), game.name);
        if (left)
            what += FormatText(LoadText(TextId::kCheckTimeLeft, job_->language), TimeText(*left));
        control_.Progress({std::move(what), done, total});
        // A picture is a quarter of a megabyte: it is packed here, on this thread.
        auto one =
            std::make_shared<ReportGame>(ReportGame{game, PackedPicture(game.picture), true});
        one->game.picture = {};
        control_.Queue().Post([&owner = owner_, job = job_, one, done, left] {
            if (owner.running_ != job || one->game.index >= owner.report_.games.size()) return;
            const size_t index = one->game.index;
            one->game.name = owner.report_.games[index].game.name;
            owner.report_.games[index] = std::move(*one);
            owner.report_.done = done;
            owner.report_.left = left;
            owner.listener_.checked(index);
        });
    }

  private:
    CheckCommands& owner_;
    std::shared_ptr<Job> job_;
    TaskControl& control_;
    Clock::time_point start_ = Clock::now();
};

CheckCommands::CheckCommands(ListHost& host, const BuildCommands& builds, CheckServices services,
                             Listener listener)
    : host_(host), builds_(builds), services_(std::move(services)), listener_(std::move(listener)) {
    if (!services_.findEmulator) services_.findEmulator = FindEmulator;
    if (!services_.checkCart) services_.checkCart = CheckCart;
}

const BuiltCart* CheckCommands::UsableCart(const GameList& checked) const {
    const std::optional<BuiltCart>& built = builds_.Built();
    // A binary has no header that would tell its board.
    if (!built || built->format == RomFormat::kBinary) return nullptr;
    const BoardType coolboy = LoadBuildSettings(host_.Store()).CoolboyBoard();
    if (built->board != BoardType::kCoolgirl && built->board != coolboy) return nullptr;
    const bool same =
        std::ranges::equal(built->images, checked, {}, {},
                           [this](const GameEntry& entry) { return FileOf(entry, host_.Base()); });
    return same && IsAsBuilt(*built) ? &*built : nullptr;
}

// That of the last build, else that of the first button, if it runs all of the games; else the
// first one that does.
BoardType CheckCommands::BoardFor(const GameList& checked) const {
    const BoardType coolboy = LoadBuildSettings(host_.Store()).CoolboyBoard();
    const bool girl = builds_.Built() && builds_.Built()->board == BoardType::kCoolgirl;
    std::array boards{coolboy, BoardType::kCoolgirl};
    if (girl) std::ranges::reverse(boards);
    const auto runsAll = [&](BoardType board) {
        return std::ranges::all_of(checked, [board](const GameEntry& entry) {
            return GameSpan(entry, board).has_value();
        });
    };
    const auto found = std::ranges::find_if(boards, runsAll);
    return found != boards.end() ? *found : boards.front();
}

void CheckCommands::Check() {
    if (Running() || RefusesWhileBusy(host_)) return;
    const Language language = host_.CurrentLanguage();
    if (const auto problem = CheckBuildStart(host_.Editor().Games(), false, language)) {
        Warn(host_, problem->text);
        return;
    }
    std::unique_ptr<Emulator> emulator = services_.findEmulator();
    if (emulator == nullptr) {
        Warn(host_, NoEmulatorText(language));
        return;
    }
    GameList checked = CheckedGames(host_.Editor().Games());
    const BuiltCart* cart = UsableCart(checked);
    Start(std::move(emulator), cart, std::move(checked));
}

void CheckCommands::FollowBuild(bool wanted) {
    const BuiltCart& built = *builds_.Built();
    if (Running()) {
        if (wanted || running_->built == built.file) running_->stop.request_stop();
        again_ = wanted;
        return;
    }
    if (!wanted) return;
    std::unique_ptr<Emulator> emulator = services_.findEmulator();
    if (emulator == nullptr) {
        host_.Tell(NoEmulatorText(host_.CurrentLanguage()));
        return;
    }
    GameList checked = CheckedGames(host_.Editor().Games());
    const BuiltCart* cart = UsableCart(checked);
    Start(std::move(emulator), cart, std::move(checked));
}

void CheckCommands::Start(std::unique_ptr<Emulator> emulator, const BuiltCart* cart,
                          GameList checked) {
    const auto job = std::make_shared<Job>();
    job->emulator = std::move(emulator);
    job->language = host_.CurrentLanguage();
    job->board = cart != nullptr ? cart->board : BoardFor(checked);
    for (const GameEntry& entry : checked) {
        job->subject.images.push_back(FileOf(entry, host_.Base()));
        job->subject.names.push_back(entry.name);
        job->paths.push_back(entry.path);
    }
    if (cart != nullptr) {
        job->built = cart->file;
        job->subject.cart = cart->file;
    } else {
        job->build.emplace(host_);
    }
    running_ = job;
    host_.Tell({});
    host_.Tasks().StartFreeTask(
        [this, job](TaskControl& control) {
            Run(job, control);
            job->stopped = control.Stop();
        },
        [this, job] { End(*job); });
}

void CheckCommands::Run(const std::shared_ptr<Job>& job, TaskControl& control) {
    const StopFollower follower(control.Stop(), job->stop);
    control.Progress({LoadText(TextId::kCheckStarts, job->language), 0, 0});
    std::optional<ScratchCart> scratch;
    if (job->build) {
        scratch.emplace();
        if (!scratch->Build(*job->build, job->board, control)) return;
        job->subject.cart = scratch->File();
    }
    const FileResult<CartTables> tables = ReadCart(job->subject.cart);
    if (!tables) {
        const FileProblem& problem = tables.Problem();
        job->outcome.problem = problem.kind == FileProblem::Kind::kWrongKind
                                   ? LoadText(TextId::kNoCartTables, job->language)
                                   : ProblemText(problem, job->language);
        return;
    }
    job->subject.tables = *tables;
    control.Queue().Post([this, job] { Begin(*job); });
    Watch watch(*this, job, control);
    job->outcome = services_.checkCart(*job->emulator, job->subject,
                                       {.keepPictures = false, .language = job->language}, watch,
                                       job->stop.get_token());
}

void CheckCommands::Begin(Job& job) {
    job.begun = true;
    paths_ = job.paths;
    report_ = CheckReport{.board = job.board, .state = CheckReport::State::kRunning, .games = {}};
    report_.games.resize(paths_.size());
    for (uint32_t index = 0; index < report_.games.size(); ++index) {
        report_.games[index].game.index = index;
        report_.games[index].game.name = job.subject.names[index];
    }
    listener_.begun();
}

void CheckCommands::End(Job& job) {
    running_.reset();
    const bool again = std::exchange(again_, false) && !job.stopped;
    if (job.begun) {
        const bool whole = report_.done == report_.games.size();
        report_.state = whole ? CheckReport::State::kDone : CheckReport::State::kStopped;
        report_.left.reset();
        report_.problem = job.outcome.problem;
        host_.Tell(StateLine(report_, host_.CurrentLanguage()));
        listener_.ended();
    } else if (job.stopped || job.stop.stop_requested()) {
        host_.Tell(BuildStoppedText(job.language));
    } else if (!job.outcome.problem.empty()) {
        Warn(host_, job.outcome.problem);
    } else {
        host_.Tell(LoadText(TextId::kCheckNoCart, job.language));
        if (job.build) ShowUnfit(host_, *job.build);
    }
    if (again) FollowBuild(true);
}

std::optional<size_t> CheckCommands::RowInList(size_t game) const {
    // A file may be in the list several times, as it was in the cart.
    auto before =
        std::count(paths_.begin(), paths_.begin() + static_cast<ptrdiff_t>(game), paths_[game]);
    std::optional<size_t> row;
    const GameList& games = host_.Editor().Games();
    for (size_t i = 0; i < games.size() && before >= 0; ++i) {
        if (games[i].path != paths_[game]) continue;
        row = i;
        --before;
    }
    return row;
}

}  // namespace bw
