#include "designer/window/menu_preview.h"

#include <algorithm>
#include <utility>

#include "console/menu_walk.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr size_t kMadeUp = 12;  // names in a preview without games

std::shared_ptr<const GameList> MadeUpGames() {
    GameList games(kMadeUp);
    for (size_t i = 0; i < kMadeUp; ++i) {
        games[i].name = ToWide("GAME " + std::to_string(i + 1));
        games[i].checked = true;
    }
    return std::make_shared<const GameList>(std::move(games));
}

}  // namespace

// The folder of the carts. What a killed process leaves of it goes as builds' folders do.
struct MenuPreview::Scratch {
    ~Scratch() {
        if (!folder.empty()) RemoveFolder(folder);
    }

    void Prepare() {
        if (folder.empty()) {
            RemoveAbandonedWorkFolders();
            folder = WorkFolder();
            folder += "-preview";
        }
        MakeFolders(folder);
        if (!held) held = FileLock::TryTake(folder);
    }

    std::filesystem::path folder;
    FileResult<FileLock> held = FileProblem{};
};

// What a build has come to.
struct MenuPreview::Built {
    uint64_t number = 0;
    std::filesystem::path rom;
    std::u16string refusal = u"?";  // until it is done
    size_t games = 0;
    BuildSettings settings;
    bool madeUp = false;
};

MenuPreview::MenuPreview(const SettingsStore& settings, FindConsole find,
                         std::function<void()> changed)
    : settings_(settings),
      find_(std::move(find)),
      changed_(std::move(changed)),
      scratch_(std::make_unique<Scratch>()) {}

MenuPreview::~MenuPreview() = default;

void MenuPreview::Show(Wanted wanted) {
    wanted_ = std::move(wanted);
    ++newest_;
    Build();
    changed_();
}

void MenuPreview::SetSeen(bool seen) {
    if (seen_ == seen) return;
    seen_ = seen;
    if (session_) session_->Pause(!seen);
    // What went wrong with the console may go well now.
    if (seen && state_.problem) begun_ = 0;
    Build();
    changed_();
}

void MenuPreview::Hold(uint8_t buttons) {
    if (session_) session_->SetPads({buttons, 0});
}

MenuPreview::State MenuPreview::Now() const {
    State state = state_;
    state.old = shown_ != newest_;
    return state;
}

void MenuPreview::Build() {
    if (!seen_ || busy_ || begun_ == newest_) return;
    if (!emulator_) emulator_ = find_();
    state_.noEmulator = emulator_ == nullptr;
    if (!emulator_) return;
    busy_ = true;
    begun_ = newest_;
    const auto built = std::make_shared<Built>();
    built->number = begun_;
    tasks_.StartFreeTask(
        [this, built, wanted = wanted_](TaskControl&) {
            built->settings = LoadBuildSettings(settings_);
            PreviewPlan plan{wanted.games, built->settings, wanted.design, wanted.language};
            plan.settings.CustomEnable = true;
            built->madeUp = CountChecked(*plan.games) == 0;
            if (built->madeUp) plan.games = MadeUpGames();
            built->games = CountChecked(*plan.games);
            scratch_->Prepare();
            // The console may still be reading the one before.
            const char* const name = built->number % 2 == 0 ? "even.nes" : "odd.nes";
            built->rom = scratch_->folder / name;
            const auto made =
                BuildPreviewCart(std::move(plan), scratch_->folder / "build", built->rom);
            built->refusal = made ? u"" : made.Problem();
        },
        [this, built] {
            state_.refusal = built->refusal;
            state_.externMenu = built->settings.ExternMenuEnable;
            state_.switchedOff = !built->settings.CustomEnable;
            state_.madeUp = built->madeUp;
            busy_ = built->refusal.empty();
            if (busy_) Load(*built);
            Build();
            changed_();
        });
}

void MenuPreview::Load(const Built& built) {
    const auto leave = [this](Console& console) -> ConsoleResult<> {
        const auto selected = SelectedItem(console);
        if (!selected) return selected.Problem();
        selected_ = *selected;
        return {};
    };
    const auto prepare =
        [this, number = built.number, pageSize = built.settings.PageSize,
         last = static_cast<uint32_t>(built.games - 1)](Console& console) -> ConsoleResult<> {
        ConsoleResult<> there = RunToMenu(console);
        selected_ = std::min(selected_, last);
        if (there && selected_ != 0) there = GoToItem(console, selected_, pageSize);
        if (there) running_ = number;
        return there;
    };
    state_.problem.reset();
    if (session_) {
        session_->Load(built.rom, prepare, leave);
    } else {
        LiveWatcher& watcher = *this;
        session_ = std::make_unique<LiveSession>(*emulator_, watcher, LiveOptions{.rom = built.rom},
                                                 prepare);
        session_->Pause(!seen_);
    }
}

void MenuPreview::Shows(const ConsolePicture& picture, PadStates) {
    Post(std::nullopt, &picture);
}

void MenuPreview::Failed(const ConsoleProblem& problem) {
    Post(problem, nullptr);
}

void MenuPreview::Post(std::optional<ConsoleProblem> problem, const ConsolePicture* picture) {
    const std::lock_guard guard(lock_);
    if (picture != nullptr) {
        news_.picture = *picture;
        news_.number = running_;
        news_.fresh = true;
    }
    news_.problem = std::move(problem);
    // A window that is busy gets the newest one alone.
    if (!std::exchange(news_.posted, true)) queue_.Post([this] { TakeNews(); });
}

void MenuPreview::TakeNews() {
    {
        const std::lock_guard guard(lock_);
        if (std::exchange(news_.fresh, false)) {
            std::swap(picture_, news_.picture);
            shown_ = news_.number;
        }
        state_.problem = news_.problem;
        news_.posted = false;
    }
    if (state_.problem || shown_ == begun_) busy_ = false;
    Build();
    changed_();
}

}  // namespace bw
