// The samples by themselves: sound ones pass, and each kind of damage is found and named. A sample
// that couldn't fail would prove nothing about a cartridge.
#include "samples.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fceux_runner.h"

namespace bw::console {
namespace {

constexpr size_t kHeader = 16;
constexpr size_t kPrgBank = 0x2000;
constexpr size_t kChrBank = 0x400;
// Where a bank's number lies: behind the mark's first byte.
constexpr size_t kPrgNumber = 1;
constexpr size_t kPrgFarNumber = 0x1FD1;
constexpr size_t kChrNumber = 0x3FE;
// A person sees it too: big letters of bricks (tile 1).
const std::string kBigPass = "    ....   ...   ....  ....";

// Damaged samples: what is put into the folder, run, and what it must say.
class Damages {
  public:
    void Add(const Sample& sample, const std::string& kind, const std::string& bytes,
             const std::string& outcome) {
        const std::string label = sample.name + "-" + kind;
        WriteText(folder_ / (label + ".nes"), bytes);
        runs.push_back(RunOf(folder_ / (label + ".nes"), sample, label));
        expected.push_back(outcome);
    }

    // The number of one bank changed, as if another bank stood in its place.
    void AddForeignBank(const Sample& sample, Fault fault, size_t bank, size_t place) {
        const bool prg = fault == Fault::kPrg;
        std::string bytes = ReadText(sample.File());
        bytes.at(place + kHeader +
                 (prg ? bank * kPrgBank : sample.prg * kPrgBank + bank * kChrBank)) ^= 1;
        Add(sample, fmt::format("{}-{}-{}", prg ? "prg" : "chr", bank, place), bytes,
            fmt::format("FAIL {} {:02X}", static_cast<int>(fault), bank));
    }

    static ScriptRun RunOf(const std::filesystem::path& rom, const Sample& sample,
                           std::string label) {
        return {.rom = rom,
                .script = kSampleScript + fmt::format(R"lua(
                    put("result", sample_result({0})) frames(60) put("again", sample_result({0}))
                    put("row 17", row(17)) put("row 21", row(21)) shot("screen"))lua",
                                                      sample.id),
                .label = std::move(label)};
    }

    std::vector<ScriptRun> runs;
    std::vector<std::string> expected;

  private:
    TemporaryFolder folder_;
};

TEST(Samples, PassByThemselves) {
    std::vector<ScriptRun> runs;
    for (const Sample& sample : Samples())
        runs.push_back(Damages::RunOf(sample.File(), sample, sample.name));
    const std::vector<ScriptResult> results = RunAllOnConsole(runs);
    for (size_t i = 0; i < results.size(); ++i) {
        SCOPED_TRACE(runs[i].label);
        EXPECT_EQ(results[i].At("result"), "PASS 0 00");
        EXPECT_EQ(results[i].At("again"), "PASS 0 00") << "the outcome doesn't stay";
        if (Samples()[i].id == 1) {  // the game says it in words
            EXPECT_THAT(results[i].At("row 17"), testing::HasSubstr("SELF-CHECK PASS"));
        } else {
            EXPECT_EQ(results[i].At("row 21"), kBigPass);
        }
    }
}

TEST(Samples, NameEachDamage) {
    Damages damages;
    for (const Sample& sample : Samples()) {
        for (const size_t bank : {size_t{0}, sample.prg / size_t{2}, sample.prg - size_t{1}})
            damages.AddForeignBank(sample, Fault::kPrg, bank, kPrgNumber);
        damages.AddForeignBank(sample, Fault::kPrg, sample.prg - 1, kPrgFarNumber);
        if (sample.chr != 0)
            for (const size_t bank : {size_t{0}, sample.chr / size_t{2}, sample.chr - size_t{1}})
                damages.AddForeignBank(sample, Fault::kChr, bank, kChrNumber);
        std::string bytes = ReadText(sample.File());
        if (sample.mapper != 1 && sample.mapper != 4) {
            bytes[6] ^= 1;  // the other arrangement of name tables
            // The first table that shows another one's content: 0 for both.
            damages.Add(sample, "mirroring", bytes, "FAIL 4 00");
        } else if (sample.mapper == 1) {
            // A header of the newer form says that there is no work RAM. The emulator heeds it for
            // this mapper.
            bytes[6] &= ~2;
            bytes[7] |= 8;
            damages.Add(sample, "no-ram", bytes, "FAIL 5 60");
        } else {
            // The counter set one line later for the first measurement, so that one line is missing
            // between the two.
            const std::string load = "\xA9\x50\x20";  // LDA #80, JSR
            const size_t at = bytes.find(load);
            ASSERT_NE(at, std::string::npos);
            ASSERT_EQ(bytes.find(load, at + 1), std::string::npos);
            bytes[at + 1] = 0x51;
            damages.Add(sample, "late", bytes, "FAIL 6");
        }
    }
    const std::vector<ScriptResult> results = RunAllOnConsole(damages.runs);
    for (size_t i = 0; i < results.size(); ++i) {
        SCOPED_TRACE(damages.runs[i].label);
        EXPECT_THAT(results[i].At("result"), testing::StartsWith(damages.expected[i]));
        EXPECT_NE(results[i].At("row 21"), kBigPass);
    }
}

}  // namespace
}  // namespace bw::console
