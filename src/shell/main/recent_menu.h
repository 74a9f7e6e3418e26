// The files of the last times in the File menu: lists, designs, carts.
#pragma once

#include <filesystem>
#include <functional>

#include "settings/recent_files.h"
#include "shell/framework/command_menu.h"
#include "shell/tasks/list_host.h"

namespace bw {

// The first of the commands of a kind's entries; the one behind them clears.
int FirstRecentCommand(RecentKind kind);
inline constexpr RecentKind kRecentKinds[] = {RecentKind::kLists, RecentKind::kDesigns,
                                              RecentKind::kCarts};

class RecentMenu {
  public:
    using Open = std::function<void(RecentKind, const std::filesystem::path&)>;

    // `open` gets the files that the user chooses. All must live longer.
    RecentMenu(ListHost& host, CommandMenu& menu, Open open);

    // An entry, from 0. A file that is gone leaves the menu, with a word.
    void Choose(RecentKind kind, int number);
    void Clear(RecentKind kind) { ForgetRecentFiles(host_.Store(), kind); }

  private:
    void Show();

    ListHost& host_;
    CommandMenu& menu_;
    Open open_;
};

}  // namespace bw
