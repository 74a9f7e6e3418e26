// The pads and the sounds: what counts as a press, how held buttons repeat, chords, the second pad,
// the beeps and the pause that START makes for them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "menu_cart.h"

namespace bw::console {
namespace {

ScriptResult PlayMenu(uint32_t music, size_t games, const std::string& script) {
    CartPlan plan{.names = CountedNames(games)};
    plan.settings.PageSize = 20;
    plan.settings.PageTurningSpeed = 4;
    plan.settings.Music = music;
    return Play(plan, "boot()\n" + script);
}

// A press moves at once; held, it repeats on the 30th frame and then on every fifth, for items as
// for pages.
TEST(MenuInput, HeldButtonsRepeat) {
    const ScriptResult result = PlayMenu(0, 200, R"lua(
        -- Puts how often the selection moved, and the frames between.
        local function hold_for(key, button, count, pad)
            local gaps, before, last = {}, selected(), nil
            hold(button, pad)
            for n = 1, count do
                frames(1)
                if selected() ~= before then
                    gaps[#gaps + 1] = last and n - last
                    before, last = selected(), n
                end
            end
            hold("", pad)
            frames(15)
            put(key, table.concat(gaps, " "))
        end
        hold_for("down", "down", 48) put("after down", selected())
        hold_for("short", "down", 29) put("after short", selected())
        hold_for("right", "right", 60)
        hold_for("second pad", "up", 36, 2)
        hold_for("left", "left", 70) put("page wraps", tostring(selected() ~= 0))
    )lua");
    EXPECT_EQ(result.At("down"), "29 5 5 5");
    EXPECT_EQ(result.At("after down"), "5");
    EXPECT_EQ(result.At("short"), "");
    EXPECT_EQ(result.At("after short"), "6");
    // A page takes five frames of names and one more: a repeat that comes on while it is drawn is
    // lost, so every second one counts.
    EXPECT_EQ(result.At("right"), "29 10 10 10");
    EXPECT_EQ(result.At("second pad"), "29 5");
    EXPECT_EQ(result.At("page wraps"), "true");
}

// Only Down and Select work in a chord.
TEST(MenuInput, ChordsDoNothingButForDown) {
    const ScriptResult result = PlayMenu(0, 200, R"lua(
        for _ = 1, 5 do move("right") end
        move("down") move("down")
        local registers = log_writes(0x6000, 4)
        local steps = {}
        local function try(buttons, pad)
            local before = selected()
            move(buttons, pad)
            steps[#steps + 1] = selected() - before
        end
        try("up+left") try("A+B") try("up+A") try("left+right") try("start+A") try("start+up")
        try("down+right") try("select+start") try("up+down") try("select", 2) try("left", 2)
        -- one button of each pad makes a chord as well
        hold("up") try("left", 2) hold("")
        put("steps", table.concat(steps, " "))
        put("registers", log_text(registers))
    )lua");
    EXPECT_EQ(result.At("steps"), "0 0 0 0 0 0 1 1 1 1 -20 0");
    EXPECT_EQ(result.At("registers"), "");
}

struct SoundCase {
    uint32_t music;
    const char* item;
    const char* page;
    const char* enter;
    int pause;  // frames between START and the first register of the board
};

class MenuSound : public testing::TestWithParam<SoundCase> {};

TEST_P(MenuSound, BeepsAndPauses) {
    const ScriptResult result = PlayMenu(GetParam().music, 60, R"lua(
        local sound = log_writes(0x4000, 0x14)
        log_writes(0x4015, 1, sound)
        local function put_sound(key) put(key, log_text(sound)) clear(sound) end
        frames(1) put_sound("quiet")
        move("down") put_sound("item")
        move("right") put_sound("page")
        local registers = log_writes(0x6000, 4)
        local moved = log_writes(0x57, 1)
        local waited = 0
        hold("start")
        repeat
            frames(1)
            waited = waited + 1
            if waited == 1 then put_sound("enter") end
            if waited == 10 then hold("down") end   -- the pause is deaf
        until #registers > 0 or waited > 200
        put("waited", waited) put("moved", #moved)
    )lua");
    EXPECT_EQ(result.At("quiet"), "");
    EXPECT_EQ(result.At("item"), GetParam().item);
    EXPECT_EQ(result.At("page"), GetParam().page);
    EXPECT_THAT(result.At("enter"), testing::StartsWith(GetParam().enter));
    EXPECT_EQ(result.Number("moved"), 0);
    constexpr double kClearing = 4;  // frames in which the menu's picture is cleared
    EXPECT_NEAR(static_cast<double>(result.Number("waited")), GetParam().pause + kClearing, 2);
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
