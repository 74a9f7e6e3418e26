// Build and export from the window.
#pragma once

#include <functional>
#include <optional>
#include <string_view>

#include "rom/board_tables.h"
#include "shell/tasks/built_cart.h"
#include "shell/tasks/list_host.h"

namespace bw {

// The entry of the menu that checks what this board runs.
TextId FitEntry(BoardType board);

// Told on the window's thread.
struct BuildListener {
    // After each build that has written a ROM.
    std::function<void()> built = nullptr;
    // The checked games are more than the board takes, and the user wants to see which to leave
    // out.
    std::function<void(BoardType)> tooMuch = nullptr;
};

class BuildCommands {
  public:
    explicit BuildCommands(ListHost& host, BuildListener listener = {})
        : host_(host), listener_(std::move(listener)) {}

    // What the last successful build of this run has written.
    const std::optional<BuiltCart>& Built() const { return built_; }

    // Both refuse while a task runs or too many games are checked. They work on a snapshot of list
    // and settings, in the language of the moment. Where the board can't run a game, the build ends
    // with that game's row in sight. `name`, if not empty, is proposed for the ROM's file.

    // COOLBOY or MINDKIDS by the stored CoolboyType.
    void BuildCoolboy(std::u16string_view name = {});
    void BuildCoolgirl(std::u16string_view name = {});
    // The same, but runs beside anything else.
    void Export();

    // Checks the games (of the shown rows) that a board runs, and no other ones.
    void CheckFitting(BoardType board, ListEditor::ShownRows shown);

  private:
    void Build(BoardType board, std::u16string_view name);
    ListHost& host_;
    BuildListener listener_;
    std::optional<BuiltCart> built_;
    bool sweptFolders_ = false;  // work folders of builds that were killed
};

}  // namespace bw
