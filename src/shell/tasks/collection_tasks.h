// What takes its time with a collection: reading the games' data, databases of names, looking for
// missing files. Beside the window, and the list stays as it was if the user stops it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "list/collection/name_changes.h"
#include "shell/tasks/list_host.h"

namespace bw {

class CollectionTasks {
  public:
    explicit CollectionTasks(ListHost& host) : host_(host) {}

    // Asks for a database, and reads the data of these games and what the database calls them.
    // `ready` gets it on the window's thread.
    struct Named {
        std::filesystem::path database;
        std::vector<uint32_t> rows;
        RowSums sums;  // one for each row
        DatNames names;
    };
    void ReadDatabase(std::vector<uint32_t> rows, std::function<void(Named)> ready);
    // Reads the data of all games, which marks those that have the same.
    void FindSame();
    // Asks for a folder, and puts what is found there in the place of files that are gone.
    void LookForMissing();

  private:
    struct Reading;
    // `work` runs on the task's thread, `finish` on the window's, with the rows still in their
    // places and the user not having stopped it.
    void Start(BackgroundTasks::Turn turn, std::vector<uint32_t> rows,
               std::function<void(Reading&, TaskControl&)> work,
               std::function<void(Reading&)> finish);
    std::filesystem::path StoredFolder(std::string_view name) const;

    ListHost& host_;
};

}  // namespace bw
