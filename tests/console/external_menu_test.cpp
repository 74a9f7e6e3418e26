// The sample of an external menu on the console: as a source and as the ROM that it assembles to,
// on every board, with a short list and with one that fills several banks.
#include <gtest/gtest.h>

#include "menu_cart.h"
#include "samples.h"

namespace bw::console {
namespace {

// The picture is on all the time but for a page's drawing, so the screen itself tells.
const std::string kHelpers = kSampleScript + R"lua(
    function boot(again)
        if again then emu.softreset() else emu.poweron() end
        frames(1)
        assert(wait_until(function() return row(3):find(" IN 1") end, 100), "no menu shows")
        frames(10)
    end
    function push(buttons, times)
        for _ = 1, times or 1 do press(buttons, 3, 6) end
    end
    -- The row that has the arrow, and its name; only one may have it.
    function chosen()
        local name
        for y = 0, 29 do
            if row(y):sub(3, 3) == ">" then
                assert(not name, "two arrows")
                name = y .. " " .. row(y):sub(4)
            end
        end
        return name
    end
)lua";

struct BoardCase {
    std::string label;
    BoardType board;
    RomFormat format;
};

class ExternalMenu : public testing::TestWithParam<BoardCase> {
  protected:
    // First with the source, then with the ROM that this leaves, in a folder of its own, as a user
    // would copy it.
    void Play(CartPlan plan, const std::string& script,
              const std::function<void(const ScriptResult&)>& check) {
        const TemporaryFolder folder;
        std::filesystem::copy(BANKWEAVER_EXTERNAL_MENU, folder / "mine");
        plan.board = GetParam().board;
        plan.format = GetParam().format;
        plan.settings.ExternMenuEnable = true;
        plan.settings.ExternMenuPath = folder / "mine" / "menu.asm";
        for (const std::string form : {"asm", "nes"}) {
            SCOPED_TRACE(form);
            plan.settings.ExternMenuPath.replace_extension(form);
            check(console::Play(plan, kHelpers + script,
                                "external_" + GetParam().label + "_" + form));
        }
    }
};

TEST_P(ExternalMenu, StartsTheSamples) {
    const GameList games = SampleGames(GetParam().board);
    Play({.games = games}, R"lua(
        function play(index, id, name)
            boot()
            if index == 0 then shot("menu") end
            push("down", index)
            push("start")
            put(name, sample_result(id))
        end
    )lua" + PlaySamples(games),
         [&](const ScriptResult& result) {
             for (const Sample& sample : Samples()) {
                 if (sample.onEveryBoard || GetParam().board == BoardType::kCoolgirl) {
                     EXPECT_EQ(result.At(sample.name), "PASS 0 00") << sample.name;
                 }
             }
         });
}

TEST_P(ExternalMenu, TurnsThePagesOfALongList) {
    const GameImage last{.name = "last", .number = 2, .mapper = 4, .prg = 8, .chr = 3, .flags = 1};
    // Four banks of names, two of records; five names on the last page.
    const GameImage ownTiles{.name = "game", .mapper = 4, .prg = 8, .chr = 0};
    CartPlan plan{.names = CountedNames(995), .images = {ownTiles}, .lastImage = last};
    for (auto& name : plan.names)
        name += u" with a long name beyond the edge";

    Play(plan, R"lua(
        boot()
        put("first", chosen()) put("title", row(3)) put("tenth", row(24)) put("help", row(27))
        push("down") put("down", chosen())
        push("right") put("right", chosen()) put("tenth right", row(24))
        push("right", 27) put("opens a bank", row(10))
        push("left", 29) put("left", chosen()) put("last row", row(14):sub(4))
        put("none", row(16))
        shot("last page")
        push("up", 2) put("page before", chosen())
        push("down", 5) put("last", chosen())
        push("down") put("wrap", chosen())
        push("up") put("wrap back", chosen())
        write_ppu(0x2800, string.rep("U", 0x400))
        start_game()
        put("leftovers", leftovers(true))
        frames(3)
        put("prg", hex(bytes(0x8000, 4) .. bytes(0xC000, 4)))
        put("ram", hex(bytes(0, 0x100) .. bytes(0x200, 0x600)):gsub("00", ""))
        for bank = 0, 2 do
            memory.writebyte(0x10, bank) memory.writebyte(0x11, 1)
            frames(2)
            put("chr " .. bank, hex(ppu_bytes(0, 4) .. ppu_bytes(0x1FFC, 4)))
        end
        put("saved", fill_work_ram())
        boot(true)
        start_game()
        put("kept", work_ram())
        put("leftovers without tiles", leftovers(false))
    )lua",
         [&](const ScriptResult& result) {
             const std::map<std::string, std::string> expected{
                 {"title", "   995 IN 1"},
                 {"help", "   START: PLAY   < >: PAGE"},
                 {"first", "6 NAME 1 WITH A LONG NAME BE"},
                 {"tenth", "   NAME 10 WITH A LONG NAME B"},
                 {"down", "8 NAME 2 WITH A LONG NAME BE"},
                 {"right", "8 NAME 12 WITH A LONG NAME B"},
                 {"tenth right", "   NAME 20 WITH A LONG NAME B"},
                 {"left", "8 NAME 992 WITH A LONG NAME"},
                 {"opens a bank", "   NAME 283 WITH A LONG NAME BE"},
                 {"last row", "NAME 995 WITH A LONG NAME"},
                 {"none", ""},
                 {"page before", "24 NAME 990 WITH A LONG NAME"},
                 {"last", "14 NAME 995 WITH A LONG NAME"},
                 {"wrap", "6 NAME 1 WITH A LONG NAME BE"},
                 {"wrap back", "14 NAME 995 WITH A LONG NAME"},
                 {"leftovers", ""},
                 {"leftovers without tiles", ""},
                 {"ram", ""}};
             for (const auto& [key, text] : expected)
                 EXPECT_EQ(result.At(key), text) << key;
             EXPECT_EQ(result.At("saved").substr(0, 8), "030A1118");
             EXPECT_EQ(result.At("kept"), result.At("saved"));
             const std::string prg = last.Prg();
             EXPECT_EQ(FromHex(result.At("prg")),
                       prg.substr(0, 4) + prg.substr(prg.size() - 0x4000, 4));
             for (size_t bank = 0; bank < 3; ++bank) {
                 const std::string chr = last.Chr().substr(bank * 8192, 8192);
                 EXPECT_EQ(FromHex(result.At("chr " + std::to_string(bank))),
                           chr.substr(0, 4) + chr.substr(8188));
             }
         });
}

INSTANTIATE_TEST_SUITE_P(
    Boards, ExternalMenu,
    testing::Values(BoardCase{"coolboy", BoardType::kCoolboy, RomFormat::kNes20},
                    BoardCase{"mindkids", BoardType::kMindkids, RomFormat::kUnif},
                    BoardCase{"coolgirl", BoardType::kCoolgirl, RomFormat::kNes20}),
    [](const auto& param) { return param.param.label; });

}  // namespace
}  // namespace bw::console
