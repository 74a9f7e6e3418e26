#include "cli/check_command.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <stop_token>
#include <thread>
#include <utility>

#include "builder/build_driver.h"
#include "builder/build_words.h"
#include "builder/output/rom_writer.h"
#include "builder/tables/cart_file.h"
#include "builder/tables/cart_tables.h"
#include "cli/json.h"
#include "cli/making_command.h"
#include "cli/report.h"
#include "cli/written_files.h"
#include "console/cart_check.h"
#include "console/contact_sheet.h"
#include "console/emulator_words.h"
#include "console/scratch_folder.h"
#include "language/problem_text.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

using namespace std::chrono_literals;

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;
constexpr int kNoEmulatorFound = 3;

std::string CheckJson(const CheckOutcome& outcome) {
    Json json;
    json.BeginObject();
    json.Utf8("board", BoardName(outcome.board));
    json.Utf8("emulator", outcome.emulator);
    json.BeginArray("games");
    for (const CheckedGame& game : outcome.games) {
        json.BeginObject();
        json.Number("index", game.index);
        json.String("name", game.name);
        json.String("path", PathText(game.path));
        if (!game.notRun.empty()) json.String("notRun", game.notRun);
        json.BeginArray("findings");
        for (const CheckFinding& finding : game.findings) {
            json.BeginObject();
            json.Utf8("kind", std::string(FindingKindName(finding.kind)));
            json.Utf8("severity", finding.severity == FindingSeverity::kError ? "error" : "note");
            json.String("text", finding.text);
            json.EndObject();
        }
        json.EndArray();
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
    return json.Take();
}

// The words for people, and how far it is.
class CheckTeller : public CheckListener {
  public:
    CheckTeller(TerminalUser& user, Language language) : user_(user), language_(language) {}

    void Checked(const CheckedGame& game, size_t done, size_t total) override {
        if (!game.notRun.empty()) {
            user_.Error(FormatText(Text(TextId::kGameUnchecked), game.index + 1,
                                   VisibleText(game.name), game.notRun));
        } else {
            user_.Detail(FormatText(u"%d %s", game.index + 1, VisibleText(game.name)));
        }
        std::u16string line = FormatText(Text(TextId::kCheckingGames), done, total);
        const auto passed = Clock::now() - start_;
        const auto left = std::chrono::ceil<std::chrono::seconds>(passed * (total - done) / done);
        line += u", " + FormatText(Text(TextId::kTimeLeft), left / 1min, (left % 1min) / 1s);
        user_.Progress(line);
    }

    std::string Table(const CheckOutcome& outcome) const {
        std::u16string table;
        for (const CheckedGame& game : outcome.games) {
            for (const CheckFinding& finding : game.findings) {
                const bool error = finding.severity == FindingSeverity::kError;
                table += FormatText(Text(TextId::kGameFinding), game.index + 1,
                                    VisibleText(game.name), FindingKindName(finding.kind),
                                    Text(error ? TextId::kFindingIsError : TextId::kFindingIsNote),
                                    VisibleText(finding.text)) +
                         u"\n";
            }
        }
        return ToUtf8(table);
    }

    std::u16string Summary(const CheckOutcome& outcome) const {
        const auto count = [&](const auto& is) { return std::ranges::count_if(outcome.games, is); };
        const auto unchecked = count([](const CheckedGame& game) { return !game.notRun.empty(); });
        const auto errors = count([](const CheckedGame& game) { return game.HasErrors(); });
        const auto notes = count(
            [](const CheckedGame& game) { return !game.findings.empty() && !game.HasErrors(); });
        return FormatText(Text(TextId::kGamesChecked), outcome.games.size() - unchecked,
                          outcome.emulator, errors, notes, unchecked);
    }

  private:
    using Clock = std::chrono::steady_clock;
    std::u16string Text(TextId id) const { return LoadText(id, language_); }

    TerminalUser& user_;
    Language language_;
    Clock::time_point start_ = Clock::now();
};

// Tells a check that the user wants it to end.
class EndWatch {
  public:
    explicit EndWatch(const TerminalUser& user)
        : thread_([this, &user](const std::stop_token& over) {
              while (!over.stop_requested() && !user.Cancelled())
                  std::this_thread::sleep_for(50ms);
              if (user.Cancelled()) stop_.request_stop();
          }) {}
    std::stop_token Token() const { return stop_.get_token(); }

  private:
    std::stop_source stop_;
    std::jthread thread_;
};

// The part that doesn't ask where the cart comes from.
class CartChecking {
  public:
    CartChecking(const Arguments& arguments, TerminalUser& user, Language language)
        : arguments_(arguments), user_(user), language_(language), emulator_(FindEmulator()) {}

    bool HasEmulator() {
        if (emulator_) return true;
        user_.Error(NoEmulatorText(language_));
        return false;
    }

    int Run(const CheckSubject& subject) {
        const size_t games = subject.tables.games.size();
        for (const uint32_t index : arguments_.checking.only) {
            if (index < games) continue;
            user_.Error(FormatText(Text(TextId::kNoSuchGame), index + 1, games));
            return kWrongUsage;
        }
        CheckTeller teller(user_, language_);
        const CheckOutcome outcome = Outcome(subject, teller);
        if (outcome.stopped) {
            user_.Note(Text(TextId::kCheckStopped));
            return kFailed;
        }
        if (!outcome.problem.empty()) user_.Error(outcome.problem);
        if (!Tell(outcome, teller) || !outcome.problem.empty() || outcome.HasErrors()) {
            return kFailed;
        }
        const bool all = std::ranges::all_of(
            outcome.games, [](const CheckedGame& game) { return game.notRun.empty(); });
        return all ? kDone : kFailed;
    }

  private:
    std::u16string Text(TextId id) const { return LoadText(id, language_); }

    CheckOutcome Outcome(const CheckSubject& subject, CheckTeller& teller) const {
        const EndWatch end(user_);
        const CheckOptions options{.jobs = arguments_.checking.jobs,
                                   .frames = arguments_.checking.frames,
                                   .only = arguments_.checking.only,
                                   .keepPictures = !arguments_.checking.sheet.empty(),
                                   .language = language_};
        return CheckCart(*emulator_, subject, options, teller, end.Token());
    }

    bool Tell(const CheckOutcome& outcome, const CheckTeller& teller) {
        FileResult<> told = PrintOut(arguments_.json ? CheckJson(outcome) : teller.Table(outcome));
        if (!arguments_.checking.sheet.empty()) {
            const std::filesystem::path file = SheetFile(arguments_);
            const FileResult<> written = WriteContactSheet(outcome.games, file);
            if (written) user_.NoteWritten(file);
            told.Join(written);
        }
        if (!told) user_.Error(ProblemText(told.Problem(), language_));
        if (outcome.problem.empty()) user_.Note(teller.Summary(outcome));
        return static_cast<bool>(told);
    }

    const Arguments& arguments_;
    TerminalUser& user_;
    Language language_;
    std::unique_ptr<Emulator> emulator_;
};

// Games that are built into a cart which goes with the check.
class BuiltCheck : MakingCommand {
  public:
    explicit BuiltCheck(const Arguments& arguments) : MakingCommand(arguments, {}) {}

    int Run() {
        std::atomic<bool> taskBusy = false;
        CartChecking checking(arguments_, user_, language_);
        if (!Gathered() || !Collected() || !LoadScreen() || !NamesGames() || !UsesAllOptions() ||
            !MayStartBuild(Games(), taskBusy, user_)) {
            return kFailed;
        }
        if (!checking.HasEmulator()) return kNoEmulatorFound;
        const BuildOutcome built = BuildRom(Context(), arguments_.board, taskBusy);
        if (!built.done) {
            if (user_.Cancelled()) user_.Note(BuildStoppedText(language_));
            TellWayOut();
            return kFailed;
        }
        FileResult<CartTables> tables = ReadCart(built.output);
        if (!tables) {
            user_.Error(NoCartText(tables.Problem(), language_));
            return kFailed;
        }
        CheckSubject subject{.cart = built.output, .tables = std::move(*tables)};
        for (const MulticartItem& item : built.layout.items) {
            if (item.isMenu == 0) subject.images.push_back(item.path);
        }
        subject.names = built.names;
        return checking.Run(subject);
    }
};

int CheckFile(const Arguments& arguments, const std::filesystem::path& cart, CartTables tables) {
    const Language language = SystemLanguage();
    TerminalUser user(arguments, language);
    const std::string& building = arguments.checking.building;
    if (!building.empty() &&
        !user.Warn(FormatText(LoadText(TextId::kOptionForBuilding, language), building))) {
        return kFailed;
    }
    if (tables.format == RomFormat::kBinary) {
        user.Error(FormatText(LoadText(TextId::kNoBareRom, language), VisibleText(PathText(cart))));
        return kFailed;
    }
    if (TellProblem(user, FindOverwritten(arguments, {}, language)) != kDone) return kFailed;
    CartChecking checking(arguments, user, language);
    if (!checking.HasEmulator()) return kNoEmulatorFound;
    return checking.Run({.cart = cart, .tables = std::move(tables)});
}

}  // namespace

int Check(const Arguments& arguments) {
    RemoveAbandonedWorkFolders();
    CancelOnEndRequest();
    if (arguments.inputs.size() == 1) {
        const std::filesystem::path file = FromCurrentFolder(arguments.inputs.front());
        FileResult<CartTables> tables = ReadCart(file);
        if (tables) return CheckFile(arguments, file, std::move(*tables));
        if (IsForBoard(file)) {
            const Language language = SystemLanguage();
            TerminalUser(arguments, language).Error(NoCartText(tables.Problem(), language));
            return kFailed;
        }
    }
    const ScratchFolder folder("cart");
    Arguments building = arguments;
    building.output = WithFormatExtension(folder.Path() / "cart", arguments.format);
    return BuiltCheck(building).Run();
}

}  // namespace bw
