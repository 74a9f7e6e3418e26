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

void UserHome::RememberNames(const std::vector<std::string>& names) const {
    GameList games;
    for (const std::string& name : names) {
        GameEntry game;
        game.path = u"/nowhere/" + ToWide(name) + u".nes";
        game.name = ToWide(name);
        games.push_back(std::move(game));
    }
    const std::string text = StoreRememberedList(games, ColumnWidths{}, folder_.Path());
    Store()->RegWriteBinary(kHistoryKey, "Data", std::vector<uint8_t>(text.begin(), text.end()));
}

std::vector<uint8_t> UserHome::History() const {
    return ReadWholeBinary(*Store(), kHistoryKey, "Data");
}

std::string Sample(const std::string& name) {
    return (std::filesystem::path(BANKWEAVER_SAMPLES) / name).string();
}

std::vector<std::string> ManyNames(size_t count) {
    std::vector<std::string> names;
    for (size_t i = 0; i < count; ++i)
        names.push_back("Game " + std::to_string(i * 7919 % count) + " of " +
                        std::to_string(count));
    return names;
}

}  // namespace bw::test
