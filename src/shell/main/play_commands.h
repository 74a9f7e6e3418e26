// Playing from the main window: a game of the list, the built cart.
#pragma once

#include <memory>
#include <optional>

#include "shell/dialogs/play_dialog.h"
#include "shell/tasks/built_cart.h"
#include "shell/tasks/list_host.h"

namespace bw {

class PlayCommands {
  public:
    // Both must live longer; the play window belongs to `window`.
    PlayCommands(ListHost& host, QWidget& window) : host_(host), window_(window) {}

    // The game of the row that was clicked last, alone.
    void PlayGame();
    // From its menu on; a word where there is none, or not any more.
    void PlayCart(const std::optional<BuiltCart>& cart);

    // Any game or cart.
    void Play(const std::filesystem::path& rom, std::u16string_view name);

  private:
    ListHost& host_;
    QWidget& window_;
    std::unique_ptr<CPlayDialog> dialog_;
};

}  // namespace bw
