// The samples by themselves: sound ones pass, and each kind of damage is found and named. A sample
// that couldn't fail would prove nothing about a cartridge.
#include "samples.h"

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

struct Damage {
    std::string label;
    std::string bytes;
    std::string expected;
};

ConsoleRun RunOf(const std::filesystem::path& rom, const Sample& sample, std::string label) {
    return {.rom = rom,
            .script = SampleScript() + "put('result', sample_result(" + std::to_string(sample.id) +
                      ")) frames(60) put('again', sample_result(" + std::to_string(sample.id) +
                      ")) put_rows() shot('screen')",
            .label = std::move(label)};
}

std::string Expected(Fault fault, size_t bank) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text = "FAIL ";
    text += std::to_string(static_cast<int>(fault));
    text += ' ';
    text += kDigits[bank / 16];
    text += kDigits[bank % 16];
    return text;
}

// The number of one bank changed, as if another bank stood in its place.
Damage ForeignBank(const Sample& sample, Fault fault, size_t bank, size_t place) {
    std::string bytes = ReadWholeFile(sample.File());
    const size_t start = fault == Fault::kPrg ? kHeader + bank * kPrgBank
                                              : kHeader + sample.prg * kPrgBank + bank * kChrBank;
    bytes.at(start + place) = static_cast<char>(bytes.at(start + place) ^ 1);
    return {sample.name + (fault == Fault::kPrg ? "-prg-" : "-chr-") + std::to_string(bank) + "-" +
                std::to_string(place),
            bytes, Expected(fault, bank)};
}

std::vector<Damage> DamagesOf(const Sample& sample) {
    std::vector<Damage> damages;
    for (const size_t bank : {size_t{0}, sample.prg / size_t{2}, sample.prg - size_t{1}})
        damages.push_back(ForeignBank(sample, Fault::kPrg, bank, kPrgNumber));
    damages.push_back(ForeignBank(sample, Fault::kPrg, sample.prg - 1, kPrgFarNumber));
    if (sample.chr != 0)
        for (const size_t bank : {size_t{0}, sample.chr / size_t{2}, sample.chr - size_t{1}})
            damages.push_back(ForeignBank(sample, Fault::kChr, bank, kChrNumber));
    if (sample.mapper != 1 && sample.mapper != 4) {
        std::string bytes = ReadWholeFile(sample.File());
        bytes[6] = static_cast<char>(bytes[6] ^ 1);  // the other arrangement of name tables
        // The first table that shows another one's content: 0 for both.
        damages.push_back({sample.name + "-mirroring", bytes, Expected(Fault::kMirroring, 0)});
    }
    return damages;
}

// A header of the newer form that says there is no work RAM. The emulator heeds it for mapper 1.
Damage NoWorkRam(const Sample& sample) {
    std::string bytes = ReadWholeFile(sample.File());
    bytes[6] = static_cast<char>(bytes[6] & ~2);
    bytes[7] = static_cast<char>(bytes[7] | 8);
    return {sample.name + "-no-ram", bytes, Expected(Fault::kWorkRam, 0x60)};
}

// The counter set one line later for the first measurement, so that one line is missing between
// the two.
Damage LateCounter(const Sample& sample) {
    std::string bytes = ReadWholeFile(sample.File());
    const std::string load = "\xA9\x50\x20";  // LDA #80, JSR
    const size_t at = bytes.find(load);
    EXPECT_NE(at, std::string::npos);
    EXPECT_EQ(bytes.find(load, at + 1), std::string::npos);
    bytes[at + 1] = 0x51;
    return {sample.name + "-late", bytes, "FAIL 6"};
}

TEST(Samples, PassByThemselves) {
    std::vector<ConsoleRun> runs;
    for (const Sample& sample : Samples())
        runs.push_back(RunOf(sample.File(), sample, sample.name));
    const std::vector<ConsoleResult> results = RunAllOnConsole(runs);
    for (size_t i = 0; i < results.size(); ++i) {
        SCOPED_TRACE(runs[i].label);
        ASSERT_TRUE(results[i].Ok()) << results[i].problem;
        EXPECT_EQ(results[i].At("result"), "PASS 0 00");
        EXPECT_EQ(results[i].At("again"), "PASS 0 00") << "the outcome doesn't stay";
        // A person sees it too: the game in words, a check in big letters of bricks (tile 1).
        if (Samples()[i].id == 1) {
            EXPECT_THAT(results[i].At("row_17"), testing::HasSubstr("SELF-CHECK PASS"));
        } else {
            EXPECT_EQ(results[i].At("row_21"), "    ....   ...   ....  ....");
        }
    }
}

TEST(Samples, NameEachDamage) {
    const TemporaryFolder folder;
    std::vector<ConsoleRun> runs;
    std::vector<std::string> expected;
    const auto add = [&](const Sample& sample, const Damage& damage) {
        const auto rom = folder.Path() / (damage.label + ".nes");
        WriteWholeFile(rom, damage.bytes);
        runs.push_back(RunOf(rom, sample, damage.label));
        expected.push_back(damage.expected);
    };
    for (const Sample& sample : Samples())
        for (const Damage& damage : DamagesOf(sample))
            add(sample, damage);
    add(Samples()[4], NoWorkRam(Samples()[4]));
    add(Samples()[5], LateCounter(Samples()[5]));

    const std::vector<ConsoleResult> results = RunAllOnConsole(runs);
    for (size_t i = 0; i < results.size(); ++i) {
        SCOPED_TRACE(runs[i].label);
        ASSERT_TRUE(results[i].Ok()) << results[i].problem;
        EXPECT_EQ(results[i].At("result").substr(0, expected[i].size()), expected[i]);
        EXPECT_NE(results[i].At("row_21"), "    ....   ...   ....  ....") << "shows PASS";
    }
}

}  // namespace
}  // namespace bw::console
