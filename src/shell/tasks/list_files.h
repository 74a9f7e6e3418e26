// Games into the list and out of it: open, load, save, drop, and the list that is remembered from
// run to run.
#pragma once

#include <filesystem>
#include <vector>

#include "shell/tasks/list_host.h"

namespace bw {

class ListFiles {
  public:
    explicit ListFiles(ListHost& host) : host_(host) {}

    // The three commands; each refuses while a task runs.
    void Open();
    void Load();
    void Save();
    // Files dropped on the window or named at the program's start: images and list files in any
    // order. The flag isn't looked at; if a task is running, the files wait for its end.
    void Add(std::vector<std::filesystem::path> files);

    // At the start, on a background thread.
    void LoadHistory();
    // At closing, on the window's thread. False if the store didn't take it.
    bool SaveHistory(const ColumnWidths& widths);

  private:
    ListHost& host_;
    std::vector<std::filesystem::path> waiting_;
};

}  // namespace bw
