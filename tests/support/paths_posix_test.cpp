#include <gtest/gtest.h>

#include "common/environment_variable.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

TEST(PathsOnPosix, AbsoluteAndRelativeAreInverse) {
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

TEST(PathsOnPosix, PathsThatAreNoUtf8SurviveAsText) {
    for (const char* path : {"/roms/\xFF.nes", "/\xC3\xA9/\xE9\x9B.nes", "/\xF0\x9F\x8E\xAE\x80"})
        EXPECT_EQ(TextPath(PathText(path)).native(), path);
    EXPECT_EQ(ToUtf8(PathText("/roms/\xFF.nes")), "/roms/\uFFFD.nes") << "for people";
    EXPECT_EQ(TextPath(u"/\u9B42\xD800.nes").native(), "/\xE9\xAD\x82\xEF\xBF\xBD.nes");
}

TEST(PathsOnPosix, UsersFilesMoveWithTheirVariables) {
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

}  // namespace
}  // namespace bw
