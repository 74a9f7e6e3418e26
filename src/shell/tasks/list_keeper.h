// The list in a file while the program runs, and back out of the files of programs that were
// killed.
#pragma once

#include <QTimer>
#include <cstdint>
#include <filesystem>
#include <future>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "list/kept_list.h"
#include "rom/crc32.h"
#include "shell/tasks/list_host.h"

namespace bw {

// Lives on the window's thread; writes on another one, beside all tasks.
class ListKeeper {
  public:
    // `folder`: where the files lie; empty keeps nothing.
    ListKeeper(ListHost& host, std::filesystem::path folder);
    // Waits for the writing at hand.
    ~ListKeeper();

    // What killed programs have left.
    struct Found {
        std::optional<GameList> games;  // the newest
        std::filesystem::file_time_type time{};
        std::vector<BroughtBack> lists;  // whose files go once the list is kept anew
        // Lists that lie in files of their own now.
        std::vector<std::filesystem::path> aside;
        std::vector<std::filesystem::path> damaged;
    };
    // From any thread. `stored`: the text of the list of the settings, which is put aside too if
    // the newest list hasn't come out of it.
    Found Find(std::span<const uint8_t> stored) const;

    // The found list, or else the remembered one, becomes the window's; changes of it are kept from
    // now on. Says what was found.
    void Begin(std::span<const uint8_t> stored, Found found, GameList remembered);
    // The list is another one: it is kept within a few seconds.
    void Changed();
    // The text that the settings have of the list now.
    void Stored(std::span<const uint8_t> text) { origin_ = Crc32(text); }
    // The list lies in its usual place. Later changes are kept again.
    void Forget();

  private:
    void Keep();
    void Write();
    void TellOf(const FileProblem& problem);

    ListHost& host_;
    std::filesystem::path folder_;
    std::optional<KeptList> kept_;
    uint32_t origin_ = 0;
    std::vector<BroughtBack> found_;
    QTimer timer_;
    bool changed_ = false;  // since the last writing began
    // What is written; the writing's thread has it until that has ended.
    GameList copy_;
    std::future<FileResult<>> writing_;
    bool told_ = false;  // of a problem
};

}  // namespace bw
