#include "support/paths.h"

#include <set>

#include <gtest/gtest.h>

#include "common/environment_variable.h"
#include "common/special_files.h"
#include "common/temporary_folder.h"
#include "support/files.h"
#include "support/text.h"

namespace bw {
namespace {

TEST(Paths, NameWithoutExtension) {
    const std::pair<const char16_t*, const char16_t*> cases[] = {{u"/roms/Game.nes", u"Game"},
                                                                 {u"Game v1.2.nes", u"Game v1.2"},
                                                                 {u"/roms.old/Game", u"Game"},
                                                                 {u"/roms/.nes", u""},
                                                                 {u"/roms/", u""},
                                                                 {u"/roms/Game.", u"Game"}};
    for (const auto& [path, name] : cases)
        EXPECT_EQ(NameWithoutExtension(path), name) << ToUtf8(path);
}

TEST(Paths, ExtensionIgnoresCaseAndFolders) {
    for (const char* path : {"/lists/my.v1.FCL", ".fcl"})
        EXPECT_TRUE(HasExtension(path, "fcl")) << path;
    for (const char* path : {"/my.fcl/list", "fcl", "list.fcl.txt"})
        EXPECT_FALSE(HasExtension(path, "fcl")) << path;
}

TEST(Paths, OnlyAbandonedWorkFoldersAreRemoved) {
    const TemporaryFolder home;
    const EnvironmentVariable moved("BANKWEAVER_HOME", home.Path().c_str());
    const std::filesystem::path parent = WorkFolder().parent_path();
    // The last three numbers are larger than any process has.
    for (const char* name : {"old", "recent", "999999997", "999999998-export", "999999999"})
        std::filesystem::create_directories(parent / name / "menu");
    std::filesystem::create_directories(WorkFolder());
    test::MakeOlder(parent / "old", std::chrono::hours(25));
    const auto held = FileLock::TryTake(parent / "999999999");
    RemoveAbandonedWorkFolders();
    std::set<std::filesystem::path> left;
    for (const auto& folder : std::filesystem::directory_iterator(parent)) {
        if (folder.is_directory()) left.insert(folder.path());
    }
    EXPECT_EQ(left, (std::set{WorkFolder(), parent / "recent", parent / "999999999"}));
}

TEST(Paths, ExecutableIsThisProgram) {
    EXPECT_EQ(ExecutablePath().stem(), "support_test");
    EXPECT_TRUE(std::filesystem::exists(ExecutableFolder() / ExecutablePath().filename()));
}

}  // namespace
}  // namespace bw
