// What goes wrong around a window: it is killed, its display goes, its settings are broken or
// full of nonsense, an expression never ends. The list outlives it all.
#include <chrono>
#include <csignal>
#include <thread>

#include <gmock/gmock.h>
#include <sqlite3.h>

#include "common/file_size_limit.h"
#include "common/game_image.h"
#include "language/language.h"
#include "program.h"
#include "support/text.h"
#include "user_home.h"

namespace bw::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

constexpr int kMessageText = 1083;
constexpr int kOkButton = 1;
constexpr int kYesButton = 6;
constexpr int kFindBox = 1032;
constexpr int kRegexButton = 1035;
constexpr int kReplaceAllButton = 40031;

std::string English(TextId id) {
    return ToUtf8(LoadText(id, Language::kEnglish));
}

std::string Sample(const std::string& name) {
    return (std::filesystem::path(BANKWEAVER_SAMPLES) / name).string();
}

class Faults : public testing::Test {
  protected:
    static void SetUpTestSuite() { desktop = std::make_unique<Desktop>(); }
    static void TearDownTestSuite() { desktop.reset(); }

    std::unique_ptr<Program> Start(std::vector<std::string> words = {}) {
        return std::make_unique<Program>(*desktop, home.Path(), std::move(words));
    }
    // As the system does it when the session ends.
    static void End(Program& program) {
        program.Process().Signal(SIGTERM);
        EXPECT_EQ(program.AwaitEnd(), 128 + SIGTERM) << program.Words();
    }

    // In the file dialog that opens.
    static void ReplaceFile(Program& program, const std::string& file) {
        program.EnterFileName(file);
        program.Click("the question about the old file", [](const Seen& seen) {
            return seen.type == "QPushButton" && seen.value == "&Yes";
        });
    }

    static std::unique_ptr<Desktop> desktop;
    UserHome home;
};
std::unique_ptr<Desktop> Faults::desktop;

TEST_F(Faults, AKillAtTheStartLeavesTheListOfTheLastExit) {
    home.RememberNames(ManyNames(3000));
    const std::vector<uint8_t> before = home.History();
    for (const auto moment : {10ms, 60ms, 120ms, 200ms, 300ms, 450ms, 700ms}) {
        const auto program = Start();
        std::this_thread::sleep_for(moment);
        program->Process().Signal(SIGKILL);
        program->AwaitEnd();
        ASSERT_EQ(home.History(), before) << moment.count() << " ms after the start";
    }
    const auto program = Start();
    program->Await("the list", Rows(3000));
    End(*program);
    EXPECT_EQ(home.RememberedNames(), ManyNames(3000));
}

// What a file dialog writes is the old file or the new one, whenever the kill comes.
TEST_F(Faults, AKillDuringABuildOrASaveLeavesNoHalfFile) {
    home.RememberNames(ManyNames(3000));
    for (const auto moment : {0ms, 20ms, 100ms}) {
        for (const bool save : {true, false}) {
            const std::string file = home / (save ? "list.fcl" : "cart.nes");
            WriteText(file, "of last week");
            const auto program = Start({Sample("samples.fcl")});
            program->Await("the games", Rows(3006));
            if (save)
                desktop->Key("ctrl+s");
            else
                program->Click("the button that builds", Control(40093));
            ReplaceFile(*program, file);
            std::this_thread::sleep_for(moment);
            program->Process().Signal(SIGKILL);
            program->AwaitEnd();
            const std::string left = ReadText(file);
            const bool whole = save ? left.ends_with("count=3006") : left.size() % 0x4000 == 16;
            EXPECT_TRUE(left == "of last week" || whole) << file << ", " << left.size();
            EXPECT_THAT(home.RememberedNames(), SizeIs(3000));
        }
    }
}

TEST_F(Faults, OfTwoWindowsTheLastToCloseIsRemembered) {
    home.RememberNames({"first"});
    const auto one = Start({Sample("cnrom_check.nes")});
    const auto other = Start({Sample("mmc1_check.nes")});
    one->Await("both games", Rows(2));
    other->Await("both games", Rows(2));
    End(*other);
    End(*one);
    EXPECT_THAT(home.RememberedNames(), ElementsAre("first", "cnrom_check"));
}

// The window opens, says once that it can't store anything, and goes on; before it ends it offers
// to save the list elsewhere.
class NoSettings : public Faults {
  protected:
    void LiveWithout() {
        const auto program = Start({Sample("cnrom_check.nes"), Sample("mmc1_check.nes")});
        program->Await("the games", Rows(2));
        program->Click("the warning", Control(kOkButton));
        program->AwaitGone("the warning", Control(kMessageText));
        program->Click("the button that checks all", Control(1010));
        program->Await("a check",
                       [](const Seen& seen) { return Cell(1, 0)(seen) && seen.Checked(); });
        Rescue(*program);
        EXPECT_THAT(ReadText(home / "rescued.fcl"), HasSubstr("00001_name=mmc1_check"));
    }
    // Exits, and saves the list to a file when that is offered.
    void Rescue(Program& program) {
        program.Menu({English(TextId::kFileEntry), English(TextId::kExitEntry)});
        program.Click("the offer to save the list", Control(kYesButton));
        program.EnterFileName(home / "rescued.fcl");
        EXPECT_EQ(program.AwaitEnd(), 0) << program.Words();
    }
};

