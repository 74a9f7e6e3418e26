// Limits, permissions, languages, links and names that only POSIX systems have.
#include <csignal>

#include <unistd.h>

#include "cli/shell_fixture.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

// A console's Ctrl+C reaches no program under Wine that has no console.
TEST_F(ShellCommands, AnInterruptedBuildLeavesNothing) {
    for (const int number : {SIGINT, SIGHUP}) {
        EXPECT_EQ(EndedBuild([&](const auto& child) { child.Signal(number); }), 1);
        EXPECT_EQ(Leftovers(), 0);
    }
}

TEST_F(ShellCommands, AFullDiskLeavesNothing) {
    // One block of the limit is 512 bytes. The larger one stops the ROM, the smaller one the work
    // folder.
    const std::string build = "build --board coolgirl -o old.nes" + Images(17, "big", {128, 0, 4});
    ExpectRefusedAfter("trap '' XFSZ; ulimit -f 30000; ", build, "old.nes: File too large");
    ExpectRefusedAfter("trap '' XFSZ; ulimit -f 8; ", build, "nesasm: File too large");
}

TEST_F(ShellCommands, ProblemsAreWordedInBothLanguages) {
    const std::string nobody =
        geteuid() == 0 ? " setpriv --reuid=65534 --regid=65534 --clear-groups" : "";
    for (const char* name : {"good.nes", "locked.nes", "folder/locked/game.nes"})
        Image(name, {1, 1, 0});
    Done("design convert --save design=one");
    WriteText(folder_ / "big.chr", "");
    std::filesystem::resize_file(folder_ / "big.chr", 20 << 20);
    WriteText(folder_ / "locked.fcl", "[history]\r\n00000_check=1\r\n00000_path=" +
                                          (folder_ / "locked.nes").string() + "\r\ncount=1");
    const std::string work = "home/scratch/Temp/Bankweaver";
    for (const std::string& name : {std::string("folder.png/folder.nes"), work})
        std::filesystem::create_directories(folder_ / name);
    const auto permit = [&](const std::string& name, unsigned mode) {
        std::filesystem::permissions(folder_ / name, std::filesystem::perms{mode});
    };
    permit("", 0755);
    permit("home", 0777);
    permit(work, 0777);
    permit("locked.nes", 0);
    permit("folder/locked", 0);
    struct Reason {
        std::string english, chinese;
    };
    const Reason isFolder{"This is a folder, not a file", "这是文件夹，不是文件"};
    const Reason isFile{"This is a file, not a folder", "这是文件，不是文件夹"};
    const Reason denied{"Permission denied", "没有访问权限"};  // to a user who isn't root
    const Reason tooLarge{"The file has 20971520 bytes, at most 16777216 are allowed",
                          "文件为 20971520 字节，最多允许 16777216 字节"};
    const struct {
        std::string arguments, file;
        const Reason& reason;
    } cases[] = {
        {"design render one.fcm -o folder", "folder.png", isFolder},
        {"build -o folder.png/folder good.nes", "folder.png/folder.nes", isFolder},
        {"design convert --load background-tiles=big.chr --save design=new", "big.chr", tooLarge},
        {"export -d good.nes/x good.nes", "good.nes", isFile},
        {"design convert --save texts=new", "new.fct", denied},
        {"list -o new good.nes", "new.fcl", denied},
        {"build -o old.nes locked.nes", "locked.nes", denied},
        {"build -o old.nes locked.fcl", "locked.nes", denied},
        {"build -o old.nes folder/locked", "locked", denied},
        {"build -o old.nes folder", "folder/locked", denied},
        {"build -o old.nes --extern-menu locked.nes good.nes", "locked.nes", denied},
        {"build -o new good.nes", "new.nes", denied},
        {"export -d new good.nes", "new", denied},
    };
    const bool nobodyCan = RunAfter(nobody, "--version").exitCode == 0;  // may read the program
    for (const auto& [arguments, file, reason] : cases) {
        const bool asNobody = &reason == &denied;
        if (asNobody && !nobodyCan) continue;
        const std::string user = asNobody ? nobody : "";
        ExpectRefusedAfter(user, arguments, file + ": " + reason.english);
        ExpectRefusedAfter("LC_ALL=zh_CN.UTF-8" + user, arguments, file + ": " + reason.chinese);
    }
    permit("folder/locked", 0755);
    EXPECT_THAT(RunAfter("LC_ALL=zh_CN.UTF-8", "bild").err,
                AllOf(HasSubstr("未知命令“bild”"), Not(HasSubstr("help tells"))));
    EXPECT_THAT(RunAfter("LC_ALL=zh_CN.UTF-8", "info good.nes").out, Not(HasSubstr("Mirroring")));
    EXPECT_THAT(RunAfter("LC_ALL=zh_CN.UTF-8", "design check one.fcm good.nes").err, "没有问题\n");
}

TEST_F(ShellCommands, GamesBehindLinksAreNeverWrittenOver) {
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

    Image("kg/game.nes", {1, 1, 0}, 2);
    fs::create_directory_symlink("kg", folder_ / "link");
    ExpectRefused("build --keep-work kg -o link/menu.nes games",
                  "link/menu.nes lies in the folder");
    Done("build --keep-work kept -o x.nes games");
    fs::remove(folder_ / "kept/build/game_title.asm");
    fs::create_symlink("../../games/one.nes", folder_ / "kept/build/game_title.asm");
    ExpectRefused("build --keep-work kept -o old.nes games", "kept/build/game_title.asm, which");
}

TEST_F(ShellCommands, ListsAreRefusedThatWouldLoseAName) {
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

}  // namespace
}  // namespace bw
