// The user's files of one test, and what a window left in them or is to find there.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "common/temporary_folder.h"
#include "list/game_list.h"
#include "settings/settings_store.h"

namespace bw::test {

class UserHome {
  public:
    UserHome();

    const std::filesystem::path& Path() const { return folder_.Path(); }
    std::filesystem::path operator/(const std::string& name) const { return folder_ / name; }
    std::filesystem::path SettingsFile() const;
    // Opened anew, as another program does it.
    std::unique_ptr<SettingsStore> Store() const;

    // The list that the window remembers, of games with these names and no files; as text.
    void RememberNames(const std::vector<std::string>& names) const;
    std::vector<uint8_t> History() const;

  private:
    TemporaryFolder folder_;
};

// A sample game's file.
std::string Sample(const std::string& name);
// As many names, each another.
std::vector<std::string> ManyNames(size_t count);

}  // namespace bw::test
