// The emulator as a part: what it keeps, and what it leaves behind.
#include <chrono>
#include <csignal>
#include <cstring>
#include <thread>

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "common/environment_variable.h"
#include "common/game_image.h"
#include "common/temporary_folder.h"
#include "console/fceux.h"
#include "support/paths.h"

namespace bw {
namespace {

using std::chrono::milliseconds;
using test::ReadText;
using test::WriteText;

// 16 KB with a battery: adds 1 to $6000 and stops at an instruction that jams the processor.
std::string SavingProgram() {
    std::string program("NES\x1A\x01\x00\x02", 7);
    program.resize(16);
    program.append(std::string_view("\xEE\x00\x60\x02", 4)).resize(16 + 0x4000);
    program[16 + 0x3FFD] = static_cast<char>(0x80);
    return program;
}

class ConsoleTest : public testing::Test {
  protected:
    void SetUp() override { WriteText(rom, SavingProgram()); }
    size_t Left() const {
        std::error_code none;
        return static_cast<size_t>(std::distance(
            std::filesystem::directory_iterator(WorkFolder().parent_path(), none), {}));
    }

    TemporaryFolder folder;
    EnvironmentVariable home{"BANKWEAVER_HOME", folder.Path().c_str()};
    std::filesystem::path rom = folder / "a game's file.nes";
};

TEST_F(ConsoleTest, KeepsTheBatteryAndLeavesNothing) {
    const std::unique_ptr<Emulator> emulator = FindEmulator();
    ASSERT_TRUE(emulator) << "install " << kEmulatorPackage;
    for (const uint8_t count : std::initializer_list<uint8_t>{1, 2, 3}) {
        auto console = emulator->Start({.rom = rom, .save = folder / "kept.sav"});
        ASSERT_TRUE(console) << console.Problem().detail;
        const auto run = (*console)->Run({.frames = 5, .watched = {{0x6000, 0x6000}}});
        ASSERT_TRUE(run);
        EXPECT_EQ(run->jammedAt, 0x8003);
        EXPECT_EQ((*console)->ReadCpu(0x6000, 1).ValueOr({}), std::vector<uint8_t>{count});
        (*console)->Rest();
    }
    for (int i = 0; i < 20; ++i)
        ASSERT_TRUE(emulator->Start({.rom = rom}));
    EXPECT_EQ(Left(), 0u);
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a process is left";
}

TEST_F(ConsoleTest, DiesWithItsHost) {
    int told[2];
    ASSERT_EQ(pipe(told), 0);
    const pid_t host = fork();
    if (host == 0) {
        const auto console = FindEmulator()->Start({.rom = rom});
        const int64_t id = console ? (*console)->ProcessId() : 0;
        (*console)->Rest();
        [[maybe_unused]] const ssize_t written = write(told[1], &id, sizeof id);
        pause();
    }
    int64_t emulator = 0;
    ASSERT_EQ(read(told[0], &emulator, sizeof emulator), static_cast<ssize_t>(sizeof emulator));
    ASSERT_GT(emulator, 0);
    kill(host, SIGKILL);
    waitpid(host, nullptr, 0);
    // Its end isn't this process's to collect: where nobody does it stays as a dead entry.
    const auto lives = [&] {
        const std::string state = ReadText(fmt::format("/proc/{}/stat", emulator));
        return !state.empty() && state.find(") Z ") == std::string::npos;
    };
    for (int i = 0; i < 200 && lives(); ++i)
        std::this_thread::sleep_for(milliseconds{10});
    EXPECT_FALSE(lives());
    EXPECT_EQ(Left(), 1u);
    ASSERT_TRUE(FindEmulator()->Start({.rom = rom}));
    EXPECT_EQ(Left(), 0u);
}

}  // namespace
}  // namespace bw
