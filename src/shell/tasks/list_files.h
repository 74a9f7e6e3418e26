// Games into the list and out of it: open, load, save, drop, and the list that is remembered from
// run to run.
#pragma once

#include <filesystem>
#include <functional>
#include <string_view>
#include <utility>
#include <vector>

#include "shell/tasks/list_host.h"
#include "shell/tasks/list_keeper.h"

namespace bw {

class ListFiles {
  public:
    // `kept`: the folder where the list lies while the program runs; empty keeps none there.
    explicit ListFiles(ListHost& host, std::filesystem::path kept = {})
        : host_(host), keeper_(host, std::move(kept)) {}

    // Each refuses while a task runs. How they ended is told in the status
    // bar, and so is a list that can't be written. One that is stopped leaves the list as it was.
    void Open();
    void Load();
    void Load(const std::filesystem::path& file);
    void Save();
    // A single file that is a cart of ours goes to the host's ShowCart, here and in Open().
    // Files dropped on the window or named at the program's start (absolute paths): images and list
    // files in any order. The flag isn't looked at; if a task is running, the files wait for its
    // end.
    void Add(std::vector<std::filesystem::path> files);

    // What the list is called: the name of the file that it came from or went to last, without
    // extension. Empty for games that were put together.
    std::u16string Name() const;

    // At the start, on a background thread. A list that a killed program has kept comes first.
    void LoadRemembered();
    // To be told of each change of the list.
    void ListChanged() { keeper_.Changed(); }
    // The list has gone to where it stays: nothing is to be brought back at the next start.
    void ForgetKept() { keeper_.Forget(); }
    // At closing, on the window's thread. False if the list isn't stored. A list that
    // LoadRemembered() couldn't bring in stays stored as it is, whatever the window has.
    bool SaveRemembered(const ColumnWidths& widths);

  private:
    struct Reading;
    // `read` runs on the task's thread, `finish` on the window's unless the task was stopped.
    void Read(BackgroundTasks::Turn turn, std::function<void(Reading&)> read,
              std::function<void(Reading&)> finish);
    bool RefusesFullList();
    void Load(BackgroundTasks::Turn turn, const std::filesystem::path& file);
    void AddWaiting();
    // Appends what was read and tells how much it was. `list`: a list file among what was read.
    void Publish(Reading& reading, ListEditor::Appending how,
                 const std::filesystem::path& list = {});
    void StoreName(const std::filesystem::path& list);
    std::filesystem::path StoredFolder(std::string_view name) const;
    void StoreFolderOf(std::string_view name, const std::filesystem::path& file);

    ListHost& host_;
    ListKeeper keeper_;
    std::vector<std::filesystem::path> waiting_;
    bool rememberedMissing_ = false;  // LoadRemembered() has begun, and hasn't brought the list
};

}  // namespace bw
