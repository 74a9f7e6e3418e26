#include "list/added_games.h"

#include <gtest/gtest.h>

#include "common/image_folder.h"
#include "support/text.h"

namespace bw {
namespace {

TEST(AddedGames, GamesOnlyWithPathsFromTheProgramsFolder) {
    const test::ImageFolder folder;
    const auto in = folder.Write("program/roms/In.side.nes", test::Header({1}));
    const auto out = folder.Write("Out.NES", test::Header({2}));
    const auto base = folder / "program";
    const std::vector<std::filesystem::path> files{
        out,
        folder.Write("zero prg.nes", test::Header({0, 1})),
        folder / "gone.nes",
        base,
        folder.Write("text.nes", "no game"),
        in};
    const GameList games = ReadAddedGames(files, base);
    ASSERT_EQ(games.size(), 2u);
    EXPECT_EQ(games[0].path, u"../Out.NES");
    EXPECT_EQ(games[1].path, u"roms/In.side.nes");
    EXPECT_EQ(games[1].name, u"In.side");
    EXPECT_FALSE(games[1].checked);

    GameList more = games;
    more.resize(4);
    more[3].path = u"D:\\roms\\Game.nes";
    const GameList absolute = WithAbsolutePaths(more, base);
    EXPECT_EQ(absolute[0].path, PathText(out));
    EXPECT_EQ(absolute[1].path, PathText(in));
    EXPECT_EQ(absolute[2].path, u"");
    EXPECT_EQ(absolute[3].path, more[3].path);
}

}  // namespace
}  // namespace bw
