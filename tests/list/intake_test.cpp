#include <thread>

#include <gmock/gmock.h>

#include "common/image_folder.h"
#include "list/added_games.h"
#include "list/game_entry.h"
#include "support/text.h"

namespace bw {
namespace {

using test::Header;
using test::ImageFolder;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::filesystem::path> Paths(const std::vector<GameEntry>& entries) {
    std::vector<std::filesystem::path> paths;
    for (const GameEntry& entry : entries)
        paths.push_back(TextPath(entry.path));
    return paths;
}

TEST(ReadGameFolder, GoesThroughFoldersInOrderOfPath) {
    const ImageFolder folder;
    for (const char* name : {"b.nes", "a/z.NES", "a/deeper/1.nes", "a.nes", "c/readme.txt",
                             "c/x.nes~", "D.Nes", ".nes", "c/no extension", "unes"}) {
        folder.Write(name, Header({1}));
    }
    std::filesystem::create_directory(folder / "folder.nes");
    EXPECT_THAT(Paths(ReadGameFolder(folder.Path())),
                ElementsAre(folder / "D.Nes", folder / "a" / "deeper" / "1.nes",
                            folder / "a" / "z.NES", folder / "a.nes", folder / "b.nes"));
    EXPECT_THAT(ReadGameFolder(folder / "no such folder"), IsEmpty());
    EXPECT_THAT(ReadGameFolder(folder / "b.nes"), IsEmpty());
}

TEST(ReadGameFolder, GivesWhatReadingOneByOneGives) {
    const ImageFolder folder;
    std::vector<std::filesystem::path> paths;
    // Enough files for several threads and several pieces of work each.
    for (int i = 0; i < 700; ++i) {
        const std::string number = std::to_string(i);
        paths.push_back(folder.Write("set " + number.substr(0, 1) + "/game " + number + ".nes",
                                     i % 100 == 7 ? "foreign" : Header({i % 256, i / 256, 0x10})));
    }
    std::ranges::sort(paths);
    const auto listed = paths.size();
    paths.push_back(folder / "left between listing and reading.nes");
    std::vector<GameEntry> byPaths;
    // Two collections at once share nothing.
    std::jthread other([&] { byPaths = ReadGameEntries(paths); });
    const std::vector<GameEntry> byFolder = ReadGameFolder(folder.Path());
    other.join();
    ASSERT_EQ(byPaths.size(), paths.size());
    ASSERT_EQ(byFolder.size(), listed);
    const auto values = [](const GameEntry& entry) {
        return std::tie(entry.path, entry.name, entry.header.bytes, entry.headerRead,
                        entry.coolgirlSupported);
    };
    for (size_t i = 0; i < paths.size(); ++i) {
        const GameEntry alone(paths[i]);
        EXPECT_EQ(values(alone), values(byPaths[i]));
        EXPECT_TRUE(i == listed || values(alone) == values(byFolder[i])) << paths[i];
    }
}

TEST(ReadGameFolder, KeepsARelativeFolderRelative) {
    const ImageFolder folder;
    folder.Write("set/游戏.nes", Header({1}));
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path());
    const auto entries = ReadGameFolder("set/");
    std::filesystem::current_path(before);
    ASSERT_THAT(Paths(entries), ElementsAre(std::filesystem::path("set") / u8"游戏.nes"));
    EXPECT_TRUE(entries[0].HasValidHeader());
    EXPECT_EQ(entries[0].name, u"游戏");
}

TEST(AddedGames, GamesOnlyWithPathsFromTheProgramsFolder) {
    const ImageFolder folder;
    const auto in = folder.Write("program/roms/In.side.nes", Header({1}));
    const auto out = folder.Write("Out.NES", Header({2}));
    const auto zero = folder.Write("zero prg.nes", Header({0, 1}));
    const auto text = folder.Write("text.nes", "no game");
    const auto base = folder / "program";
    const std::vector<std::filesystem::path> files{out, zero, folder / "gone.nes", base, text, in};
    GameList games = ReadAddedGames(files, base);
    EXPECT_THAT(Paths(games), ElementsAre("../Out.NES", "roms/In.side.nes"));
    EXPECT_EQ(games.at(1).name, u"In.side");
    EXPECT_FALSE(games[1].checked);

    games.resize(4);
    games[3].path = u"D:\\roms\\Game.nes";
    EXPECT_THAT(Paths(WithAbsolutePaths(games, base)),
                ElementsAre(out, in, "", "D:\\roms\\Game.nes"));
}

}  // namespace
}  // namespace bw
