// The road to an emulator and back, on every system, with a program of the tests at its end.
#include "console/piped_process.h"

#include <chrono>
#include <thread>

#include <gmock/gmock.h>

#include "common/child_process.h"
#include "common/environment_variable.h"
#include "common/game_image.h"
#include "common/temporary_folder.h"
#include "console/emulator.h"
#include "support/process.h"

namespace bw {
namespace {

using namespace std::chrono_literals;
using std::chrono::milliseconds;
using test::ReadText;
using testing::HasSubstr;
using Clock = std::chrono::steady_clock;

class PipedProcessTest : public testing::Test {
  protected:
    PipedProcessTest() { std::filesystem::create_directory(home_); }
    bool Start(const std::string& deeds) {
        return process_.Start({.program = BANKWEAVER_PIPED_CHILD,
                               .environment = {"BANKWEAVER_DEEDS=" + deeds},
                               .folder = home_,
                               .log = home_ / "log"});
    }
    std::string Read(size_t size) {
        std::string bytes(size, '\0');
        return process_.Read(bytes, 20s, {}) == PipeEnd::kDone ? bytes : "none";
    }
    // On Linux a dead entry stays where nobody collects the end of another's child.
    static bool Gone(int64_t id) {
        const auto runs = [&] {
            return ProcessRuns(static_cast<uint32_t>(id)) &&
                   ReadText("/proc/" + std::to_string(id) + "/stat").find(") Z ") ==
                       std::string::npos;
        };
        for (int i = 0; i < 500 && runs(); ++i)
            std::this_thread::sleep_for(10ms);
        return !runs();
    }

