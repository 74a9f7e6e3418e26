#include "app/list_rescue.h"

#include <gtest/gtest.h>

#include "common/environment_variable.h"
#include "common/temporary_folder.h"
#include "list/list_file.h"
#include "list/remembered_list.h"
#include "support/files.h"

namespace bw {
namespace {

class ListRescue : public testing::Test {
  protected:
    // The end of a run with these games in its list.
    std::optional<std::filesystem::path> EndWith(size_t games) {
        GuardedStore store(MakeSqliteStore(file_), u"");
        const std::string text = StoreRememberedList(GameList(games), {}, folder_.Path());
        store.RegWriteBinary(kHistoryKey, kHistoryValue,
                             std::span(reinterpret_cast<const uint8_t*>(text.data()), text.size()));
        return RescueList(store);
    }

    TemporaryFolder folder_;
    EnvironmentVariable home_{"BANKWEAVER_HOME", folder_.Path().c_str()};
    std::filesystem::path file_ = folder_ / "config/settings.sqlite3";
};

TEST_F(ListRescue, OnlyWhatTheSettingsRefuseGoesToNewFiles) {
    EXPECT_FALSE(EndWith(2)) << "stored";
    std::filesystem::remove_all(folder_ / "config");
    std::filesystem::create_directories(file_);  // a folder in the place of the file
    EXPECT_FALSE(EndWith(0)) << "nothing worth a file";
    const auto first = EndWith(2);
    const auto second = EndWith(3);
    ASSERT_TRUE(first && second);
    GameList list;
    LoadListFile(*first, folder_.Path(), list);
    LoadListFile(*second, folder_.Path(), list);
    EXPECT_EQ(list.size(), 5u);
}

TEST_F(ListRescue, GoesElsewhereWhereTheUsersFolderCannotBeMade) {
    WriteFile(folder_ / "config", std::string_view("in the way"));
    const EnvironmentVariable temporary("TMPDIR", folder_.Path().c_str());
    const auto file = EndWith(1);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->parent_path(), folder_.Path());
}

}  // namespace
}  // namespace bw
