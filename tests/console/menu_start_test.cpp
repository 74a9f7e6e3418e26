// START on the console: what the board's registers get, what is copied to CHR RAM, and in what
// state the console is handed to the game.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "menu_cart.h"
#include "rom/crc32.h"
#include "support/text.h"

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
std::string StartScript(const Cart& cart, unsigned firstRegister) {
    std::string script =
        "local registers = log_writes(" + std::to_string(firstRegister) + R"lua(, 8)
        local mirroring = log_writes(0xA000, 2)
        local function clear(log) for i = #log, 1, -1 do log[i] = nil end end
        local function start(game, chr_banks)
            emu.poweron()
            boot()
            for _ = 1, game do move("down") end
            for address = 0x300, 0x7FF do
                if address < 0x400 or address > 0x4FF then memory.writebyte(address, 0xAA) end
            end
            clear(registers) clear(mirroring)
            press("start", 2, 0)
            assert(wait_until(function() return memory.getregister("pc") >= 0xFFC0
                and memory.getregister("pc") < 0xFFC4 end, 200), "the game doesn't run")
            put("registers " .. game, log_text(registers))
            put("mirroring " .. game, log_text(mirroring))
            put("ram " .. game, hex(bytes(0, 0x1E0) .. bytes(0x200, 0x600)):gsub("00", ""))
            put("prg " .. game, crc(bytes(0x8000, 0x4000)) .. " " .. crc(bytes(0xC000, 0x4000)))
            put("chr " .. game, crc(ppu_bytes(0, 0x2000)))
            for bank = 0, chr_banks - 1 do
                memory.writebyte(0x10, bank) memory.writebyte(0x11, 1)
                frames(2)
                put(string.format("chr %d %d", game, bank), crc(ppu_bytes(0, 0x2000)))
            end
        end
    )lua";
    for (size_t i = 0; i < cart.outcome.finalData.size(); ++i) {
        const bool banked = Games()[i].mapper != 0;
        script += "start(" + std::to_string(i) + ", " +
                  std::to_string(banked ? Games()[i].chr : 0) + ")\n";
    }
    return MenuScript(script);
}

std::string CrcText(std::string_view bytes) {
    return std::to_string(Crc32({reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size()}));
}

// The register writes as the table's record asks for them: first those that bring CHR into view,
// then those of the game.
std::string ExpectedRegisters(const FinalDataRecord& record, bool coolgirl, unsigned first) {
    std::vector<uint8_t> values;
    if (coolgirl) {
        const unsigned base = record.chrOffset / 2;
        values = {static_cast<uint8_t>(base >> 8), static_cast<uint8_t>(base), 0, 0, 0, 0};
        values.insert(values.end(), record.registers.prg.begin(), record.registers.prg.end());
    } else {
        values.assign(record.registers.chr.begin(), record.registers.chr.begin() + 4);
        values.insert(values.end(), record.registers.prg.begin(), record.registers.prg.begin() + 4);
    }
    const size_t chrCount = coolgirl ? 6 : 4;
    std::string text;
    for (size_t i = 0; i < values.size(); ++i) {
        const size_t number = i < chrCount ? i : i - chrCount;
        text += ToUtf8(FormatText(u"%s%04X=%02X", i == 0 ? "" : " ",
                                  static_cast<unsigned>(first + number),
                                  static_cast<unsigned>(values[i])));
    }
    return text;
}

class MenuStart : public testing::TestWithParam<StartCase> {};

TEST_P(MenuStart, HandsTheConsoleToEachGame) {
    const bool coolgirl = GetParam().board == BoardType::kCoolgirl;
    const unsigned firstRegister = GetParam().board == BoardType::kCoolboy ? 0x6000 : 0x5000;
    CartPlan plan{.board = GetParam().board, .format = GetParam().format, .images = Games()};
    plan.settings.MenuSize = GetParam().menuSize;
    plan.names = CountedNames(Games().size());
    const TemporaryFolder folder;
    const bool plainRecords = GetParam().plainRecords;
    if (plainRecords) {
        ASSERT_EQ(MakeMenuByHand(plan, WriteGames(plan, folder.Path(), GetParam().label),
                                 folder.Path(), GetParam().label, UsePlainRecords),
                  "");
    }
    const Cart cart = BuildCart(plan, folder.Path(), GetParam().label);
    ASSERT_EQ(cart.problem, "");
    ASSERT_EQ(cart.outcome.finalData.size(), Games().size());
    const ConsoleResult result = RunOnConsole(
        {.rom = cart.rom, .script = StartScript(cart, firstRegister), .label = GetParam().label});
    ASSERT_TRUE(result.Ok()) << result.problem;

    bool oddNromChr = false;
    bool evenNromChr = false;
    for (size_t i = 0; i < Games().size(); ++i) {
        const GameImage& game = Games()[i];
        const FinalDataRecord& record = cart.outcome.finalData[i];
        const std::string number = std::to_string(i);
        SCOPED_TRACE(game.name);
        EXPECT_EQ(result.At("registers " + number),
                  ExpectedRegisters(record, coolgirl, firstRegister));
        const std::string mirroring = (game.flags & 1) != 0 ? "A000=00 " : "A000=01 ";
        EXPECT_EQ(result.At("mirroring " + number),
                  coolgirl ? "" : mirroring + (plainRecords ? "A001=00 A001=80" : "A001=80"));
        if (!plainRecords) {
            EXPECT_EQ(result.At("ram " + number), "");
        }
        const std::string prg = game.Prg();
        const std::string_view first = std::string_view(prg).substr(0, 0x4000);
        const std::string_view last = std::string_view(prg).substr(prg.size() - 0x4000);
        EXPECT_EQ(result.At("prg " + number), CrcText(first) + " " + CrcText(last));
        const std::string chr = game.Chr();
        if (game.mapper == 0) {
            EXPECT_EQ(result.At("chr " + number), CrcText(chr));
            (record.chrOffset % 2 != 0 ? oddNromChr : evenNromChr) = true;
        }
        for (uint32_t bank = 0; game.mapper != 0 && bank < game.chr; ++bank) {
            EXPECT_EQ(result.At("chr " + number + " " + std::to_string(bank)),
                      CrcText(std::string_view(chr).substr(bank * kChrUnit, kChrUnit)))
                << "8 KB number " << bank;
        }
    }
    EXPECT_TRUE(oddNromChr && evenNromChr) << "the games no longer cover both halves";
}

INSTANTIATE_TEST_SUITE_P(Boards, MenuStart, testing::ValuesIn(Cases()),
                         [](const auto& param) { return param.param.label; });

}  // namespace
}  // namespace bw::console
