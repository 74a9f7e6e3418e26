#include "builder/tables/board_registers.h"

#include <gtest/gtest.h>

#include "builder/tables/final_data.h"
#include "test_items.h"

namespace bw {
namespace {

using test::Game;
using Registers = std::array<uint8_t, 8>;

MulticartItem Placed(MulticartItem item, uint32_t prg, uint32_t chr) {
    item.prgOffset = prg;
    item.chrOffset = chr;
    return item;
}

struct CoolboyCase {
    const char* what;
    MulticartItem item;
    Registers prg;
    Registers chr;
};

// Expected bytes worked out by hand from the meaning of each bit.
TEST(BoardRegisters, Coolboy) {
    const std::vector<CoolboyCase> cases{
        {"2 MB at 2 MB: no mask bits",
         Placed(Game(0, 128, 0), 0x200000, 0),
         {0x80, 0x64, 0x00, 0x80},
         {0x40, 0x80}},
        {"128 KB at 0: full mask",
         Placed(Game(0, 8, 0), 0, 0),
         {0xC0, 0x80, 0x00, 0x80},
         {0x40, 0x80}},
        {"128 KB at 384 KB",
         Placed(Game(0, 8, 16), 0x60000, 0x80000),
         {0xC3, 0x80, 0x00, 0x80},
         {0x44, 0x80}},
        {"every address bit",
         Placed(Game(0, 8, 16), 0x1FE0000, 0x1FE0000),
         {0xF7, 0x9C, 0x00, 0x80},
         {0x77, 0x9C}},
        {"256 KB of CHR clears the top bit of register 0",
         Placed(Game(0, 16, 32), 0x100000, 0),
         {0x00, 0x90, 0x00, 0x80},
         {0x00, 0x80}},
        {"1 MB",
         Placed(Game(0, 64, 1), 0x100000, 0x2000),
         {0x80, 0x50, 0x00, 0x80},
         {0x40, 0x80, 0x00, 0x01}},
        {"NROM of 32 KB at an odd place",
         Placed(Game(0, 2, 1, 0), 0x2C000, 0x36000),
         {0xC1, 0x82, 0x00, 0x96},
         {0xC1, 0x80, 0x00, 0x1B}},
        {"NROM of 16 KB",
         Placed(Game(0, 1, 1, 0), 0x10000, 0x14000),
         {0xC0, 0x80, 0x00, 0x98},
         {0xC0, 0x80, 0x00, 0x1A}},
    };
    for (const CoolboyCase& test : cases) {
        SCOPED_TRACE(test.what);
        const BoardRegisters registers = CoolboyRegisters(test.item);
        EXPECT_EQ(registers.prg, test.prg);
        EXPECT_EQ(registers.chr, test.chr);
    }
}

struct CoolgirlCase {
    const char* what;
    MulticartItem item;
    uint8_t mirroring;
    uint8_t fourScreen;
    Registers prg;
};

TEST(BoardRegisters, Coolgirl) {
    const std::vector<CoolgirlCase> cases{
        {"MMC3, vertical",
         Placed(Game(0, 8, 16, 4), 0x20000, 0),
         1,
         0,
         {0, 8, 0xF8, 0x80, 0x50, 0, 0x14, 0x81}},
        {"MMC3, horizontal",
         Placed(Game(0, 8, 16, 4), 0x20000, 0),
         0,
         0,
         {0, 8, 0xF8, 0x80, 0x50, 0, 0x14, 0x89}},
        {"MMC3 with CHR RAM",
         Placed(Game(0, 8, 0, 4), 0x20000, 0),
         1,
         0,
         {0, 8, 0x78, 0x80, 0x40, 0, 0x14, 0x83}},
        {"mapper 74 has no row of its own and writes CHR RAM",
         Placed(Game(0, 8, 16, 74), 0x20000, 0),
         1,
         0,
         {0, 8, 0xF8, 0x80, 0x50, 0, 0x14, 0x83}},
        {"mapper 42 has its register 5",
         Placed(Game(0, 8, 16, 42), 0x20000, 0),
         1,
         0,
         {0, 8, 0xF8, 0xE0, 0x10, 0x7C, 0x17, 0x81}},
        {"a code above 31 reaches register 7",
         Placed(Game(0, 8, 16, 67), 0x20000, 0),
         0,
         1,
         {0, 8, 0xF8, 0x00, 0xD0, 0, 0x04, 0xE9}},
        {"flags go to the top of register 6",
         Placed(Game(0, 8, 16, 25), 0x20000, 0),
         1,
         0,
         {0, 8, 0xF8, 0x80, 0xF0, 0, 0xB8, 0x81}},
        {"96 units at 126 MB",
         Placed(Game(0, 96, 64, 228), 0x7E00000, 0),
         1,
         0,
         {0x1F, 0x80, 0x20, 0xE0, 0x00, 0, 0x09, 0x81}},
        {"256 KB of CHR",
         Placed(Game(0, 128, 32, 4), 0, 0),
         1,
         0,
         {0, 0, 0x80, 0x80, 0x40, 0, 0x14, 0x81}},
    };
    for (const CoolgirlCase& test : cases) {
        SCOPED_TRACE(test.what);
        MulticartItem item = test.item;
        item.mirroring = test.mirroring;
        item.fourScreen = test.fourScreen;
        const BoardRegisters registers = CoolgirlRegisters(item);
        EXPECT_EQ(registers.prg, test.prg);
        EXPECT_EQ(registers.chr, Registers{});
    }
}

TEST(BoardRegisters, RecordsHoldTheCountOfTheFile) {
    MulticartItem menu = test::Menu(8);
    menu.isMenu = 1;
    MulticartItem item = Placed(Game(0, 8, 3), 0x20000, 0x1FE2000);
    item.SetChrUnits(4);
    item.mirroring = item.battery = item.fourScreen = 1;
    const auto records = MakeFinalData(std::vector{menu, item}, BoardType::kCoolboy);
    ASSERT_EQ(records.size(), 1u);
    EXPECT_EQ(records[0].chrCount, 3);
    EXPECT_EQ(records[0].chrOffset, 0xFF1);
    EXPECT_EQ(records[0].flags, 7);
}

}  // namespace
}  // namespace bw
