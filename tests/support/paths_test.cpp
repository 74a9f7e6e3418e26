#include "support/paths.h"

#include <set>

#include <gtest/gtest.h>

#include "common/environment_variable.h"
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

TEST(Paths, AbsoluteAndRelativeAreInverse) {
    const char* const cases[][3] = {{"/a/roms/Game.nes", "/a", "roms/Game.nes"},
                                    {"/a/roms/Game.nes", "/a/", "roms/Game.nes"},
                                    {"/b/Game.nes", "/a/tool", "../../b/Game.nes"}};
    for (const auto& [absolute, base, relative] : cases) {
        EXPECT_EQ(RelativePath(absolute, base), relative);
        EXPECT_EQ(AbsolutePath(relative, base), absolute);
    }
    EXPECT_EQ(AbsolutePath("/x/../y/./Game.nes", "/a"), "/y/Game.nes");
    EXPECT_EQ(RelativePath("Game.nes", "/a"), "Game.nes") << "no form exists: as given";
}

TEST(Paths, PathsThatAreNoUtf8SurviveAsText) {
    for (const char* path : {"/roms/\xFF.nes", "/\xC3\xA9/\xE9\x9B.nes", "/\xF0\x9F\x8E\xAE\x80"})
        EXPECT_EQ(TextPath(PathText(path)).native(), path);
    EXPECT_EQ(ToUtf8(PathText("/roms/\xFF.nes")), "/roms/\uFFFD.nes") << "for people";
    EXPECT_EQ(TextPath(u"/\u9B42\xD800.nes").native(), "/\xE9\xAD\x82\xEF\xBF\xBD.nes");
}

TEST(Paths, UsersFilesMoveWithTheirVariables) {
    const EnvironmentVariable home("HOME", "/home/user");
    const EnvironmentVariable noConfig("XDG_CONFIG_HOME", nullptr);
    const EnvironmentVariable relativeCache("XDG_CACHE_HOME", "not/absolute");
    {
        const EnvironmentVariable notMoved("BANKWEAVER_HOME", "");
        EXPECT_EQ(UserConfigFolder(), "/home/user/.config/bankweaver");
        EXPECT_EQ(UserScratchFolder(), "/home/user/.cache/bankweaver");
        const EnvironmentVariable config("XDG_CONFIG_HOME", "/etc/user");
        EXPECT_EQ(UserConfigFolder(), "/etc/user/bankweaver");
    }
    const EnvironmentVariable moved("BANKWEAVER_HOME", "/trial");
    for (const auto& path : {UserConfigFolder(), UserScratchFolder(), WorkFolder()})
        EXPECT_TRUE(path.native().starts_with("/trial/")) << path;
    EXPECT_NE(UserConfigFolder(), UserScratchFolder());
}

TEST(Paths, OnlyAbandonedWorkFoldersAreRemoved) {
    const TemporaryFolder home;
    const EnvironmentVariable moved("BANKWEAVER_HOME", home.Path().c_str());
    const std::filesystem::path parent = WorkFolder().parent_path();
    // The last three numbers are larger than any process has.
    for (const char* name : {"old", "recent", "999999997", "999999998-export", "999999999"})
        std::filesystem::create_directories(parent / name / "menu");
    std::filesystem::create_directories(WorkFolder());
    std::filesystem::last_write_time(
        parent / "old", std::filesystem::file_time_type::clock::now() - std::chrono::hours(25));
    const auto held = FileLock::TryTake(parent / "999999999");
    RemoveAbandonedWorkFolders();
    std::set<std::filesystem::path> left;
    for (const auto& folder : std::filesystem::directory_iterator(parent))
        left.insert(folder.path());
    EXPECT_EQ(left, (std::set{WorkFolder(), parent / "recent", parent / "999999999"}));
}

TEST(Paths, ExecutableIsThisProgram) {
    EXPECT_EQ(ExecutablePath().filename(), "support_test");
    EXPECT_TRUE(std::filesystem::exists(ExecutableFolder() / "support_test"));
}

}  // namespace
}  // namespace bw
