// START on the console: what the board's registers get, what is copied to CHR RAM, and in what
// state the console is handed to the game.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include "menu_cart.h"
#include "rom/crc32.h"

namespace bw::console {
namespace {

constexpr size_t kChrUnit = 8192;

// NROM games with CHR at odd and even 8 KB, banked games, more CHR than fits at once, a count that
// the layout rounds up, CHR RAM; both mirrorings.
const std::vector<GameImage>& Games() {
    static const std::vector<GameImage> games{
        {.name = "nrom128", .number = 1, .prg = 1, .chr = 1, .flags = 0},
        {.name = "nrom256", .number = 2, .prg = 2, .chr = 1, .flags = 1},
        {.name = "nrom128b", .number = 3, .prg = 1, .chr = 1, .flags = 1},
        {.name = "mmc3small", .number = 4, .mapper = 4, .prg = 8, .chr = 3, .flags = 0},
        {.name = "mmc3large", .number = 5, .mapper = 4, .prg = 16, .chr = 32, .flags = 1},
        {.name = "mmc3ram", .number = 6, .mapper = 4, .prg = 8, .chr = 0, .flags = 2},
        {.name = "mmc3mid", .number = 7, .mapper = 4, .prg = 32, .chr = 16, .flags = 3}};
    return games;
}

struct StartCase {
    std::string label;
    BoardType board;
    RomFormat format;
    uint32_t menuSize;
    bool plainRecords = false;  // the console works the registers out, and leaves RAM as it is
};

const std::vector<StartCase>& Cases() {
    using enum BoardType;
    static const std::vector<StartCase> cases{
        {"coolboy_nes", kCoolboy, RomFormat::kNes20, 8},
        {"coolboy_unf", kCoolboy, RomFormat::kUnif, 32},
        {"mindkids_nes", kMindkids, RomFormat::kNes20, 16},
        {"mindkids_unf", kMindkids, RomFormat::kUnif, 8},
        {"coolgirl_nes", kCoolgirl, RomFormat::kNes20, 8},
        {"coolgirl_unf", kCoolgirl, RomFormat::kUnif, 8},
        {"coolboy_packing", kCoolboy, RomFormat::kNes20, 8, true},
        {"mindkids_packing", kMindkids, RomFormat::kUnif, 16, true},
        {"coolgirl_packing", kCoolgirl, RomFormat::kNes20, 8, true}};
    return cases;
}

// For every game: power on, go down to it, START, look, then walk its CHR.
constexpr std::string_view kScript = R"lua(
    local registers, mirroring = log_writes(FIRST, 8), log_writes(0xA000, 2)
    function start(game, chr_banks, banked)
        emu.poweron()
        boot()
        for _ = 1, game do move("down") end
        for address = 0x300, 0x7FF do
            if address < 0x400 or address > 0x4FF then memory.writebyte(address, 0xAA) end
        end
        write_ppu(0x2800, string.rep("U", 0x400)) -- the table that the menu doesn't show
        clear(registers) clear(mirroring)
        start_game()
        put("leftovers " .. game, leftovers(chr_banks > 0))
        put("registers " .. game, log_text(registers))
        put("mirroring " .. game, log_text(mirroring))
        put("ram " .. game, hex(bytes(0, 0x1E0) .. bytes(0x200, 0x600)):gsub("00", ""))
        put("prg " .. game, crc(bytes(0x8000, 0x4000)) .. " " .. crc(bytes(0xC000, 0x4000)))
        local chr = {}
        for bank = 0, chr_banks - 1 do
            if banked then memory.writebyte(0x10, bank) memory.writebyte(0x11, 1) frames(2) end
            chr[bank + 1] = crc(ppu_bytes(0, 0x2000))
        end
        put("chr " .. game, table.concat(chr, " "))
    end
    -- Of the game that runs: a player's save, and what a reset and another start leave of it.
    function reset()
        put("saved", fill_work_ram())
        memory.writebyte(FC_PPU_MASK, 0) -- boot() waits for the menu's value
        emu.softreset()
        frames(1)
        boot()
        start_game()
        put("kept", work_ram())
    end
)lua";

// CRC-32 of each `unit` bytes.
std::string Crcs(std::string_view bytes, size_t unit) {
    std::string text;
    for (size_t at = 0; at < bytes.size(); at += unit) {
        const std::string_view part = bytes.substr(at, unit);
        text += fmt::format(" {}", Crc32({reinterpret_cast<const uint8_t*>(part.data()), unit}));
    }
    return text.empty() ? "" : text.substr(1);
}

// The register writes as the table's record asks for them: first those that bring CHR into view,
// then those of the game.
std::string ExpectedRegisters(const FinalDataRecord& record, bool coolgirl, unsigned first) {
    const unsigned base = record.chrOffset / 2;
    std::vector<unsigned> chr{base >> 8, base & 0xFF, 0, 0, 0, 0};
    if (!coolgirl) chr.assign(record.registers.chr.begin(), record.registers.chr.begin() + 4);
    const std::vector<unsigned> prg(record.registers.prg.begin(),
                                    record.registers.prg.begin() + (coolgirl ? 8 : 4));
    std::string text;
    for (const auto& values : {chr, prg})
        for (size_t i = 0; i < values.size(); ++i)
            text += fmt::format(" {:04X}={:02X}", first + i, values[i]);
    return text.substr(1);
}

class MenuStart : public testing::TestWithParam<StartCase> {};

TEST_P(MenuStart, HandsTheConsoleToEachGame) {
    const auto& [label, board, format, menuSize, plainRecords] = GetParam();
    const bool coolgirl = board == BoardType::kCoolgirl;
    const unsigned firstRegister = board == BoardType::kCoolboy ? 0x6000 : 0x5000;
    CartPlan plan{
        .board = board, .format = format, .names = CountedNames(Games().size()), .images = Games()};
    plan.settings.MenuSize = menuSize;
    if (plainRecords) plan.byHand = UsePlainRecords;
    const TemporaryFolder folder;
    const Cart cart = BuildCart(plan, folder.Path(), label);
    ASSERT_EQ(cart.outcome.finalData.size(), Games().size());
    std::string script = fmt::format("FIRST = {}\n{}", firstRegister, kScript);
    for (size_t i = 0; i < Games().size(); ++i)
        script += fmt::format("start({}, {}, {})\n", i, Games()[i].chr, Games()[i].mapper != 0);
    const ScriptResult result =
        RunOnConsole({.rom = cart.rom, .script = MenuScript(script + "reset()"), .label = label});
    EXPECT_EQ(result.At("saved").substr(0, 8), "030A1118");
    EXPECT_EQ(result.At("kept"), result.At("saved"));

    bool oddNromChr = false;
    bool evenNromChr = false;
    for (size_t i = 0; i < Games().size(); ++i) {
        const GameImage& game = Games()[i];
        const FinalDataRecord& record = cart.outcome.finalData[i];
        const auto at = [&](const char* key) { return result.At(fmt::format("{} {}", key, i)); };
        SCOPED_TRACE(game.name);
        EXPECT_EQ(at("registers"), ExpectedRegisters(record, coolgirl, firstRegister));
        const std::string mirroring = (game.flags & 1) != 0 ? "A000=00 " : "A000=01 ";
        EXPECT_EQ(at("mirroring"),
                  coolgirl ? "" : mirroring + (plainRecords ? "A001=00 A001=80" : "A001=80"));
        if (!plainRecords) {
            EXPECT_EQ(at("ram"), "");
        }
        EXPECT_EQ(at("leftovers"), "");
        const std::string prg = game.Prg();
        EXPECT_EQ(at("prg"), Crcs(prg.substr(0, 0x4000) + prg.substr(prg.size() - 0x4000), 0x4000));
        EXPECT_EQ(at("chr"), Crcs(game.Chr(), kChrUnit)) << "of each 8 KB";
        if (game.mapper == 0) (record.chrOffset % 2 != 0 ? oddNromChr : evenNromChr) = true;
    }
    EXPECT_TRUE(oddNromChr && evenNromChr) << "the games no longer cover both halves";
}

INSTANTIATE_TEST_SUITE_P(Boards, MenuStart, testing::ValuesIn(Cases()),
                         [](const auto& param) { return param.param.label; });

}  // namespace
}  // namespace bw::console