TEST_F(NoSettings, BecauseTheFileIsGarbage) {
    const std::string garbage(5000, '#');
    WriteText(home.SettingsFile(), garbage);
    LiveWithout();
    EXPECT_EQ(ReadText(home.SettingsFile()), garbage) << "somebody may still want to mend it";
}

TEST_F(NoSettings, BecauseTheFileIsLocked) {
    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open(home.SettingsFile().c_str(), &other), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
    LiveWithout();
    sqlite3_close(other);
}

TEST_F(NoSettings, BecauseTheDiskIsFull) {
    home.RememberNames(ManyNames(300));
    const std::vector<uint8_t> before = home.History();
    std::unique_ptr<Program> program;
    {
        // A list file fits. The settings' file would take some pages more for the same list.
        const FileSizeLimit limit(before.size() + 4000);
        program = Start({Sample("mmc1_check.nes")});
    }
    program->Await("the games", Rows(301));
    Rescue(*program);
    EXPECT_THAT(ReadText(home / "rescued.fcl"), HasSubstr("00300_name=mmc1_check"));
    EXPECT_EQ(home.History(), before);
}

TEST_F(Faults, AHistoryOfNonsenseOpensAllTheSame) {
    home.Remember(
        "[history]\r\ncount=4\r\n00000_name=\xFF\xFE\xC0"
        "broken\r\n00001_name=whole\r\n"
        "00002_path=\xED\xA0\x80"
        "\r\n[list_view\r\nlist_view_col_00001_width=9999999\r\n");
    const auto program = Start();
    program->Await("the rows", Rows(4));
    EXPECT_EQ(program->Await("a name", Cell(1, 1)).name, "whole");
    End(*program);
    EXPECT_THAT(home.RememberedNames(), SizeIs(4));
}

TEST_F(Faults, OfAMillionGamesAsManyComeInAsAListHolds) {
    std::string history = "[history]\r\n";
    for (int i = 0; i < 1'000'000; ++i) {
        const std::string number = std::to_string(i);
        history.append(number.size() < 5 ? 5 - number.size() : 0, '0');
        history.append(number).append("_name=Game ").append(number).append("\r\n");
    }
    home.Remember(history + "count=1000000");
    const auto start = std::chrono::steady_clock::now();
    const auto program = Start();
    program->Await("the window", MainWindow());
    EXPECT_LT(std::chrono::steady_clock::now() - start, 20s);
    program->Await("the limit's words", [](const Seen& seen) {
        return seen.value.find("20000") != std::string::npos && Control(kMessageText)(seen);
    });
    program->Click("the message's button", Control(kOkButton));
    program->Await("as many rows as a list holds", Rows(20000));
    End(*program);
}

TEST_F(Faults, FilesThatAreNoGamesAddNothing) {
    WriteText(home / "other.fcl", "<playlist><song>la la la</song></playlist>");
    WriteText(home / "short.nes", "NES");
    const auto program =
        Start({(home / "other.fcl").string(), (home / "short.nes").string(), home.Path().string(),
               "/nowhere/at_all.nes", Sample("mmc1_check.nes")});
    program->Await("the one game", Rows(1));
    EXPECT_EQ(program->Await("its name", Cell(0, 1)).name, "mmc1_check");
    End(*program);
}

TEST_F(Faults, AnEndlessExpressionCanBeStopped) {
    const std::vector<std::string> names{std::string(200, 'a') + "!", "b"};
    home.RememberNames(names);
    const auto program = Start();
    program->Await("the rows", Rows(2));
    desktop->Key("ctrl+f");
    program->Click("the box for what to find", Control(kFindBox));
    program->Retype("^(a|a)*$");
    program->Click("the choice of expressions", Control(kRegexButton));
    program->Click("the button that replaces", Control(kReplaceAllButton));
    const Wanted stop = [](const Seen& seen) {
        return ById("status_stop")(seen) && seen.Enabled();
    };
    program->Await("the button that stops", stop);
    for (int i = 0; i < 10; ++i) {
        const auto asked = std::chrono::steady_clock::now();
        program->Look();
        EXPECT_LT(std::chrono::steady_clock::now() - asked, 2s) << "the window stands still";
        std::this_thread::sleep_for(50ms);
    }
    program->Click("the button that stops", stop);
    program->AwaitGone("the button that stops", stop);
    End(*program);
    EXPECT_EQ(home.RememberedNames(), names);
}

TEST_F(Faults, AHiddenWindowComesBackWhenItsTrayGoes) {
    home.Store()->RegWriteDword(kMainKey, "CloseState", 0);
    const auto program = Start({Sample("cnrom_check.nes")});
    program->Await("the tray icon", TrayIcon());
    program->Await("the game", Rows(1));
    desktop->Key("alt+F4");
    program->AwaitGone("the window", MainWindow());
    desktop->RemoveTray();
    program->Await("the window", MainWindow());
    desktop->ShowTray();
    program->Await("the tray icon", TrayIcon());
    End(*program);
}

TEST_F(Faults, ALostDisplayEndsTheProgramAndKeepsTheList) {
    Desktop own;
    Program program(own, home.Path(), {Sample("cnrom_check.nes")});
    program.Await("the game", Rows(1));
    own.KillDisplay();
    const int status = program.AwaitEnd();
    EXPECT_LT(status, 128) << "ended by a signal\n" << program.Words();
    EXPECT_THAT(home.RememberedNames(), ElementsAre("cnrom_check"));
}

}  // namespace
}  // namespace bw::test
