// The whole program, ended from outside in every way that it can notice.
#include <csignal>

#include <gmock/gmock.h>

#include "common/child_process.h"
#include "common/game_image.h"
#include "common/temporary_folder.h"
#include "common/virtual_display.h"
#include "list/remembered_list.h"
#include "settings/settings_store.h"

namespace bw {
namespace {

using namespace std::chrono_literals;
using test::ChildProcess;

constexpr auto kPatience = 60s;

class Program : public testing::Test {
  protected:
    Program() { test::WriteText(folder_ / "two.fcl", "[history]\r\ncount=2"); }
    std::optional<ChildProcess> Start(std::vector<std::string> environment) {
        environment.push_back("BANKWEAVER_HOME=" + home_.string());
        return ChildProcess::Start({.words = {BANKWEAVER_PROGRAM, "two.fcl"},
                                    .environment = std::move(environment),
                                    .workingFolder = folder_.Path(),
                                    .logFile = log_});
    }
    // Of the list that the settings remember.
    size_t RememberedGames() const {
        const auto store = MakeSqliteStore(settings_);
        const auto text = ReadWholeBinary(*store, kHistoryKey, kHistoryValue);
        return LoadRememberedList(text, "/").games.size();
    }
    // Waits until the program has worked off its start, which shows in the settings that it writes.
    void WaitForStart(ChildProcess& program) const {
        const auto store = MakeSqliteStore(settings_);
        uint32_t size = 0;
        while (!store->RegReadDword(kMainKey, "PageSize", size))
            ASSERT_FALSE(program.WaitFor(20ms)) << Log();
        program.WaitFor(1s);
    }
    std::string Log() const { return test::ReadText(log_); }

    TemporaryFolder folder_;
    std::filesystem::path home_ = folder_ / "home";
    std::filesystem::path settings_ = home_ / "config/settings.sqlite3";
    std::filesystem::path log_ = folder_ / "log";
};

TEST_F(Program, SignalsStoreTheListAndEndIt) {
    size_t expected = 0;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        auto program = Start({"QT_QPA_PLATFORM=offscreen"});
        WaitForStart(*program);
        program->Signal(signal);
        ASSERT_TRUE(program->WaitFor(kPatience));
        EXPECT_EQ(program->Status(), 128 + signal) << Log();
        EXPECT_EQ(RememberedGames(), expected += 2);
    }
}

TEST_F(Program, ADisplayThatGoesAwayLeavesTheListStored) {
    test::VirtualDisplay display("800x600");
    ASSERT_EQ(display.Problem(), "");
    auto program = Start({"DISPLAY=" + display.Name(), "QT_QPA_PLATFORM=xcb"});
    WaitForStart(*program);
    display.Kill();
    ASSERT_TRUE(program->WaitFor(kPatience)) << "hangs";
    EXPECT_EQ(program->Status(), 1) << Log();
    EXPECT_EQ(RememberedGames(), 2u);
}

TEST_F(Program, NoDisplayIsNoCrash) {
    auto program = Start({"DISPLAY=:nowhere", "QT_QPA_PLATFORM=xcb"});
    ASSERT_TRUE(program->WaitFor(kPatience));
    EXPECT_EQ(program->Status(), 3);
    EXPECT_THAT(Log(), testing::HasSubstr("bankweaver-cli"));
}

TEST_F(Program, SettingsThatCannotBeUsedCostNoList) {
    std::filesystem::create_directories(home_ / "config");
    test::WriteText(settings_, std::string(4096, 'x'));
    auto program = Start({"QT_QPA_PLATFORM=offscreen"});
    EXPECT_FALSE(program->WaitFor(2s)) << Log();
    program->Signal(SIGTERM);
    ASSERT_TRUE(program->WaitFor(kPatience));
    EXPECT_TRUE(std::filesystem::exists(home_ / "config/rescued_list_1.fcl")) << Log();
}

}  // namespace
}  // namespace bw
