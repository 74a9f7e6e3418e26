#include "builder/tables/board_registers.h"

#include <gtest/gtest.h>

#include "builder/tables/final_data.h"
#include "support/numbers.h"
#include "test_items.h"

namespace bw {
namespace {

using test::Game;
using test::Placed;

std::string Hex(std::span<const uint8_t> bytes) {
    std::string text;
    for (const uint8_t byte : bytes)
        AppendHex(text, byte, 2);
    return text;
}

// Expected bytes worked out by hand from the meaning of each bit.
TEST(BoardRegisters, Coolboy) {
    const struct {
        const char* what;
        uint32_t prgUnits, chrUnits, mapper, prgOffset, chrOffset;
        const char* prg;
        const char* chr;
    } rows[] = {
        {"2 MB at 2 MB: no mask bits", 128, 0, 4, 0x200000, 0, "80640080", "40800000"},
        {"128 KB at 0: full mask", 8, 0, 4, 0, 0, "C0800080", "40800000"},
        {"128 KB at 384 KB", 8, 16, 4, 0x60000, 0x80000, "C3800080", "44800000"},
        {"every address bit", 8, 16, 4, 0x1FE0000, 0x1FE0000, "F79C0080", "779C0000"},
        {"256 KB of CHR clear the top bit", 16, 32, 4, 0x100000, 0, "00900080", "00800000"},
        {"1 MB", 64, 1, 4, 0x100000, 0x2000, "80500080", "40800001"},
        {"NROM of 32 KB at an odd place", 2, 1, 0, 0x2C000, 0x36000, "C1820096", "C180001B"},
        {"NROM of 16 KB", 1, 1, 0, 0x10000, 0x14000, "C0800098", "C080001A"}};
    for (const auto& row : rows) {
        const BoardRegisters registers = CoolboyRegisters(
            Placed(Game(0, row.prgUnits, row.chrUnits, row.mapper), row.prgOffset, row.chrOffset));
        EXPECT_EQ(Hex(registers.prg), row.prg + std::string(8, '0')) << row.what;
        EXPECT_EQ(Hex(registers.chr), row.chr + std::string(8, '0')) << row.what;
    }
}

TEST(BoardRegisters, Coolgirl) {
    const struct {
        const char* what;
        uint32_t prgUnits, chrUnits, mapper, prgOffset;
        uint8_t mirroring, fourScreen;
        const char* prg;
    } rows[] = {
        {"MMC3, vertical", 8, 16, 4, 0x20000, 1, 0, "0008F88050001481"},
        {"MMC3, horizontal", 8, 16, 4, 0x20000, 0, 0, "0008F88050001489"},
        {"MMC3 with CHR RAM", 8, 0, 4, 0x20000, 1, 0, "0008788040001483"},
        {"mapper 74: no row of its own, CHR RAM", 8, 16, 74, 0x20000, 1, 0, "0008F88050001483"},
        {"mapper 42 has its register 5", 8, 16, 42, 0x20000, 1, 0, "0008F8E0107C1781"},
        {"a code above 31 reaches register 7", 8, 16, 67, 0x20000, 0, 1, "0008F800D00004E9"},
        {"flags go to the top of register 6", 8, 16, 25, 0x20000, 1, 0, "0008F880F000B881"},
        {"96 units at 126 MB", 96, 64, 228, 0x7E00000, 1, 0, "1F8020E000000981"},
        {"256 KB of CHR", 128, 32, 4, 0, 1, 0, "0000808040001481"}};
    for (const auto& row : rows) {
        MulticartItem item =
            Placed(Game(0, row.prgUnits, row.chrUnits, row.mapper), row.prgOffset, 0);
        item.mirroring = row.mirroring;
        item.fourScreen = row.fourScreen;
        const BoardRegisters registers = CoolgirlRegisters(item);
        EXPECT_EQ(Hex(registers.prg), row.prg) << row.what;
        EXPECT_EQ(Hex(registers.chr), std::string(16, '0')) << row.what;
    }
}

TEST(BoardRegisters, RecordsHoldTheCountOfTheFile) {
    MulticartItem item = Placed(Game(0, 8, 3), 0x20000, 0x1FE2000);
    item.SetChrUnits(4);
    item.mirroring = item.battery = item.fourScreen = 1;
    const auto records = MakeFinalData(std::vector{test::Menu(8), item}, BoardType::kCoolboy);
    ASSERT_EQ(records.size(), 1u);
    EXPECT_EQ(records[0].chrCount, 3);
    EXPECT_EQ(records[0].chrOffset, 0xFF1);
    EXPECT_EQ(records[0].flags, 7);
}

}  // namespace
}  // namespace bw
