#include "user_home.h"

#include "list/remembered_list.h"
#include "support/text.h"

namespace bw::test {

// A start with files of ours must not ask how to close: tests that want the question say so.
UserHome::UserHome() {
    const auto store = Store();
    store->RegWriteDword(kMainKey, "Remember", 1);
    store->RegWriteDword(kMainKey, "CloseState", 1);
    store->RegWriteString(kMainKey, "LastBuildDir", PathText(folder_.Path()));
}

std::filesystem::path UserHome::SettingsFile() const {
    return folder_ / "config" / "settings.sqlite3";
}

std::unique_ptr<SettingsStore> UserHome::Store() const {
    return MakeSqliteStore(SettingsFile());
}

void UserHome::Remember(const std::string& history) const {
    Store()->RegWriteBinary(kHistoryKey, "Data",
                            std::vector<uint8_t>(history.begin(), history.end()));
}

void UserHome::RememberNames(const std::vector<std::string>& names) const {
    GameList games;
    for (const std::string& name : names) {
        GameEntry game;
        game.path = u"/nowhere/" + ToWide(name) + u".nes";
        game.name = ToWide(name);
        games.push_back(std::move(game));
    }
    Remember(StoreRememberedList(games, ColumnWidths{}, folder_.Path()));
}

std::vector<uint8_t> UserHome::History() const {
    return ReadWholeBinary(*Store(), kHistoryKey, "Data");
}

std::vector<std::string> UserHome::RememberedNames() const {
    std::vector<std::string> names;
    for (const GameEntry& game : LoadRememberedList(History(), folder_.Path()).games)
        names.push_back(ToUtf8(game.name));
    return names;
}

std::vector<std::string> ManyNames(size_t count) {
    std::vector<std::string> names;
    for (size_t i = 0; i < count; ++i)
        names.push_back("Game " + std::to_string(i * 7919 % count) + " of " +
                        std::to_string(count));
    return names;
}

}  // namespace bw::test
