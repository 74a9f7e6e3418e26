// The pads and the sounds: what counts as a press, how held buttons repeat, chords, the second pad,
// the beeps and the pause that START makes for them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "menu_cart.h"

namespace bw::console {
namespace {

class MenuInput : public testing::Test {
  protected:
    ConsoleResult Run(uint32_t music, size_t games, const std::string& script) {
        CartPlan plan{.names = CountedNames(games)};
        plan.settings.PageSize = 20;
        plan.settings.PageTurningSpeed = 4;
        plan.settings.Music = music;
        const Cart cart = BuildCart(plan, folder.Path(), "cart");
        if (!cart.problem.empty()) return {.problem = cart.problem, .values = {}, .files = {}};
        return RunOnConsole({.rom = cart.rom, .script = MenuScript("boot()\n" + script)});
    }

    TemporaryFolder folder;
};

// A press moves at once; held, it repeats on the 30th frame and then on every fifth, for items as
// for pages.
TEST_F(MenuInput, HeldButtonsRepeat) {
    const ConsoleResult result = Run(0, 200, R"lua(
        local function hold_for(button, count, pad)
            local moves, before = {}, selected()
            hold(button, pad)
            for n = 1, count do
                frames(1)
                if selected() ~= before then
                    moves[#moves + 1] = n
                    before = selected()
                end
            end
            hold("", pad)
            frames(15)
            return moves
        end
        local function put_gaps(key, moves)
            local gaps = {}
            for i = 2, #moves do gaps[#gaps + 1] = moves[i] - moves[i - 1] end
            put(key, #moves .. ": " .. table.concat(gaps, " "))
        end
        put_gaps("down", hold_for("down", 48))
        put("after down", selected())
        put_gaps("short", hold_for("down", 29))
        put_gaps("right", hold_for("right", 60))
        put_gaps("second pad", hold_for("up", 36, 2))
        hold_for("left", 70)
        put("page wraps", tostring(selected() ~= 0))
    )lua");
    ASSERT_TRUE(result.Ok()) << result.problem;
    EXPECT_EQ(result.At("down"), "5: 29 5 5 5");
    EXPECT_EQ(result.At("after down"), "5");
    EXPECT_EQ(result.At("short"), "1: ");
    // A page takes five frames of names and one more: a repeat that comes on while it is drawn is
    // lost, so every second one counts.
    EXPECT_EQ(result.At("right"), "5: 29 10 10 10");
    EXPECT_EQ(result.At("second pad"), "3: 29 5");
    EXPECT_EQ(result.At("page wraps"), "true");
}

// Only Down and Select work in a chord.
TEST_F(MenuInput, ChordsDoNothingButForDown) {
    const ConsoleResult result = Run(0, 200, R"lua(
        for _ = 1, 5 do move("right") end
        move("down") move("down")
        local registers = log_writes(0x6000, 4)
        local function try(buttons, pad)
            local before = selected()
            move(buttons, pad)
            put(buttons .. (pad or ""), selected() - before)
        end
        try("up+left") try("A+B") try("up+A") try("left+right") try("start+A") try("start+up")
        try("down+right") try("select+start") try("up+down") try("select", 2) try("left", 2)
        -- one button of each pad makes a chord as well
        hold("up") move("left", 2) hold("")
        frames(2)
        put("both pads", selected())
        put("registers", log_text(registers))
    )lua");
    ASSERT_TRUE(result.Ok()) << result.problem;
    for (const char* const chord :
         {"up+left", "A+B", "up+A", "left+right", "start+A", "start+up"}) {
        EXPECT_EQ(result.At(chord), "0") << chord;
    }
    for (const char* const chord : {"down+right", "select+start", "up+down", "select2"}) {
        EXPECT_EQ(result.At(chord), "1") << chord;
    }
    EXPECT_EQ(result.At("left2"), "-20");
    EXPECT_EQ(result.At("registers"), "");
    EXPECT_EQ(result.At("both pads"), "86");
}

struct SoundCase {
    uint32_t music;
    const char* item;
    const char* page;
    const char* enter;
    int pause;  // frames between START and the first register of the board
};

class MenuSound : public MenuInput, public testing::WithParamInterface<SoundCase> {};

TEST_P(MenuSound, BeepsAndPauses) {
    const ConsoleResult result = Run(GetParam().music, 60, R"lua(
        local sound = {}
        for _, range in ipairs({{0x4000, 0x14}, {0x4015, 1}}) do
            for address = range[1], range[1] + range[2] - 1 do
                memory.registerwrite(address, 1, function(a, s, value)
                    sound[#sound + 1] = {address = a, value = value}
                end)
            end
        end
        local function put_sound(key) put(key, log_text(sound)) end
        local function clear() for i = #sound, 1, -1 do sound[i] = nil end end
        put_sound("quiet")
        move("down") put_sound("item") clear()
        move("right") put_sound("page") clear()
        local registers = log_writes(0x6000, 4)
        local moved = log_writes(0x57, 1)
        hold("start")
        local waited = 0
        repeat
            frames(1)
            waited = waited + 1
            if waited == 1 then put_sound("enter") end
            if waited == 10 then hold("down") end   -- the pause is deaf
        until #registers > 0 or waited > 200
        put("waited", waited)
        put("moved", #moved)
    )lua");
    ASSERT_TRUE(result.Ok()) << result.problem;
    EXPECT_EQ(result.At("quiet"), "");
    EXPECT_EQ(result.At("item"), GetParam().item);
    EXPECT_EQ(result.At("page"), GetParam().page);
    EXPECT_THAT(result.At("enter"), testing::StartsWith(GetParam().enter));
    EXPECT_EQ(result.Number("moved"), 0);
    EXPECT_NEAR(static_cast<double>(result.Number("waited")), GetParam().pause, 2);
}

INSTANTIATE_TEST_SUITE_P(Kinds, MenuSound,
                         testing::Values(SoundCase{0, "", "", "", 2},
                                         SoundCase{1, "4015=03 4000=87 4001=89 4002=F0 4003=00",
                                                   "4015=03 4000=3F 4001=9A 4002=FF 4003=00",
                                                   "4015=02 4004=3F 4005=9A 4006=FF 4007=00", 50}),
                         [](const auto& param) {
                             return param.param.music == 0 ? "silent" : "beeps";
                         });

}  // namespace
}  // namespace bw::console
