// The whole program, ended from outside in every way that it can notice.
#include <csignal>
#include <thread>

#include <gmock/gmock.h>

#include "common/child_process.h"
#include "common/temporary_folder.h"
#include "common/virtual_display.h"
#include "list/remembered_list.h"
#include "settings/settings_store.h"
#include "support/files.h"

namespace bw {
namespace {

using namespace std::chrono_literals;
using test::ChildCommand;
using test::ChildProcess;

constexpr auto kPatience = 60s;

class Program : public testing::Test {
  protected:
    std::optional<ChildProcess> Start(std::vector<std::string> words,
                                      std::vector<std::string> environment) {
        words.insert(words.begin(), BANKWEAVER_PROGRAM);
        environment.push_back("BANKWEAVER_HOME=" + home_.string());
        ChildCommand command{std::move(words), std::move(environment), folder_.Path(), log_};
        return ChildProcess::Start(command);
    }

    // The list that the settings remember; nothing if they remember none.
    std::optional<size_t> RememberedGames() const {
        const auto store = MakeSqliteStore(home_ / "config/settings.sqlite3");
        const auto text = ReadWholeBinary(*store, kHistoryKey, kHistoryValue);
        if (text.empty()) return std::nullopt;
        return LoadRememberedList(text, "/").games.size();
    }

    // Waits until the program has worked off its start, which shows in the settings that it writes.
    void WaitForStart(ChildProcess& program) const {
        const auto store = MakeSqliteStore(home_ / "config/settings.sqlite3");
        uint32_t size = 0;
        for (auto left = kPatience / 20ms; left > 0; --left) {
            if (store->RegReadDword(kMainKey, "PageSize", size)) break;
            ASSERT_FALSE(program.WaitFor(20ms)) << Log();
        }
        program.WaitFor(1s);
    }

    std::string Log() const {
        const auto bytes = ReadFile(log_);
        return bytes ? std::string(bytes->begin(), bytes->end()) : "";
    }

    TemporaryFolder folder_;
    std::filesystem::path home_ = folder_ / "home";
    std::filesystem::path log_ = folder_ / "log";
};

// Two games in a list file; the images needn't be there.
constexpr std::string_view kTwoGames =
    "[history]\r\n00000_check=1\r\n00000_name=One\r\n00000_path=/one.nes\r\n"
    "00001_check=1\r\n00001_name=Two\r\n00001_path=/two.nes\r\ncount=2";

TEST_F(Program, SignalsStoreTheListAndEndIt) {
    WriteFile(folder_ / "two.fcl", kTwoGames);
    size_t expected = 2;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        auto program = Start({"two.fcl"}, {"QT_QPA_PLATFORM=offscreen"});
        ASSERT_TRUE(program);
        WaitForStart(*program);
        program->Signal(signal);
        ASSERT_TRUE(program->WaitFor(kPatience));
        EXPECT_EQ(program->Status(), 128 + signal) << Log();
        EXPECT_EQ(RememberedGames(), expected);
        expected += 2;
    }
}

TEST_F(Program, ADisplayThatGoesAwayLeavesTheListStored) {
    WriteFile(folder_ / "two.fcl", kTwoGames);
    test::VirtualDisplay display("800x600");
    ASSERT_EQ(display.Problem(), "");
    auto program = Start({"two.fcl"}, {"DISPLAY=" + display.Name(), "QT_QPA_PLATFORM=xcb"});
    ASSERT_TRUE(program);
    WaitForStart(*program);
    display.Kill();
    ASSERT_TRUE(program->WaitFor(kPatience)) << "hangs";
    EXPECT_EQ(program->Status(), 1) << Log();
    EXPECT_EQ(RememberedGames(), 2u);
}

TEST_F(Program, NoDisplayIsNoCrash) {
    auto program = Start({}, {"DISPLAY=:nowhere", "QT_QPA_PLATFORM=xcb"});
    ASSERT_TRUE(program && program->WaitFor(kPatience));
    EXPECT_EQ(program->Status(), 1);
    EXPECT_THAT(Log(), testing::HasSubstr("display"));
}

TEST_F(Program, SettingsThatCannotBeUsedCostNoList) {
    std::filesystem::create_directories(home_ / "config");
    const std::string garbage(4096, 'x');
    WriteFile(home_ / "config/settings.sqlite3", garbage);
    WriteFile(folder_ / "two.fcl", kTwoGames);
    auto program = Start({"two.fcl"}, {"QT_QPA_PLATFORM=offscreen"});
    ASSERT_TRUE(program);
    EXPECT_FALSE(program->WaitFor(2s)) << Log();
    program->Signal(SIGTERM);
    ASSERT_TRUE(program->WaitFor(kPatience));
    EXPECT_TRUE(std::filesystem::exists(home_ / "config/rescued_list_1.fcl")) << Log();
    const auto bytes = ReadFile(home_ / "config/settings.sqlite3");
    ASSERT_TRUE(bytes);
    EXPECT_EQ(std::string(bytes->begin(), bytes->end()), garbage);
}

}  // namespace
}  // namespace bw
