// Sessions with the emulator itself.
#include <atomic>
#include <thread>

#include <gtest/gtest.h>
#include <sys/wait.h>

#include "common/environment_variable.h"
#include "common/game_image.h"
#include "common/temporary_folder.h"
#include "console/live_session.h"
#include "support/paths.h"

namespace bw {
namespace {

class Counter : public LiveWatcher {
  public:
    void Shows(const ConsolePicture&, PadStates) override { ++pictures; }
    void Failed(const ConsoleProblem&) override {}
    std::atomic<int> pictures = 0;
};

TEST(LiveSession, TheRealEmulatorLeavesNothingEither) {
    const std::unique_ptr<Emulator> emulator = FindEmulator();
    ASSERT_TRUE(emulator) << "the tests need the package " << kEmulatorPackage;
    const TemporaryFolder folder;
    const EnvironmentVariable home("BANKWEAVER_HOME", folder.Path());
    test::WriteText(folder / "game.nes", test::ImageBytes({}, 1));
    for (int i = 0; i < 20; ++i) {
        Counter watcher;
        LiveSession session(*emulator, watcher, {.rom = folder / "game.nes"});
        for (int wait = 0; i % 2 == 0 && wait < 5000 && watcher.pictures <= i; ++wait)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        EXPECT_TRUE(i % 2 == 1 || watcher.pictures > i) << i;
    }
    EXPECT_TRUE(std::filesystem::is_empty(WorkFolder().parent_path()));
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "no child is left";
}

}  // namespace
}  // namespace bw
