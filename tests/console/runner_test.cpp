// The runner must tell a failed run from a good one; a harness that passes everything would make
// every console test worthless.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "common/environment_variable.h"
#include "fceux_runner.h"

namespace bw::console {
namespace {

using testing::HasSubstr;
using testing::ThrowsMessage;

// A 16 KB program: palette and sprite page set, then a loop that counts frames at $10 and keeps
// the first pad's buttons at $11.
std::string CountingProgram() {
    static constexpr std::string_view kCode(
        "\x78\xD8\xA2\xFF\x9A"                          // SEI, CLD, LDX #$FF, TXS
        "\xA9\x00\x8D\x01\x20"                          // rendering off
        "\x2C\x02\x20\x10\xFB"                          // wait for vertical blank, twice
        "\x2C\x02\x20\x10\xFB"                          //
        "\xA9\x21\x8D\x06\x20\xA9\x42\x8D\x06\x20"      // PPU address $2142
        "\xA9\x48\x8D\x07\x20\xA9\x49\x8D\x07\x20"      // "HI" as tiles
        "\xA9\x77\x8D\x04\x03\xA9\x03\x8D\x14\x40"      // sprite 1's Y, page 3 to sprite memory
        "\xA9\x5A\x8D\x00\x60"                          // a write for the log
        "\x2C\x02\x20\x10\xFB\xE6\x10"                  // each frame: count,
        "\xA9\x01\x8D\x16\x40\x4A\x8D\x16\x40"          // strobe the pads,
        "\xA2\x08\xAD\x16\x40\x4A\x26\x11\xCA\xD0\xF7"  // read eight buttons
        "\x4C\x37\x80",                                 // JMP
        85);
    std::string program("NES\x1A\x01", 5);
    program.resize(16);
    program.append(kCode).resize(16 + 0x4000);
    program[16 + 0x3FFD] = static_cast<char>(0x80);
    return program;
}

class Runner : public testing::Test {
  protected:
    void SetUp() override { WriteText(rom, CountingProgram()); }
    ScriptRun Of(std::string script) const { return {.rom = rom, .script = std::move(script)}; }
    static auto Fails(const ScriptRun& run) {
        return [run] { RunOnConsole(run); };
    }

    TemporaryFolder folder;
    std::filesystem::path rom = folder / "a game's file.nes";
};

TEST_F(Runner, ReadsWhatTheConsoleHolds) {
    const ScriptResult result = RunOnConsole(Of(R"lua(
        put("ram", hex(bytes(0x0200, 8)))
        local log = log_writes(0x6000, 4)
        frames(20)
        put("seen", row(10) .. " " .. oam():byte(5) .. " " .. log_text(log))
        local before = peek(0x10)
        frames(5) put("passed", peek(0x10) - before)
        hold("A+right") frames(3) put("buttons", peek(0x11))
        hold("") frames(3) put("released", peek(0x11))
        put("waited", wait_until(function() return peek(0x10) == 40 end, 60))
        put("never", tostring(wait_until(function() return false end, 5)))
        put("crc", crc("123456789"))
    )lua"));
    EXPECT_EQ(result.At("ram"), "00000000FFFFFFFF");
    EXPECT_EQ(result.At("seen"), "  HI 119 6000=5A");
    EXPECT_EQ(result.At("passed"), "5");
    EXPECT_EQ(result.Number("buttons"), 0x81);
    EXPECT_EQ(result.Number("released"), 0);
    EXPECT_GT(result.Number("waited"), 0);
    EXPECT_EQ(result.At("never"), "nil");
    EXPECT_EQ(result.Number("crc"), 0xCBF43926L);  // the published check value
    EXPECT_EQ(result.At("missing"), "<no missing>");
    EXPECT_EQ(result.Number("missing"), -1);
}

TEST_F(Runner, TellsWhatWentWrong) {
    const std::pair<std::string, const char*> cases[] = {
        {"frames(2) error('on purpose')", "on purpose"},
        {"this is no Lua", "script.lua:1"},
        {"frames(2) os.exit(0)", "ended before the script"}};
    for (const auto& [script, problem] : cases)
        EXPECT_THAT(Fails(Of(script)), ThrowsMessage<ConsoleFailure>(HasSubstr(problem)));
    ScriptRun run = Of("while true do end");
    run.patience = std::chrono::seconds{2};
    EXPECT_THAT(Fails(run), ThrowsMessage<ConsoleFailure>(HasSubstr("killed after 2 s")));
    run.rom = folder / "none.nes";
    EXPECT_THAT(Fails(run), ThrowsMessage<ConsoleFailure>(HasSubstr("none.nes")));
    const EnvironmentVariable gone("BANKWEAVER_FCEUX", (folder / "gone").c_str());
    EXPECT_THAT(Fails(run), ThrowsMessage<ConsoleFailure>(HasSubstr("install the package fceux")));
}

TEST_F(Runner, RunsSideBySideDontMix) {
    std::vector<ScriptRun> runs;
    for (const char* number : {"0", "1", "2", "3", "4", "5"})
        runs.push_back(Of(std::string("frames(30) put('n', ") + number + ")"));
    runs[4].zeroRam = true;
    runs[4].script = "put('n', peek(0x204) + 4)";
    const auto results = RunAllOnConsole(runs);
    for (size_t i = 0; i < runs.size(); ++i)
        EXPECT_EQ(results[i].Number("n"), static_cast<long>(i));
}

}  // namespace
}  // namespace bw::console
