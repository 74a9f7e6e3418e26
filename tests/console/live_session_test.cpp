// The session's own work: its pace, its orders, its ends.
#include "console/live_session.h"

#include <functional>

#include <gmock/gmock.h>

#include "common/fake_emulator.h"

namespace bw {
namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;
using Kind = ConsoleProblem::Kind;

class Watcher : public LiveWatcher {
  public:
    void Shows(const ConsolePicture& picture, PadStates) override {
        last = static_cast<int>(picture.pixels.at(0) & 0xFFFFFF);
        ++pictures;
    }
    void Failed(const ConsoleProblem& problem) override {
        problems = problems + 1;
        kind = problem.kind;
    }
    std::atomic<int> pictures, last, problems;
    std::atomic<Kind> kind;
};

bool Wait(const std::function<bool()>& reached) {
    const auto end = Clock::now() + 5s;
    while (!reached() && Clock::now() < end)
        std::this_thread::sleep_for(1ms);
    return reached();
}

struct LiveSessionTest : testing::Test {
    FakeEmulator emulator;
    Watcher watcher;
    LiveSession session{emulator, watcher, {.rom = "/game.nes"}};

    // Until the thread has come to rest.
    void Pause() {
        const int rests = emulator.rests;
        session.Pause(true);
        ASSERT_TRUE(Wait([&] { return emulator.rests > rests; }));
    }
};

TEST_F(LiveSessionTest, ItKeepsTheConsolesPaceAndRunsFastWithoutMorePictures) {
    ASSERT_TRUE(Wait([&] { return watcher.pictures > 0; }));
    const auto start = Clock::now();
    const int first = watcher.pictures;
    ASSERT_TRUE(Wait([&] { return watcher.pictures >= first + 30; }));
    EXPECT_GT(Clock::now() - start, 28 * 16ms);
    session.FastForward(true);
    const int before = watcher.pictures;
    ASSERT_TRUE(Wait([&] { return watcher.pictures >= before + 6; }));
    EXPECT_GT(emulator.frames, 10 * watcher.pictures);
}

TEST_F(LiveSessionTest, NothingRunsInAPauseButStepsAndWhatIsLoaded) {
    ASSERT_TRUE(Wait([&] { return watcher.pictures > 2; }));
    Pause();
    const int before = emulator.frames;
    session.SetPads({kPadA, 0});  // not a press of the frame after the pause
    session.SetPads({});
    std::this_thread::sleep_for(60ms);
    EXPECT_EQ(emulator.frames, before);
    session.Step();
    session.Step();
    EXPECT_TRUE(Wait([&] { return watcher.last == before + 2; }));
    session.Load("/other.nes");
    EXPECT_TRUE(Wait([&] { return watcher.last == before + 3; }));
    std::this_thread::sleep_for(60ms);
    EXPECT_EQ(emulator.frames, before + 3);
    EXPECT_EQ(emulator.Pads().back(), PadStates{});
    session.Reset();
    session.Power();
    session.Pause(false);
    EXPECT_TRUE(Wait([&] { return emulator.resets == 1 && emulator.powers == 1; }));
}

TEST_F(LiveSessionTest, AKeyThatWasDownForAMomentIsSeenOnce) {
    ASSERT_TRUE(Wait([&] { return watcher.pictures > 2; }));
    session.SetPads({kPadA, kPadUp});
    session.SetPads({});
    const int before = watcher.pictures;
    ASSERT_TRUE(Wait([&] { return watcher.pictures > before + 4; }));
    const auto pads = emulator.Pads();
    EXPECT_EQ(std::ranges::count(pads, PadStates{kPadA, kPadUp}), 1);
}

TEST_F(LiveSessionTest, ALoadShowsWhatWasPreparedAndTheNewestOneWins) {
    ASSERT_TRUE(Wait([&] { return watcher.pictures > 2; }));
    std::atomic<int> prepared = 0;
    std::atomic<bool> goOn = false;
    const auto slow = [&](Console& console) -> ConsoleResult<> {
        ++prepared;
        Wait([&] { return goOn.load(); });
        return console.Run({.frames = 1000}) ? ConsoleResult<>() : ConsoleProblem{};
    };
    session.Load("/one.nes", slow);
    ASSERT_TRUE(Wait([&] { return prepared == 1; }));
    const int before = watcher.pictures;
    session.Load("/two.nes", slow);
    session.Load("/three.nes", slow);
    goOn = true;
    ASSERT_TRUE(Wait([&] { return watcher.pictures > before; }));
    EXPECT_GT(watcher.last, 2000);  // the first one was shown to nobody, the second never run
    EXPECT_EQ(prepared, 2);
    EXPECT_EQ(emulator.starts, 1);
}

TEST_F(LiveSessionTest, AFailureIsToldOnceAndTheNextLoadStartsAnew) {
    for (const Kind kind : {Kind::kEnded, Kind::kRefused}) {
        const int pictures = watcher.pictures;
        ASSERT_TRUE(Wait([&] { return watcher.pictures > pictures; }));
        const int before = watcher.problems;
        emulator.runProblem = kind;
        ASSERT_TRUE(Wait([&] { return watcher.problems == before + 1; }));
        EXPECT_EQ(watcher.kind, kind);
        EXPECT_EQ(emulator.living, 0);
        session.Load("/next.nes");
    }
    EXPECT_TRUE(Wait([&] { return emulator.starts == 3; }));
}

TEST(LiveSession, TwentyStartsAndStopsLeaveNothingAndNoHangKeepsThem) {
    FakeEmulator emulator;
    for (int i = 0; i < 20; ++i) {
        Watcher watcher;
        emulator.hangs = i % 4 == 1;
        const auto start = Clock::now();
        {
            const LiveSession session(emulator, watcher, {.rom = "/game.nes"});
            if (i % 2 == 0) {
                ASSERT_TRUE(Wait([&] { return watcher.pictures > 0; }));
            }
        }
        EXPECT_LT(Clock::now() - start, 3s);
        EXPECT_EQ(watcher.problems, 0);
        EXPECT_EQ(emulator.living, 0);
    }
}

}  // namespace
}  // namespace bw
