#include <gtest/gtest.h>

#include "common/environment_variable.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

TEST(PathsOnWindows, AbsoluteAndRelativeAreInverse) {
    const wchar_t* const cases[][3] = {
        {LR"(C:\a\roms\Game.nes)", LR"(C:\a)", LR"(roms\Game.nes)"},
        {LR"(C:\b\Game.nes)", LR"(C:\a\tool\)", LR"(..\..\b\Game.nes)"},
        {LR"(\\nas\share\a\x.nes)", LR"(\\nas\share\b)", LR"(..\a\x.nes)"}};
    for (const auto& [absolute, base, relative] : cases) {
        EXPECT_EQ(RelativePath(absolute, base), relative);
        EXPECT_EQ(AbsolutePath(relative, base), absolute);
    }
    EXPECT_EQ(AbsolutePath(L"C:/x/../y/./Game.nes", L"D:\\a"), L"C:\\y\\Game.nes");
    // A share is no folder of a drive, nor another share's or drive's neighbour.
    EXPECT_EQ(AbsolutePath(LR"(\\nas\share\x.nes)", L"C:\\a"), LR"(\\nas\share\x.nes)");
    EXPECT_EQ(AbsolutePath(LR"(//nas/share/x.nes)", L"C:\\a"), LR"(\\nas\share\x.nes)");
    for (const wchar_t* base : {LR"(C:\a)", LR"(D:\x)", LR"(\\nas\other\x)"})
        EXPECT_EQ(RelativePath(LR"(\\nas\share\x.nes)", base), LR"(\\nas\share\x.nes)");
    EXPECT_EQ(RelativePath(LR"(D:\x.nes)", LR"(C:\a)"), LR"(D:\x.nes)");
    EXPECT_EQ(RelativePath(LR"(c:\A\x.nes)", LR"(C:\a)"), L"x.nes") << "letter case says nothing";
    EXPECT_TRUE(IsAbsoluteElsewhere(u"/roms/x.nes"));
    EXPECT_EQ(AbsolutePath(L"C:x.nes", L"c:\\a"), L"c:\\a\\x.nes") << "in that drive's folder";
    EXPECT_EQ(AbsolutePath(L"\\x.nes", LR"(\\nas\share\a)"), LR"(\\nas\share\x.nes)");
    EXPECT_FALSE(IsAbsoluteElsewhere(u"\\\\nas\\x.nes") || IsAbsoluteElsewhere(u"C:\\x.nes"));
}

TEST(PathsOnWindows, AnyNameSurvivesAsText) {
    for (const std::u16string name :
         {u"C:\\\u9B42\\x.nes", u"C:\\half \xD800 pair.nes", u"\xDC80.nes"})
        EXPECT_EQ(PathText(TextPath(name)), name);
    EXPECT_EQ(NameWithoutExtension(u"C:\\roms.old/Game v1.nes"), u"Game v1");
    EXPECT_TRUE(HasExtension(LR"(\\nas\a.b\list.FCL)", "fcl"));
}

TEST(PathsOnWindows, UsersFilesMoveWithTheVariable) {
    const EnvironmentVariable moved("BANKWEAVER_HOME", std::filesystem::path(L"C:\\\u9B42 trial"));
    for (const auto& path : {UserConfigFolder(), UserScratchFolder(), WorkFolder()})
        EXPECT_TRUE(path.native().starts_with(L"C:\\\u9B42 trial\\")) << path;
    EXPECT_NE(UserConfigFolder(), UserScratchFolder());
}

}  // namespace
}  // namespace bw
