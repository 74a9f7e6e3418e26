// The sample of an external menu on the console: as a source and as the ROM that it assembles to,
// on every board, with a short list and with one that fills several banks.
#include <gtest/gtest.h>

#include "list/list_file.h"
#include "menu_cart.h"
#include "samples.h"
#include "support/text.h"

namespace bw::console {
namespace {

// The sample in a folder of its own, as a user would copy it.
std::filesystem::path CopyOfTheMenu(const std::filesystem::path& folder) {
    std::filesystem::copy(BANKWEAVER_EXTERNAL_MENU, folder / "mine");
    return folder / "mine" / "menu.asm";
}

struct BoardCase {
    std::string label;
    BoardType board;
    RomFormat format;
};

class ExternalMenu : public testing::TestWithParam<BoardCase> {
  protected:
    // First with the source, then with the ROM that this leaves.
    void Play(CartPlan plan, const GameList& games, const std::string& script,
              const std::function<void(const ConsoleResult&)>& check) {
        plan.board = GetParam().board;
        plan.format = GetParam().format;
        plan.settings.ExternMenuEnable = true;
        plan.settings.ExternMenuPath = CopyOfTheMenu(folder_.Path());
        for (const std::string form : {"asm", "nes"}) {
            SCOPED_TRACE(form);
            plan.settings.ExternMenuPath.replace_extension(form);
            const std::string label = "external_" + GetParam().label + "_" + form;
            const Cart cart = BuildCart(plan, games, folder_.Path(), label);
            ASSERT_EQ(cart.problem, "");
            const ConsoleResult result =
                RunOnConsole({.rom = cart.rom, .script = kHelpers + script, .label = label});
            ASSERT_TRUE(result.Ok()) << result.problem;
            check(result);
        }
    }

    TemporaryFolder folder_;

  private:
    // The picture is on all the time but for a page's drawing, so the screen itself tells.
    const std::string kHelpers = R"lua(
        function boot()
            emu.poweron()
            assert(wait_until(function() return row(3):find(" IN 1") end, 100), "no menu shows")
            frames(10)
        end
        function push(buttons) press(buttons, 3, 6) end
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
};

TEST_P(ExternalMenu, StartsTheSamples) {
    GameList games;
    const auto list = SampleList(GetParam().board);
    ASSERT_TRUE(LoadListFile(list, list.parent_path(), games));
    std::string script = SampleScript() + R"lua(
        local index = 0
        function play(name, id)
            boot()
            if index == 0 then shot("menu") end
            for _ = 1, index do push("down") end
            push("start")
            put(name, sample_result(id))
            index = index + 1
        end
    )lua";
    std::vector<std::string> played;
    for (const Sample& sample : Samples()) {
        if (!sample.onEveryBoard && GetParam().board != BoardType::kCoolgirl) continue;
        script.append("play('").append(sample.name).append("', ");
        script.append(std::to_string(sample.id)).append(")\n");
        played.push_back(sample.name);
    }
    Play({}, games, script, [&](const ConsoleResult& result) {
        for (const std::string& name : played)
            EXPECT_EQ(result.At(name), "PASS 0 00") << name;
    });
}

TEST_P(ExternalMenu, TurnsThePagesOfALongList) {
    constexpr size_t kGames =
        995;  // four banks of names, two of records; five names on the last page
    CartPlan plan;
    plan.names = CountedNames(kGames);
    for (auto& name : plan.names)
        name += u" with a long name beyond the edge";
    GameList games = WriteGames(plan, folder_.Path(), "long");
    const GameImage last{.name = "last", .number = 2, .mapper = 4, .prg = 8, .chr = 3, .flags = 1};
    WriteWholeFile(folder_ / "last.nes", last.File());
    games.back().path = PathText(folder_ / "last.nes");

    Play(plan, games, R"lua(
        boot()
        put("first", chosen()) put("title", row(3)) put("tenth", row(24)) put("help", row(27))
        push("down") put("down", chosen())
        push("right") put("right", chosen()) put("tenth right", row(24))
        for _ = 1, 27 do push("right") end put("opens a bank", row(10))
        for _ = 1, 27 do push("left") end
        push("left") push("left") put("left", chosen()) put("last row", row(14):sub(4))
        put("none", row(16))
        shot("last page")
        push("up") push("up") put("page before", chosen())
        push("down") for _ = 1, 4 do push("down") end put("last", chosen())
        push("down") put("wrap", chosen())
        push("up") put("wrap back", chosen())
        push("start")
        assert(wait_until(function() return memory.getregister("pc") >= 0xFFC0
            and memory.getregister("pc") < 0xFFC4 end, 200), "the game doesn't run")
        frames(3)
        put("prg", hex(bytes(0x8000, 4) .. bytes(0xC000, 4)))
        put("ram", hex(bytes(0, 0x100) .. bytes(0x200, 0x600)):gsub("00", ""))
        for bank = 0, 2 do
            memory.writebyte(0x10, bank) memory.writebyte(0x11, 1)
            frames(2)
            put("chr " .. bank, hex(ppu_bytes(0, 4) .. ppu_bytes(0x1FFC, 4)))
        end
    )lua",
         [&](const ConsoleResult& result) {
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
                 {"ram", ""}};
             for (const auto& [key, text] : expected)
                 EXPECT_EQ(result.At(key), text) << key;
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
