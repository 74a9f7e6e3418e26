// The list on the console: what stands on the screen after power-on and after every move, on every
// board and in both file forms, compared with a model of the rules.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include "builder/resources.h"
#include "menu_model.h"
#include "support/text.h"

namespace bw::console {
namespace {

struct Look {
    uint32_t menuSize, style, pageSize, speed;
    bool pageNumber = true;
    bool insertRow = false;
};

CartPlan PlanOf(const Look& look, std::vector<std::u16string> names,
                BoardType board = BoardType::kCoolboy, RomFormat format = RomFormat::kNes20) {
    CartPlan plan{.board = board, .format = format, .names = std::move(names)};
    plan.settings.MenuSize = look.menuSize;
    plan.settings.ShowStyle = look.style;
    plan.settings.PageSize = look.pageSize;
    plan.settings.PageTurningSpeed = look.speed;
    plan.settings.PageNumber = look.pageNumber;
    plan.settings.NameInsertRow = look.insertRow;
    return plan;
}

struct PagesCase {
    std::string label;
    BoardType board;
    RomFormat format;
    size_t games;
    Look look;
    std::string moves;
};

// Wraps at both ends by item, by page and by big step; a short last page that holds the offset
// back; page changes by item in both directions.
const std::string kTour = "UDDDDRLLRLDRAABBBAUSDLRUUULDBRA";

// With five names a page: items and pages that cross the number 256 up and down.
const std::string kAcross256 = "AAAAAAAAAARRLDUUDRLB";

const std::vector<PagesCase>& Cases() {
    using enum BoardType;
    constexpr RomFormat nes = RomFormat::kNes20;
    constexpr RomFormat unf = RomFormat::kUnif;
    static const std::vector<PagesCase> cases{
        {"coolboy_12", kCoolboy, nes, 12, {8, 0, 10, 1}, kTour + "DDDDDDDDDDDDUUUUUUU"},
        {"coolboy_1000_white", kCoolboy, unf, 1000, {16, 1, 10, 2}, kTour},
        {"mindkids_2", kMindkids, nes, 2, {32, 0, 15, 3}, kTour},
        {"mindkids_203_white", kMindkids, unf, 203, {8, 1, 20, 3}, kTour},
        {"coolgirl_1024", kCoolgirl, nes, 1024, {8, 0, 20, 4}, kTour},
        {"coolgirl_1024_rows",
         kCoolgirl,
         unf,
         1024,
         {8, 0, 5, 4, true, true},
         kAcross256 + kTour + "DDDDDDUUUUUU"},
        {"coolboy_1", kCoolboy, nes, 1, {8, 0, 5, 4}, kTour},
        {"coolboy_20_full", kCoolboy, unf, 20, {32, 0, 10, 4, false}, kTour},
        {"coolgirl_47_rows_white", kCoolgirl, nes, 47, {8, 1, 10, 1, true, true}, kTour},
        {"mindkids_1024", kMindkids, nes, 1024, {16, 0, 15, 2}, kTour}};
    return cases;
}

// The attribute table in hexadecimal. Literal on purpose: the menu's own tables say the same in
// another form.
std::string StyleAttributes(bool white) {
    const auto rows = [](const std::string& byte, int count) {
        std::string text;
        for (int i = 0; i < count * 8; ++i)
            text += byte;
        return text;
    };
    return white ? "5555AA55AA665555" + rows("00", 5) + rows("F0", 1) + rows("FF", 1)
                 : rows("00", 1) + rows("55", 5) + rows("A5", 1) + rows("AA", 1);
}

// The screen as 30 lines of text, for messages: tiles $20 to $5F as characters.
std::string ScreenText(std::string_view tiles) {
    std::string text;
    for (size_t i = 0; i < tiles.size(); ++i) {
        const char tile = tiles[i];
        text += tile == 0 ? ' ' : tile >= 0x20 && tile < 0x60 ? tile : '.';
        if (i % 32 == 31) text += "|\n";
    }
    return text;
}

// Compares the states that walk(moves) put with the model's, up to the first difference.
void ExpectStates(const ScriptResult& result, const std::string& moves, MenuModel model) {
    for (size_t step = 0; step <= moves.size(); ++step) {
        if (step > 0) model.Move(moves[step - 1]);
        SCOPED_TRACE("after the moves " + moves.substr(0, step));
        const std::string state = result.At(fmt::format("state {}", step));
        const size_t blank = state.rfind(' ') + 1;
        ASSERT_EQ(state.substr(0, blank),
                  fmt::format("{} {} {} {} ", model.Selected(), model.PageFirst(), model.CursorY(),
                              step > 0 ? model.Frames() : 0));
        ASSERT_EQ(ScreenText(FromHex(state.substr(blank))), ScreenText(model.Tiles()));
    }
}

TEST(MenuPages, ShowWhatTheRulesSay) {
    const TemporaryFolder folder;
    std::vector<CartPlan> plans;
    std::vector<ScriptRun> runs;
    for (const auto& [label, board, format, games, look, moves] : Cases()) {
        plans.push_back(PlanOf(look, CountedNames(games), board, format));
        runs.push_back({.rom = BuildCart(plans.back(), folder.Path(), label).rom,
                        .script = MenuScript("local MOVES = '" + moves + "'" + R"lua(
            boot() shot("menu")
            put("palette", hex(palette()))
            put("attributes", hex(ppu_bytes(0x23C0, 64)))
            put("arrow", hex(oam():sub(2, 8)))
            walk(MOVES)
        )lua"),
                        .label = label});
    }
    const std::vector<ScriptResult> results = RunAllOnConsole(runs);
    for (size_t i = 0; i < results.size(); ++i) {
        SCOPED_TRACE(runs[i].label);
        const auto at = [&](const char* key) { return results[i].At(key); };
        ExpectStates(results[i], Cases()[i].moves, {plans[i].settings, plans[i].names});
        const bool white = Cases()[i].look.style == 1;
        EXPECT_EQ(at("attributes"), StyleAttributes(white));
        EXPECT_EQ(at("palette"),
                  white ? "0F202A2A0F252C2C0F2A27270F2128160F202A2A0F272C2C0F2A27270F252816"
                        : "0F2423230F2121210F2722220F2222220F2222220F2424240F2121210F222222");
        // tile, attribute, X; and a second sprite that doesn't show
        EXPECT_EQ(at("arrow"), white ? "1A0026F8F8F8F8" : "1F0026F8F8F8F8");
    }
}

// Names that fill the row, at the highest speed, and two names that open a bank of the table uncut,
// one of them longer than two records of it can be: the records of a frame must stay inside the
// command buffer, behind which the values of PPU_CTRL and PPU_MASK lie, and a frame's work inside
// the frame.
TEST(MenuLongNames, NeverOverrunTheCommandBuffer) {
    constexpr size_t kFirstOpener = 282;   // (8192 - 2) / (26 + 3)
    constexpr size_t kSecondOpener = 556;  // (8192 - 2 - 258) / (26 + 3) further on
    std::vector<std::u16string> names;
    for (size_t i = 0; i < 1024; ++i) {
        std::string name = "GAME " + std::to_string(10000 + i) + " ABCDEFGHIJKLMNO";
        if (i == kFirstOpener) name.resize(255, '#');
        if (i == kSecondOpener) name.resize(110, '#');
        names.push_back(ToWide(name));
    }
    // By way of the pages of both, 14 and 27.
    const std::string moves = "AARRRRAARRRLRDBUUD";
    for (const BoardType board : {BoardType::kCoolboy, BoardType::kCoolgirl}) {
        const CartPlan plan = PlanOf({8, 0, 20, 4}, names, board);
        const ScriptResult result = Play(plan, "local MOVES = '" + moves + "'" + R"lua(
            boot()
            local most, depth, deepest = 0, 0, 0
            memory.registerwrite(FC_PPU_CURSOR, 1, function(a, s, value)
                most = math.max(most, value)
            end)
            local beside = log_writes(FC_PPU_CTRL, 2)
            memory.registerexec(peek16(0xFFFA), 1, function()
                depth = depth + 1
                deepest = math.max(deepest, depth)
            end)
            memory.registerexec(peek16(0xFFFE), 1, function() depth = depth - 1 end)
            walk(MOVES)
            put("most", most) put("beside", log_text(beside)) put("deepest", deepest)
            put("control", peek(FC_PPU_CTRL) .. " " .. peek(FC_PPU_MASK))
        )lua");
        EXPECT_GT(result.Number("most"), 150);
        EXPECT_LT(result.Number("most"), 0xC0);
        EXPECT_EQ(result.At("beside"), "");
        EXPECT_EQ(result.At("control"), "136 30");
        EXPECT_EQ(result.At("deepest"), "1");
        ExpectStates(result, moves, {plan.settings, names});
    }
}

// The builder refuses more rows than the screen has, but doesn't look into a menu of the user's
// own. Rows below the screen would fall on the attribute table; they stay away.
TEST(MenuRows, BelowTheScreenLeaveTheColoursAlone) {
    const TemporaryFolder folder;
    ASSERT_TRUE(WriteResources(folder / "own"));
    CartPlan plan = PlanOf({8, 0, 20, 4, true, true}, CountedNames(50));
    plan.settings.ExternMenuEnable = true;
    plan.settings.ExternMenuPath = folder / "own" / "menu" / "menu.asm";
    const ScriptResult result = Play(plan, R"lua(
        boot()
        for _ = 1, 5 do move("right") end
        put("colours", hex(ppu_bytes(0x23C0, 64)))
        put("top", row(1)) put("first", row(5)) put("last", row(29))
    )lua");
    EXPECT_EQ(result.At("colours"), StyleAttributes(false));
    EXPECT_EQ(result.At("top"), "");
    EXPECT_EQ(result.At("first"), "      NAME 41");
    EXPECT_EQ(result.At("last"), "");
}

// Names that a careless table or source would break on.
TEST(MenuNames, ShowQuotesPunctuationAndNothingForAnEmptyName) {
    const CartPlan plan = PlanOf({8, 0, 5, 4}, {u"SAY \"HI\"", u"", u"A;B, C'S % $ #1 (X)",
                                                u"\\ ^ _ [@] <=> *+-./:?!&", u"", u"LAST"});
    const ScriptResult result = Play(plan, "boot() walk('RLDDUU') put('first', row(6))");
    ExpectStates(result, "RLDDUU", {plan.settings, plan.names});
    EXPECT_EQ(result.At("first"), "      SAY \"HI\"");
}

}  // namespace
}  // namespace bw::console
