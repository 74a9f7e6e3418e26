#include "shell/main/cart_part.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "builder/carts/cart_split.h"
#include "language/problem_text.h"
#include "list/added_games.h"
#include "settings/recent_files.h"
#include "shell/dialogs/cart_report.h"
#include "shell/framework/messages.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kCartFolder = "LastCartDir";
constexpr std::string_view kGamesFolder = "LastCartGamesDir";
constexpr std::string_view kDumpFolder = "LastDumpDir";
constexpr uint64_t kSteps = 200;  // of a progress that are told

fs::path StoredFolder(const SettingsStore& store, std::string_view name) {
    std::u16string folder;
    store.RegReadString(kMainKey, name, folder);
    return TextPath(folder);
}

// Asks for a cart or a dump.
std::optional<fs::path> AskCart(ListHost& host, TextId title, std::string_view folder) {
    const Language language = host.CurrentLanguage();
    const auto chosen = host.Dialogs().AskFileToOpen(
        {.title = FromQt(WithoutLetter(QtText(title, language))),
         .start = StoredFolder(host.Store(), folder),
         .types = {{LoadText(TextId::kCartFiles, language), "nes unf bin"}}});
    if (!chosen) return std::nullopt;
    host.Store().RegWriteString(kMainKey, folder, PathText(chosen->path.parent_path()));
    return chosen->path;
}

struct TakenOut {
    std::vector<fs::path> images;
    std::vector<std::u16string> names;
};

TakenOut ImagesOf(const CartContents& cart, const std::vector<SplitGame>& split) {
    TakenOut taken;
    for (size_t i = 0; i < split.size() && i < cart.games.size(); ++i) {
        if (!IsTakenOut(split[i])) continue;
        taken.images.push_back(split[i].file);
        taken.names.push_back(cart.games[i].name);
    }
    return taken;
}

}  // namespace

template <typename Work, typename Finish>
void CartPart::Start(Work work, Finish finish) {
    using Given = decltype(work(std::declval<TaskControl&>()));
    const auto given = std::make_shared<std::optional<Given>>();
    if (IsShown()) dialog_->SetBusy(true);
    host_.Tasks().StartFreeTask(
        [given, work = std::move(work)](TaskControl& control) { *given = work(control); },
        [this, given, finish = std::move(finish)] {
            if (IsShown()) dialog_->SetBusy(false);
            if (*given) finish(**given);
        });
}

auto CartPart::ProgressOf(TaskControl& control, std::u16string what) {
    return [this, &control, what = std::move(what), last = kSteps](uint64_t done,
                                                                   uint64_t total) mutable {
        const uint64_t step = total == 0 ? 0 : done * (kSteps - 1) / total;
        if (step != std::exchange(last, step)) {
            control.Progress({what, static_cast<size_t>(step), kSteps});
            control.Queue().Post([this, step] {
                if (IsShown()) dialog_->ShowProgress(step, kSteps);
            });
        }
        return !control.Stop();
    };
}

void CartPart::Say(const std::u16string& lines) {
    const size_t end = std::min(lines.find(u'\n'), lines.size());
    host_.Tell(lines.substr(0, end),
               std::u16string_view(lines).substr(std::min(end + 1, lines.size())));
    if (IsShown()) dialog_->ShowResult(lines);
}

void CartPart::SayProblem(const FileProblem& problem) {
    // Whoever has stopped it knows.
    if (problem.system == std::errc::operation_canceled) return host_.Tell({});
    Say(ProblemText(problem, host_.CurrentLanguage()));
}

void CartPart::Open() {
    if (const auto file = AskCart(host_, TextId::kOpenCartEntry, kCartFolder)) Open(*file);
}

void CartPart::Open(const fs::path& file) {
    const fs::path cart = fs::absolute(file);
    Start([cart](TaskControl&) { return ReadCartContents(cart); },
          [this, cart](FileResult<CartContents>& read) {
              if (!read) {
                  Warn(host_, NoCartText(read.Problem(), host_.CurrentLanguage()));
                  return;
              }
              Show(cart, std::move(*read));
          });
}

