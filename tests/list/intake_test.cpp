#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "common/image_folder.h"
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
                             "c/x.nes~", "B.Nes", ".nes", "c/no extension", "unes"}) {
        folder.Write(name, Header({1}));
    }
    std::filesystem::create_directory(folder / "folder.nes");
    ASSERT_EQ(mkfifo((folder / "pipe.nes").c_str(), 0600), 0);
    std::filesystem::create_symlink(folder / "b.nes", folder / "link.nes");
    std::filesystem::create_symlink(folder / "gone", folder / "broken.nes");
    // Followed, it would never end.
    std::filesystem::create_directory_symlink(folder.Path(), folder / "a" / "loop");
    std::filesystem::create_directory_symlink(folder / "a", folder / "loop.nes");

    EXPECT_THAT(
        Paths(ReadGameFolder(folder.Path())),
        ElementsAre(folder / "B.Nes", folder / "a" / "deeper" / "1.nes", folder / "a" / "z.NES",
                    folder / "a.nes", folder / "b.nes", folder / "link.nes"));
    EXPECT_THAT(ReadGameFolder(folder / "no such folder"), IsEmpty());
    EXPECT_THAT(ReadGameFolder(folder / "b.nes"), IsEmpty());
}

// Enough files for several threads and several pieces of work each.
std::vector<std::filesystem::path> MakeCollection(const ImageFolder& folder) {
    std::vector<std::filesystem::path> paths;
    for (int i = 0; i < 700; ++i) {
        std::string number = std::to_string(i);
        const std::string name = "set " + number.substr(0, 1) + "/game " + number + ".nes";
        paths.push_back(
            folder.Write(name, i % 100 == 7 ? "foreign" : Header({i % 256, i / 256, 0x10})));
    }
    std::ranges::sort(paths);
    return paths;
}

void ExpectSame(const GameEntry& a, const GameEntry& b) {
    EXPECT_EQ(a.path, b.path);
    EXPECT_EQ(a.name, b.name);
    EXPECT_EQ(a.header.bytes, b.header.bytes);
    EXPECT_EQ(a.headerRead, b.headerRead);
    EXPECT_EQ(a.coolgirlSupported, b.coolgirlSupported);
}

TEST(ReadGameFolder, GivesWhatReadingOneByOneGives) {
    const ImageFolder folder;
    const auto paths = MakeCollection(folder);
    std::vector<GameEntry> byPaths;
    // Two collections at once share nothing.
    std::jthread other([&] { byPaths = ReadGameEntries(paths); });
    const std::vector<GameEntry> byFolder = ReadGameFolder(folder.Path());
    other.join();
    ASSERT_EQ(byPaths.size(), paths.size());
    ASSERT_EQ(byFolder.size(), paths.size());
    for (size_t i = 0; i < paths.size(); ++i) {
        const GameEntry alone(paths[i]);
        ExpectSame(alone, byPaths[i]);
        ExpectSame(alone, byFolder[i]);
    }
}

TEST(ReadGameFolder, KeepsARelativeFolderRelative) {
    const ImageFolder folder;
    folder.Write("set/游戏.nes", Header({1}));
    const auto relative = std::filesystem::relative(folder.Path());
    const auto entries = ReadGameFolder(relative / "");
    EXPECT_THAT(Paths(entries), ElementsAre(relative / "set" / "游戏.nes"));
    EXPECT_TRUE(entries.at(0).HasValidHeader());
    EXPECT_EQ(entries.at(0).name, u"游戏");
}

TEST(ReadGameFolder, NamesThatAreNoUtf8LeadToTheirFile) {
    const ImageFolder folder;
    folder.Write("Caf\xE9.nes", Header({1}));
    const auto entries = ReadGameFolder(folder.Path());
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_TRUE(GameEntry(entries[0].path).HasValidHeader());
    EXPECT_EQ(TextPath(entries[0].path), folder / "Caf\xE9.nes");
}

TEST(ReadGameFolder, TakesAFileThatLeftBetweenListingAndReading) {
    const ImageFolder folder;
    const auto kept = folder.Write("kept.nes", Header({1}));
    const std::vector<GameEntry> entries =
        ReadGameEntries(std::vector<std::filesystem::path>{folder / "left.nes", kept});
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_FALSE(entries[0].headerRead);
    EXPECT_TRUE(entries[1].headerRead);
}

}  // namespace
}  // namespace bw
