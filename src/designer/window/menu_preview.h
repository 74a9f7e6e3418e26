// The menu of a design on a running console: builds its cart beside the window, the newest design
// last, and hands out the console's pictures.
#pragma once

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "builder/preview_cart.h"
#include "console/live_session.h"
#include "settings/settings_store.h"
#include "shell/framework/background_tasks.h"
#include "shell/framework/ui_queue.h"
#include "support/files.h"

namespace bw {

// All on the window's thread.
class MenuPreview : LiveWatcher {
  public:
    // Null where there is no emulator. Asked again whenever the preview comes in sight without one.
    using FindConsole = std::function<std::unique_ptr<Emulator>()>;

    // `changed` is called when there is another picture or another state. The settings are read
    // anew for each build, and must live longer.
    MenuPreview(const SettingsStore& settings, FindConsole find, std::function<void()> changed);
    MenuPreview(const MenuPreview&) = delete;
    MenuPreview& operator=(const MenuPreview&) = delete;
    // Leaves nothing: no process, no file.
    ~MenuPreview() override;

    // A snapshot of what is to be seen. One build runs at a time; what comes meanwhile waits for
    // its picture, and only the newest one is built then.
    struct Wanted {
        std::shared_ptr<const GameList> games;  // no checked ones: made-up names
        DesignDocument design;
        Language language = Language::kEnglish;
    };
    void Show(Wanted wanted);
    // Nothing starts before somebody sees it, and no time passes while nobody does.
    void SetSeen(bool seen);
    // Of pad 1, held from now on.
    void Hold(uint8_t buttons);

    const ConsolePicture& Picture() const { return picture_; }  // empty until the first one
    struct State {
        bool noEmulator = false;
        bool old = false;                         // the picture isn't that of the newest snapshot
        std::u16string refusal{};                 // why that one isn't built
        std::optional<ConsoleProblem> problem{};  // why the console shows nothing more
        // What the real build of now would do otherwise.
        bool externMenu = false;   // it would have the user's own menu
        bool switchedOff = false;  // it would have the default look
        bool madeUp = false;       // it would have no games
    };
    State Now() const;

  private:
    struct Built;
    void Build();
    void Load(const Built& built);
    void TakeNews();
    // LiveWatcher, on the session's thread.
    void Shows(const ConsolePicture& picture, PadStates buttons) override;
    void Failed(const ConsoleProblem& problem) override;
    void Post(std::optional<ConsoleProblem> problem, const ConsolePicture* picture);

    const SettingsStore& settings_;
    FindConsole find_;
    std::function<void()> changed_;
    bool seen_ = false;
    bool busy_ = false;    // from the beginning of a build to its picture, or its failure
    Wanted wanted_;        // the newest
    uint64_t newest_ = 0;  // its number, from 1 on
    uint64_t begun_ = 0;   // the number of the last one that a build has begun with
    uint64_t shown_ = 0;   // that of the picture
    State state_;
    ConsolePicture picture_;
    // Of the build's thread.
    struct Scratch;
    std::unique_ptr<Scratch> scratch_;
    // Of the session's thread.
    uint32_t selected_ = 0;
    uint64_t running_ = 0;  // the number of what runs on the console
    // Of both.
    std::mutex lock_;
    struct News {
        ConsolePicture picture{};
        bool fresh = false;  // there is one
        uint64_t number = 0;
        std::optional<ConsoleProblem> problem{};
        bool posted = false;
    };
    News news_;

    UiQueue queue_;
    BackgroundTasks tasks_{queue_};
    std::unique_ptr<Emulator> emulator_;
    std::unique_ptr<LiveSession> session_;
};

}  // namespace bw