    TemporaryFolder folder_;
    std::filesystem::path home_ = folder_ / std::filesystem::path(u"家 of it");
    PipedProcess process_;
    char byte_[1];
};

TEST_F(PipedProcessTest, OrdersGoThereAndAnswersComeBack) {
    ASSERT_TRUE(Start("say hello;fill 300000;echo over"));
    EXPECT_EQ(process_.AwaitBytes(20s, {}), PipeEnd::kDone);
    EXPECT_EQ(Read(300000), std::string(300000, 'x'));
    for (const std::string order : {"one\n", "another\n"}) {
        EXPECT_EQ(process_.Write(order, 20s, {}), PipeEnd::kDone);
        EXPECT_EQ(Read(5 + order.size()), "echo " + order);
    }
    EXPECT_EQ(process_.AwaitBytes(50ms, {}), PipeEnd::kSilent);
    // Its last order reaches it, and what it still answers holds nobody.
    EXPECT_EQ(process_.Write("last\n", 20s, {}), PipeEnd::kDone);
    const int64_t id = process_.Id();
    process_.End(20s);
    EXPECT_EQ(ReadText(home_ / "over"), "last\n");
    EXPECT_THAT(ReadText(home_ / "log"), testing::StartsWith("hello"));
    EXPECT_TRUE(Gone(id));
    EXPECT_EQ(process_.Write("x", 20s, {}), PipeEnd::kClosed);
}

TEST_F(PipedProcessTest, EndsSilenceAndStopsAreToldApart) {
    const auto wait = [&](milliseconds patience) { return process_.Read(byte_, patience, {}); };
    for (const char* deeds : {"exit 1", "answer x;exit 1"}) {
        ASSERT_TRUE(Start(deeds));
        EXPECT_EQ(wait(20s), deeds[0] == 'a' ? PipeEnd::kDone : PipeEnd::kClosed);
        EXPECT_EQ(wait(20s), PipeEnd::kClosed);
    }
    for (const char* deeds : {"wait", "answer x;wait"}) {  // with its ends open, and never opened
        ASSERT_TRUE(Start(deeds));
        EXPECT_EQ(wait(deeds[0] == 'a' ? 20s : 100ms),
                  deeds[0] == 'a' ? PipeEnd::kDone : PipeEnd::kSilent);
        EXPECT_EQ(wait(100ms), PipeEnd::kSilent);
        std::stop_source stop;
        const std::jthread stopper([&] {
            std::this_thread::sleep_for(50ms);
            stop.request_stop();
        });
        EXPECT_EQ(process_.AwaitBytes(20s, stop.get_token()), PipeEnd::kStopped);
    }
    const int64_t id = process_.Id();
    const auto start = Clock::now();
    process_.End(100ms);
    EXPECT_LT(Clock::now() - start, 10s);
    EXPECT_TRUE(Gone(id));
    EXPECT_FALSE(process_.Start({.program = home_ / "none", .folder = home_, .log = home_ / "l"}));
}

TEST_F(PipedProcessTest, ItRestsUntilItIsWanted) {
    ASSERT_TRUE(Start("tick"));
    EXPECT_EQ(Read(3), "...");
    const auto ticksOf = [&](bool rests) {
        if (rests) process_.Rest();
        std::this_thread::sleep_for(1s);
        size_t ticks = 0;
        while (process_.Read(byte_, 0ms, {}) == PipeEnd::kDone && ticks < 1000)
            ++ticks;
        return ticks;
    };
    const size_t awake = ticksOf(false);
    EXPECT_LT(ticksOf(true), awake / 2);
    EXPECT_EQ(Read(3), "...");
}

TEST_F(PipedProcessTest, ItDiesWithItsHost) {
    const test::ChildCommand host{.words = {BANKWEAVER_PIPED_CHILD},
                                  .environment = {"BANKWEAVER_DEEDS=host"},
                                  .workingFolder = folder_.Path(),
                                  .logFile = folder_ / "host.log"};
    auto child = test::ChildProcess::Start(host);
    ASSERT_TRUE(child);
    for (int i = 0; i < 2000 && !exists(folder_ / "hosted"); ++i)
        std::this_thread::sleep_for(10ms);
    const std::string id = ReadText(folder_ / "hosted");
    ASSERT_GT(std::atoll(id.c_str()), 0);
    EXPECT_TRUE(ProcessRuns(static_cast<uint32_t>(std::stoul(id))));
    child->Kill();
    EXPECT_TRUE(Gone(std::stoll(id)));
}

TEST(Console, OutlivesABadEmulator) {
    using enum ConsoleProblem::Kind;
    const TemporaryFolder folder;
    const EnvironmentVariable home("BANKWEAVER_HOME", folder.Path());
    const std::filesystem::path rom = folder / "a game's file.nes";
    test::WriteText(rom, test::ImageBytes({}, 1));
    {
        const EnvironmentVariable none("BANKWEAVER_FCEUX", folder / "emulator");
        EXPECT_FALSE(FindEmulator());
    }
    const EnvironmentVariable chosen("BANKWEAVER_FCEUX", BANKWEAVER_PIPED_CHILD);
    // What it does, and what is told of it. "BWC1+00000000" says that it is ready.
    const std::tuple<const char*, ConsoleProblem::Kind, std::string> kinds[] = {
        {"say no library;exit 1", kNotStarted, "no library"},
        {"wait", kSilent, ""},
        {"answer rubbish without an end", kGarbled, ""},
        {"answer BWC1+00000000;take;say went wrong;exit 9", kEnded, "went wrong"},
        {"answer BWC1+00000000BWC1+00FF0000half;take;wait", kSilent, ""},
        {"answer BWC1+00000000BWC1+00000008one two\n;take;wait", kGarbled, ""},
        {"answer BWC1+00000000BWC1+FFFFFFFF;take;wait", kGarbled, ""}};
    for (const auto& [does, kind, words] : kinds) {
        SCOPED_TRACE(does);
        const EnvironmentVariable deeds("BANKWEAVER_DEEDS", does);
        auto console = FindEmulator()->Start({.rom = rom, .patience = 1000ms});
        ConsoleProblem problem;
        if (!console) {
            problem = console.Problem();
        } else {
            const auto run = (*console)->Run({.picture = true});
            ASSERT_FALSE(run);
            problem = run.Problem();
            EXPECT_EQ((*console)->Reset().Problem().kind, problem.kind);
        }
        EXPECT_EQ(problem.kind, kind);
        EXPECT_THAT(problem.detail, HasSubstr(words));
    }
    std::stop_source stop;
    const std::jthread stopper([&] {
        std::this_thread::sleep_for(100ms);
        stop.request_stop();
    });
    const EnvironmentVariable deeds("BANKWEAVER_DEEDS", "wait");
    const auto stopped = FindEmulator()->Start({.rom = rom, .stop = stop.get_token()});
    EXPECT_EQ(stopped.Problem().kind, kStopped);
}

}  // namespace
}  // namespace bw