void CartPart::Show(const fs::path& file, CartContents cart) {
    AddRecentFile(host_.Store(), RecentKind::kCarts, file);
    if (!dialog_) {
        dialog_ = std::make_unique<CCartDialog>(host_.Store(), window_, host_.CurrentLanguage(),
                                                &window_);
        QObject::connect(dialog_.get(), &CCartDialog::TakeOutWanted, dialog_.get(),
                         [this] { TakeOut(); });
        QObject::connect(dialog_.get(), &CCartDialog::CompareWanted, dialog_.get(),
                         [this](uint32_t sectorBytes) { Compare(sectorBytes); });
        QObject::connect(dialog_.get(), &CCartDialog::PlayWanted, dialog_.get(),
                         [this] { play_.Play(dialog_->File(), PathText(dialog_->File().stem())); });
    }
    dialog_->ShowCart(file, std::move(cart));
    dialog_->ShowModeless();
}

void CartPart::TakeOut() {
    SettingsStore& store = host_.Store();
    const auto folder = host_.Dialogs().AskFolder(StoredFolder(store, kGamesFolder));
    if (!folder || !IsShown()) return;
    store.RegWriteString(kMainKey, kGamesFolder, PathText(*folder));
    const auto cart = std::make_shared<const CartContents>(dialog_->Cart());
    Start(
        [this, cart, file = dialog_->File(), folder = *folder](TaskControl& control) {
            return SplitCart(file, *cart, folder, ProgressOf(control, PathText(file.filename())));
        },
        [this, cart, folder = *folder](FileResult<std::vector<SplitGame>>& split) {
            const Language language = host_.CurrentLanguage();
            if (!split) return SayProblem(split.Problem());
            Say(SplitText(*split, cart->games.size(), folder, language));
            TakenOut taken = ImagesOf(*cart, *split);
            // A split that was stopped is none to go on with.
            if (split->size() == cart->games.size() && !taken.images.empty())
                OfferList(taken.images, std::move(taken.names));
        });
}

void CartPart::OfferList(const std::vector<fs::path>& images, std::vector<std::u16string> names) {
    const Language language = host_.CurrentLanguage();
    const int answer = host_.Dialogs().Message(
        FormatText(LoadText(TextId::kCartMakeList, language), images.size()),
        LoadText(TextId::kTipsTitle, language), MessageButtons::kYesNo);
    if (answer != kEndYes) return;
    BackgroundTasks::Turn turn = BeginListTask(host_);
    if (!turn) return;
    const auto games = std::make_shared<GameList>();
    host_.Tasks().StartListTask(
        std::move(turn),
        [games, images, names = std::move(names), base = host_.Base()](TaskControl& control) {
            for (size_t i = 0; i < images.size() && !control.Stop(); ++i) {
                control.Progress({names[i], i, images.size()});
                GameList one = ReadAddedGames(std::span(&images[i], 1), base);
                if (one.empty()) continue;
                one.front().name = names[i];
                one.front().checked = true;
                games->push_back(std::move(one.front()));
            }
            if (control.Stop()) games->clear();
        },
        [this, games] {
            if (games->empty()) return;
            if (view_.EditActive()) window_.Send(kMessageEndEdit);
            const size_t count = games->size();
            host_.Editor().Replace(std::move(*games));
            Say(FormatText(LoadText(TextId::kCartListMade, host_.CurrentLanguage()), count));
        });
}

void CartPart::Compare(uint32_t sectorBytes) {
    const auto dump = AskCart(host_, TextId::kCartCompare, kDumpFolder);
    if (!dump || !IsShown()) return;
    const auto cart = std::make_shared<const CartContents>(dialog_->Cart());
    Start(
        [this, cart, file = dialog_->File(), dump = *dump, sectorBytes](TaskControl& control) {
            return CompareCart(file, *cart, dump, sectorBytes,
                               ProgressOf(control, PathText(dump.filename())));
        },
        [this, cart, file = dialog_->File(), dump = *dump](FileResult<CartComparison>& comparison) {
            const Language language = host_.CurrentLanguage();
            if (!comparison) return SayProblem(comparison.Problem());
            Say(ComparisonText(*cart, *comparison, dump, language));
            if (IsShown() && dialog_->File() == file) dialog_->ShowDifferences(*comparison);
        });
}

void CartPart::StoreAll() const {
    if (dialog_ != nullptr) dialog_->StorePlace();
}

}  // namespace bw
