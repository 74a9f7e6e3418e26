// The user's files: what no command may write over, lose or leave lying about.
#include <chrono>
#include <csignal>
#include <thread>

#include "cli/command_fixture.h"
#include "common/child_process.h"

namespace bw {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

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
    fs::create_directory_symlink("kg", folder_ / "link");
    refused("-o link/menu.nes good.nes", "link/menu.nes", " lies in the folder");

    Done("build --keep-work kg -o x.nes --number good.nes");
    Done("build --keep-work kg -o x.nes good.nes");
    const auto kept = [&](const std::string& file) { return ReadText(folder_ / "kg" / file); };
    EXPECT_THAT(kept("build/game_list_0.asm"), Not(HasSubstr("1.GOOD"))) << "of the first build";
    EXPECT_EQ(kept("menu.nes").size(), 16u + 0x20000);
    refused("--extern-menu kg/menu.asm -o old.nes good.nes", "kg/menu.asm", " lies in the folder");
    WriteText(folder_ / "kg/build/game_title.asm", "mine");
    refused("-o old.nes good.nes", "kg/build/game_title.asm", ", which no build has left there");
    EXPECT_EQ(kept("build/game_title.asm"), "mine");
    fs::remove(folder_ / "kg/build/game_title.asm");
    fs::create_symlink("../../good.nes", folder_ / "kg/build/game_title.asm");
    refused("-o old.nes good.nes", "kg/build/game_title.asm", ", which");
    EXPECT_EQ(Run("build --keep-work good.nes/x -o y.nes good.nes").exitCode, 1);
}

TEST_F(Commands, GamesAreNeverWrittenOver) {
    Image("games/one.nes", {1, 1, 0}, 1);
    fs::create_directory(folder_ / "out");
    for (const char* link : {"report.json", "list.fcl", "out/game_title.asm", "picture.png"})
        fs::create_symlink(folder_ / "games/one.nes", folder_ / link);
    Done("design convert -q --save design=one");
    Done("list -q -o all games");
    for (const char* arguments :
         {"build -o old.nes --report report.json games",
          "build -o old.nes --report report.json all.fcl",
          "build -o old.nes --report games/one.nes games", "build -o games/one.nes games",
          "list -o list games", "export -d out games", "design render one.fcm -o picture all.fcl"})
        ExpectRefused(arguments, "games/one.nes. Choose another name.");
    EXPECT_TRUE(ReadText(folder_ / "games/one.nes") == ImageBytes({1, 1, 0}, 1));

    Done("design render -q one.fcm -o p");
    fs::create_symlink("p.png", folder_ / "link.fcm");
    fs::create_symlink("one.fcm", folder_ / "alias.fcm");
    for (const char* arguments :
         {"link.fcm p.png", "alias.fcm p.png one.fcm", "new --report one.fcm p.png one.fcm",
          "new --report new.fcm p.png"})
        ExpectRefused("design import-picture -o "s + arguments, "Choose another name.");
    Done("design import-picture -o ./one p.png one.fcm");

    fs::create_directory(folder_ / "nodir");
    ExpectRefused("build -o old.nes --extern-menu nodir/x/menu.asm games",
                  "Invalid external menu file: ");
    EXPECT_TRUE(fs::is_empty(folder_ / "nodir"));
}

TEST_F(Commands, ListsAreRefusedThatWouldLoseAName) {
    for (const char* name : {"line\nbreak.nes", "\xFF.nes", "\x1B[31mred.nes", "\xC2\x9B.nes"})
        Image(name, {1, 1, 0});
    for (const char* arguments : {"list -o new .", "list .", "list --json .", "info nothing\x1B[0m",
                                  "build -o x.nes .", "build -o no/folder/x ."}) {
        const RunResult run = Run(arguments);
        EXPECT_EQ((run.out + run.err).find_first_of("\x1B\x9B"), std::string::npos) << arguments;
        EXPECT_FALSE(fs::exists(folder_ / "new.fcl"));
    }
    EXPECT_THAT(Run("list -o new .").err,
                AllOf(HasSubstr("Entry 2 (line?break, "), HasSubstr("Entry 5 ("),
                      Not(HasSubstr("Entry 1 ("))));
}

// Killed at once and stopped in time, while 60 games of 2 MB are written.
TEST_F(Commands, WhatAKilledBuildLeavesIsRemoved) {
    fs::create_directory(folder_ / "games");
    for (int i = 0; i < 60; ++i) {
        const fs::path game = folder_ / "games" / (std::to_string(i) + ".nes");
        WriteText(game, test::Header({128, 0, 0x40}) + std::to_string(i));
        fs::resize_file(game, 16 + (2 << 20));
    }
    // The status of a build that gets the signal while it writes. One that was quicker tries again.
    const auto build = [&](int signal) {
        const test::ChildCommand command{
            .words = {BANKWEAVER_CLI, "build", "--board", "coolgirl", "-o", "x.nes", "games"},
            .environment = {"BANKWEAVER_HOME=" + (folder_ / "home").string()},
            .workingFolder = folder_.Path(),
            .logFile = folder_ / "stdout.txt"};
        int status = 0;
        for (int i = 0; i < 5 && status == 0; ++i) {
            auto child = test::ChildProcess::Start(command);
            while (Leftovers() < 2 && !child->WaitFor(0ms)) {
            }
            child->Signal(signal);
            EXPECT_TRUE(child->WaitFor(10s));
            status = child->Status();
        }
        return status;
    };
    EXPECT_EQ(build(SIGHUP), 1);
    EXPECT_EQ(Leftovers(), 0);
    EXPECT_EQ(build(SIGKILL), 128 + SIGKILL);
    EXPECT_EQ(Leftovers(), 2);
    Done("build -o x.nes games/0.nes");
    EXPECT_EQ(Leftovers(), 0);
}

}  // namespace
}  // namespace bw
