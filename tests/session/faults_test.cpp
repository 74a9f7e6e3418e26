// What goes wrong around a window: it is killed, its settings are broken. The
// list outlives it all.
#include <chrono>
#include <csignal>
#include <thread>

#include <gmock/gmock.h>

#include "common/game_image.h"
#include "program.h"
#include "user_home.h"

namespace bw::test {
namespace {

using namespace std::chrono_literals;

constexpr int kMessageText = 1083;
constexpr int kOkButton = 1;
constexpr int kYesButton = 6;

class Faults : public testing::Test {
  protected:
    static void SetUpTestSuite() { desktop = std::make_unique<Desktop>(); }
    static void TearDownTestSuite() { desktop.reset(); }

    std::unique_ptr<Program> Start(std::vector<std::string> words = {}) {
        return std::make_unique<Program>(*desktop, home.Path(), std::move(words));
    }
    static std::unique_ptr<Desktop> desktop;
    UserHome home;
};
std::unique_ptr<Desktop> Faults::desktop;

// What stands in the status line, with the words that a mouse on it reads.
Wanted Told(const std::string& words) {
    return [words](const Seen& seen) {
        return seen.id == "status_told" && seen.value.find(words) != std::string::npos;
    };
}

TEST_F(Faults, AKilledWindowGivesItsListBackAtTheNextStart) {
    home.RememberNames({"old"});
    const auto kept = home / "data/lists/list_1.kept";
    auto killed = Start({Sample("samples.fcl")});
    killed->Await("the games", Rows(7));
    killed->Await("a kept list", [&](const Seen&) { return std::filesystem::exists(kept); });
    killed->Process().Signal(SIGKILL);
    killed->AwaitEnd();
    // The next kill comes before that start has read anything, or in the middle of it.
    for (const auto moment : {30ms, 150ms, 400ms}) {
        const auto program = Start();
        std::this_thread::sleep_for(moment);
        program->Process().Signal(SIGKILL);
        program->AwaitEnd();
    }
    const auto next = Start();
    next->Await("the list", Rows(7));
    next->Await("what came back", Told("is back: 7 game(s)"));
    // One that starts beside it begins with the list of the last exit.
    const auto beside = Start();
    beside->Await("the remembered list", Rows(1));
    beside->Process().Signal(SIGTERM);
    beside->AwaitEnd();
    next->Process().Signal(SIGTERM);
    next->AwaitEnd();
    const auto last = Start();
    last->Await("the list of the last exit", Rows(7));
    for (const auto& file : std::filesystem::directory_iterator(kept.parent_path()))
        EXPECT_EQ(file.path().extension(), ".lock") << file.path();
}

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
}

// What a file dialog writes is the old file or the new one, whenever the kill comes.
TEST_F(Faults, AKillDuringABuildOrASaveLeavesNoHalfFile) {
    home.RememberNames(ManyNames(3000));
    const std::vector<uint8_t> before = home.History();
    for (const auto moment : {0ms, 20ms, 100ms}) {
        for (const bool save : {true, false}) {
            const std::string file = home / (save ? "list.fcl" : "cart.nes");
            WriteText(file, "of last week");
            std::filesystem::remove_all(home / "data");  // the list of the kill before
            const auto program = Start({Sample("samples.fcl")});
            program->Await("the games", Rows(3006));
            if (save)
                desktop->Key("ctrl+s");
            else
                program->Click("the button that builds", Control(40093));
            program->EnterFileName(file);
            program->Click("the question about the old file", Button("&Yes"));
            std::this_thread::sleep_for(moment);
            program->Process().Signal(SIGKILL);
            program->AwaitEnd();
            const std::string left = ReadText(file);
            const bool whole = save ? left.ends_with("count=3006") : left.size() % 0x4000 == 16;
            EXPECT_TRUE(left == "of last week" || whole) << file << ", " << left.size();
            EXPECT_EQ(home.History(), before);
        }
    }
}

// The window opens, says once that it can't store anything, and goes on; before it ends it offers
// to save the list elsewhere.
TEST_F(Faults, SettingsThatAreGarbageAreToldOfAndTheListIsRescued) {
    const std::string garbage(5000, '#');
    WriteText(home.SettingsFile(), garbage);
    const auto program = Start({Sample("cnrom_check.nes"), Sample("mmc1_check.nes")});
    program->Await("the games", Rows(2));
    program->Click("the warning", Control(kOkButton));
    program->AwaitGone("the warning", Control(kMessageText));
    desktop->Key("ctrl+q");
    program->Click("the offer to save the list", Control(kYesButton));
    program->EnterFileName(home / "rescued.fcl");
    EXPECT_EQ(program->AwaitEnd(), 0) << program->Words();
    EXPECT_THAT(ReadText(home / "rescued.fcl"), testing::HasSubstr("00001_name=mmc1_check"));
    EXPECT_EQ(ReadText(home.SettingsFile()), garbage) << "somebody may still want to mend it";
}

}  // namespace
}  // namespace bw::test
