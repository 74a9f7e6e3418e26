// The registers that the console works out from a game's plain facts (FINAL_DATA_ENABLE 0): a table
// of records, written by hand into the menu's tables, and what START writes for each of them.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include "builder/tables/board_registers.h"
#include "menu_cart.h"

namespace bw::console {
namespace {

struct PackingCase {
    // PRG offset in 8 KB units, as all offsets and CHR sizes here; PRG size in 16 KB units
    unsigned prgOffset, prgSize, chrOffset, chrSize, flags, mapper;
    std::string registers;  // those with which CHR is in view, then those of the game
};

// One bank of records in the place of the exported ones.
void WriteRecords(const std::vector<PackingCase>& records, const std::filesystem::path& build) {
    std::string bank = " .WORD 0\r\n";
    for (size_t i = 0; i < records.size(); ++i)
        bank += fmt::format(" .WORD game_{}\r\n", i);
    for (size_t i = 0; i < records.size(); ++i) {
        const auto& [prgOffset, prgSize, chrOffset, chrSize, flags, mapper, registers] = records[i];
        bank += fmt::format("game_{}\r\n .DW {}\r\n .DB {}\r\n .DW {}\r\n .DB {},{},{}\r\n", i,
                            prgOffset, prgSize, chrOffset, chrSize, flags, mapper);
    }
    WriteText(build / "game_data_0.asm", bank);
}

// The register values that START writes for each record, in their order.
void ExpectWritten(const std::vector<PackingCase>& cases, BoardType board,
                   std::string_view from = "", std::string_view to = "") {
    CartPlan plan{.board = board, .names = CountedNames(cases.size())};
    plan.byHand = [&](const std::filesystem::path& menu) {
        UsePlainRecords(menu);
        WriteRecords(cases, menu / "build");
        EditFile(menu / "menu.asm", from, to);
    };
    const char* const numbers = board == BoardType::kCoolgirl ? "0x5000, 14, " : "0x6000, 8, ";
    const ScriptResult result =
        Play(plan, fmt::format("FIRST, COUNT, GAMES = {} {}\n", numbers, cases.size()) + R"lua(
        local log = log_writes(FIRST, 8)
        boot()
        local lit = savestate.object()
        savestate.save(lit)
        for game = 0, GAMES - 1 do
            savestate.load(lit)
            memory.writebyte(0x57, game % 256)
            memory.writebyte(0x58, math.floor(game / 256))
            clear(log)
            press("start", 2, 0)
            assert(wait_until(function() return #log >= COUNT end, 1000), "nothing was started")
            local text = ""
            for i = 1, COUNT do text = text .. string.format(" %02X", log[i].value) end
            put(game, text:sub(2))
        end
    )lua");
    for (size_t i = 0; i < cases.size(); ++i)
        EXPECT_EQ(result.At(std::to_string(i)), cases[i].registers) << "record " << i;
}

TEST(MenuPacking, CoolboyRegisters) {
    const std::vector<PackingCase> cases{
        // MMC3: CHR RAM, odd CHR offset, every mask that a size has, mapper 74
        {0x000, 8, 0x010, 0, 0, 4, "41 80 00 00 C0 80 00 80"},
        {0x002, 8, 0x011, 1, 0, 4, "41 80 00 01 C0 80 00 82"},
        {0x010, 16, 0x020, 16, 1, 4, "42 80 00 00 81 80 00 80"},
        {0x020, 32, 0x040, 32, 0, 4, "04 80 00 00 02 00 00 80"},
        {0x080, 64, 0x040, 64, 0, 4, "04 00 00 00 80 50 00 80"},
        {0x100, 128, 0x700, 32, 0, 74, "10 8C 00 00 00 64 00 80"},
        // every bit of an offset; PRG leaves the lowest
        {0xFFE, 8, 0xFFF, 16, 0, 4, "77 9C 00 0F F7 9C 00 8E"},
        {0xAAA, 8, 0x555, 16, 0, 4, "55 84 00 05 E2 98 00 8A"},
        {0x554, 8, 0xAAA, 16, 0, 4, "62 98 00 0A D5 84 00 84"},
        // NROM: 16 and 32 KB, odd and even CHR
        {0x00E, 1, 0x00D, 1, 0, 0, "C0 80 00 1D C0 80 00 9E"},
        {0x00C, 2, 0x00A, 1, 1, 0, "C0 80 00 1A C0 82 00 9C"},
        {0xFFE, 1, 0xFFF, 0, 0, 0, "F7 9C 00 1F F7 9C 00 9E"},
        {0x400, 2, 0xBFF, 1, 0, 0, "E7 9C 00 1F D0 82 00 90"},
        // all four masks: that of A20 goes to bit 5 for PRG and to bit 1 for CHR
        {0x000, 48, 0x000, 96, 0, 4, "40 C2 00 00 40 E0 00 80"}};
    // No size of CHR has the mask of A20; one that no game has gets it here.
    ExpectWritten(cases, BoardType::kCoolboy, "; 512 KB\n    .DB %00000000", "\n    .DB %00001111");
}

TEST(MenuPacking, CoolgirlRegisters) {
    const std::vector<PackingCase> cases{
        // MMC3 with CHR RAM; NROM with odd CHR; four-screen; every bit of an offset
        {0x010, 8, 0x000, 0, 0, 4, "00 00 00 00 00 00 00 08 78 80 40 00 14 8B"},
        {0x012, 1, 0x013, 1, 1, 0, "00 09 00 00 00 00 00 09 FF 00 1F 00 00 81"},
        {0xFFE, 128, 0xFFF, 32, 4, 4, "07 FF 00 00 00 00 07 FF 80 80 40 00 14 A9"},
        {0x1556, 32, 0x2AA9, 64, 7, 4, "15 54 00 00 00 00 0A AB 60 80 40 00 14 A1"},
        // a size that is no power of two; 74 and 42, which have rules of their own
        {0x040, 96, 0x020, 16, 2, 228, "00 10 00 00 00 00 00 20 A0 E0 10 00 09 89"},
        {0x040, 8, 0x021, 4, 1, 74, "00 10 00 00 00 00 00 20 F8 80 5C 00 14 83"},
        {0x040, 8, 0x020, 0, 0, 42, "00 10 00 00 00 00 00 20 78 E0 00 7C 17 8B"},
        // a code of six bits, mapper flags, a mapper without a row
        {0x040, 8, 0x020, 1, 5, 67, "00 10 00 00 00 00 00 20 F8 00 DF 00 04 E1"},
        {0x040, 8, 0x020, 1, 0, 25, "00 10 00 00 00 00 00 20 F8 80 FF 00 B8 89"},
        {0x040, 8, 0x020, 1, 0, 12, "00 10 00 00 00 00 00 20 F8 80 5F 00 14 89"}};
    ExpectWritten(cases, BoardType::kCoolgirl);
}

TEST(MenuPacking, KnowsEveryMapperOfCoolgirl) {
    std::vector<PackingCase> cases;
    for (unsigned mapper = 0; mapper < 256; ++mapper) {
        MulticartItem item;
        item.mapper = mapper;
        item.prgUnits = 8;
        item.prgOffset = 0x20 << 13;
        BoardRegisters registers = CoolgirlRegisters(item);
        // The two tables differ in one row, and each is to stay: here 152 has the flag with which
        // it switches its mirroring.
        if (mapper == 152) registers.prg[6] |= 0x20;
        cases.push_back({0x20, 8, 0, 0, 0, mapper,
                         fmt::format("00 00 00 00 00 00 {:02X}", fmt::join(registers.prg, " "))});
    }
    ExpectWritten(cases, BoardType::kCoolgirl);
}

TEST(MenuPacking, ReadsRecordsBeyondTheFirstBank) {
    const GameImage last{.name = "last", .number = 2, .mapper = 4, .prg = 8, .chr = 0};
    CartPlan plan{.board = BoardType::kMindkids,
                  .names = CountedNames(830),  // 819 records fill a bank
                  .lastImage = last,
                  .byHand = UsePlainRecords};
    plan.settings.MenuSize = 16;
    const ScriptResult result = Play(plan, R"lua(
        boot()
        move("up")
        put("selected", selected())
        start_game()
        put("prg", hex(bytes(0x8000, 8)))
    )lua");
    EXPECT_EQ(result.At("selected"), "829");
    EXPECT_EQ(FromHex(result.At("prg")), last.Prg().substr(0, 8));
}

}  // namespace
}  // namespace bw::console
