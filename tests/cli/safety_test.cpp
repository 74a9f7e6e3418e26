// The user's files: what no command may write over, lose or leave lying about.
#include "cli/command_fixture.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

TEST_F(Commands, AKeptFolderBelongsToTheBuild) {
    Image("good.nes", {1, 1, 0}, 1);
    Image("kg/game.nes", {1, 1, 0}, 2);
    const auto refused = [&](const std::string& arguments, const std::string& file,
                             const std::string& words) {
        ExpectRefused("build --keep-work kg " + arguments, file + words);
    };
    refused("-o old.nes good.nes", "kg/game.nes", ", which no build has left there");
    refused("-o old.nes good.nes kg/game.nes", "kg/game.nes", " lies in the folder of --keep-work");
    refused("-o old.nes good.nes kg", "kg/game.nes", " lies in the folder");
    fs::remove(folder_ / "kg/game.nes");
    refused("-o kg/menu.nes good.nes", "kg/menu.nes", " lies in the folder");
    refused("-o old.nes --report kg/r.json good.nes", "kg/r.json", " lies in the folder");

    Done("build --keep-work kg -o x.nes --number good.nes");
    Done("build --keep-work kg -o x.nes good.nes");
    const auto kept = [&](const std::string& file) { return ReadText(folder_ / "kg" / file); };
    EXPECT_THAT(kept("build/game_list_0.asm"), Not(HasSubstr("1.GOOD"))) << "of the first build";
    EXPECT_EQ(kept("menu.nes").size(), 16u + 0x20000);
    refused("--extern-menu kg/menu.asm -o old.nes good.nes", "kg/menu.asm", " lies in the folder");
    WriteText(folder_ / "kg/build/game_title.asm", "mine");
    refused("-o old.nes good.nes", "kg/build/game_title.asm", ", which no build has left there");
    EXPECT_EQ(kept("build/game_title.asm"), "mine");
    EXPECT_EQ(Run("build --keep-work good.nes/x -o y.nes good.nes").exitCode, 1);
}

TEST_F(Commands, GamesAreNeverWrittenOver) {
    Image("games/one.nes", {1, 1, 0}, 1);
    Done("design convert -q --save design=one");
    Done("design render -q one.fcm -o p");
    for (const char* arguments :
         {"build -o old.nes --report games/one.nes games", "build -o games/one.nes games",
          "build -o GAMES/ONE.nes games/one.nes"})
        EXPECT_EQ(Run(arguments).exitCode, 1) << arguments;
    EXPECT_TRUE(ReadText(folder_ / "games/one.nes") == ImageBytes({1, 1, 0}, 1));
    for (const char* arguments :
         {"new --report one.fcm p.png one.fcm", "new --report new.fcm p.png"})
        ExpectRefused("design import-picture -o "s + arguments, "Choose another name.");
    Done("design import-picture -o ./one p.png one.fcm");

    fs::create_directory(folder_ / "nodir");
    ExpectRefused("build -o old.nes --extern-menu nodir/x/menu.asm games",
                  "Invalid external menu file: ");
    EXPECT_TRUE(fs::is_empty(folder_ / "nodir"));
}

TEST_F(Commands, WhatAKilledBuildLeavesIsRemoved) {
    const auto kill = [](const test::ChildProcess& child) { child.Kill(); };
    EXPECT_EQ(EndedBuild(kill), test::ChildProcess::kKilled);
    EXPECT_EQ(Leftovers(), 2);
    Done("build -o x.nes games/0.nes");
    EXPECT_EQ(Leftovers(), 0);
}

}  // namespace
}  // namespace bw
