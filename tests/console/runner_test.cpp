// The runner must tell a failed run from a good one; a harness that passes everything would make
// every console test worthless.
#include <cstdlib>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fceux_runner.h"

namespace bw::console {
namespace {

// A 16 KB program: palette and sprite page set, then a loop that counts frames at $10 and keeps
// the first pad's buttons at $11.
std::string CountingProgram() {
    static constexpr unsigned char kCode[] = {
        0x78, 0xD8, 0xA2, 0xFF, 0x9A,                          // SEI, CLD, LDX #$FF, TXS
        0xA9, 0x00, 0x8D, 0x01, 0x20,                          // rendering off
        0x2C, 0x02, 0x20, 0x10, 0xFB,                          // wait for vertical blank, twice
        0x2C, 0x02, 0x20, 0x10, 0xFB,                          //
        0xA9, 0x21, 0x8D, 0x06, 0x20,                          // PPU address $2142
        0xA9, 0x42, 0x8D, 0x06, 0x20,                          //
        0xA9, 0x48, 0x8D, 0x07, 0x20,                          // "HI" as tiles
        0xA9, 0x49, 0x8D, 0x07, 0x20,                          //
        0xA9, 0x77, 0x8D, 0x04, 0x03,                          // sprite 1's Y
        0xA9, 0x03, 0x8D, 0x14, 0x40,                          // page 3 to sprite memory
        0xA9, 0x5A, 0x8D, 0x00, 0x60,                          // a write for the log
        0x2C, 0x02, 0x20, 0x10, 0xFB,                          // each frame:
        0xE6, 0x10,                                            // count,
        0xA9, 0x01, 0x8D, 0x16, 0x40, 0x4A, 0x8D, 0x16, 0x40,  // strobe the pads,
        0xA2, 0x08, 0xAD, 0x16, 0x40, 0x4A, 0x26, 0x11, 0xCA, 0xD0, 0xF7,  // read eight buttons
        0x4C, 0x37, 0x80};                                                 // JMP
    std::string program = {'N', 'E', 'S', 0x1A, 1, 0};
    program.resize(16);
    program.append(reinterpret_cast<const char*>(kCode), sizeof kCode);
    program.resize(16 + 0x4000);
    program[16 + 0x3FFC] = 0x00;
    program[16 + 0x3FFD] = static_cast<char>(0x80);
    return program;
}

class Runner : public testing::Test {
  protected:
    void SetUp() override {
        rom = folder.Path() / "a game's file.nes";
        WriteWholeFile(rom, CountingProgram());
    }
    ConsoleResult Run(std::string script) const {
        return RunOnConsole({.rom = rom, .script = std::move(script)});
    }

    TemporaryFolder folder;
    std::filesystem::path rom;
};

TEST_F(Runner, ReadsWhatTheConsoleHolds) {
    const ConsoleResult result = Run(R"lua(
        local log = log_writes(0x6000, 4)
        frames(20)
        put("text", row(10))
        put("sprite", sprite(1).y)
        put("log", log_text(log))
        local before = peek(0x10)
        frames(5)
        put("passed", peek(0x10) - before)
        hold("A+right") frames(3) put("buttons", peek(0x11))
        hold("") frames(3) put("released", peek(0x11))
        put("waited", wait_until(function() return peek(0x10) == 40 end, 60))
        put("never", tostring(wait_until(function() return false end, 5)))
        put("crc", crc("123456789"))
    )lua");
    ASSERT_TRUE(result.Ok()) << result.problem;
    EXPECT_EQ(result.At("text"), "  HI");
    EXPECT_EQ(result.At("sprite"), "119");
    EXPECT_EQ(result.At("log"), "6000=5A");
    EXPECT_EQ(result.At("passed"), "5");
    EXPECT_EQ(result.Number("buttons"), 0x81);
    EXPECT_EQ(result.Number("released"), 0);
    EXPECT_GT(result.Number("waited"), 0);
    EXPECT_EQ(result.At("never"), "nil");
    EXPECT_EQ(result.Number("crc"), 0xCBF43926L);  // the published check value
    EXPECT_EQ(result.At("missing"), "<no missing>");
}

TEST_F(Runner, PowerOnRamIsAsAsked) {
    const std::string script = "put('ram', hex(bytes(0x0200, 8)))";
    const ConsoleResult zero =
        RunOnConsole({.rom = rom, .script = script, .ram = PowerOnRam::kZero});
    EXPECT_EQ(zero.At("ram"), "0000000000000000") << zero.problem;
    EXPECT_EQ(Run(script).At("ram"), "00000000FFFFFFFF");
}

TEST_F(Runner, TellsWhatWentWrong) {
    EXPECT_THAT(Run("frames(2) error('on purpose')").problem, testing::HasSubstr("on purpose"));
    EXPECT_THAT(Run("this is no Lua").problem, testing::HasSubstr("script.lua:1"));
    EXPECT_THAT(Run("frames(2) os.exit(0)").problem, testing::HasSubstr("ended before the script"));
    const ConsoleResult endless = RunOnConsole(
        {.rom = rom, .script = "while true do end", .patience = std::chrono::seconds{2}});
    EXPECT_THAT(endless.problem, testing::HasSubstr("killed after 2 s"));
    EXPECT_THAT(RunOnConsole({.rom = folder.Path() / "none.nes", .script = ""}).problem,
                testing::HasSubstr("none.nes"));
}

TEST_F(Runner, NamesThePackageOfAMissingEmulator) {
    setenv("BANKWEAVER_FCEUX", (folder.Path() / "gone").c_str(), 1);
    const std::string problem = Run("").problem;
    unsetenv("BANKWEAVER_FCEUX");
    EXPECT_THAT(problem, testing::HasSubstr("install the package fceux"));
}

TEST_F(Runner, RunsSideBySideDontMix) {
    std::vector<ConsoleRun> runs;
    for (const std::string number : {"0", "1", "2", "3", "4", "5"})
        runs.push_back({.rom = rom,
                        .script = std::string("frames(30) put('n', ").append(number).append(")"),
                        .label = number});
    const auto results = RunAllOnConsole(runs);
    for (size_t i = 0; i < runs.size(); ++i) {
        ASSERT_TRUE(results[i].Ok()) << results[i].problem;
        EXPECT_EQ(results[i].Number("n"), static_cast<long>(i));
    }
}

}  // namespace
}  // namespace bw::console
