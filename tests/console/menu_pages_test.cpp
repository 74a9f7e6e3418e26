// The list on the console: what stands on the screen after power-on and after every move, on every
// board and in both file forms, compared with a model of the rules.
#include <set>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "builder/resources.h"
#include "menu_cart.h"
#include "menu_model.h"
#include "support/text.h"

namespace bw::console {
namespace {

struct PagesCase {
    std::string label;
    BoardType board;
    RomFormat format;
    size_t games;
    BuildSettings settings;
    std::string moves;
};

BuildSettings Look(uint32_t menuSize, uint32_t style, uint32_t pageSize, uint32_t speed,
                   bool pageNumber, bool insertRow = false) {
    BuildSettings settings;
    settings.MenuSize = menuSize;
    settings.ShowStyle = style;
    settings.PageSize = pageSize;
    settings.PageTurningSpeed = speed;
    settings.PageNumber = pageNumber;
    settings.NameInsertRow = insertRow;
    return settings;
}

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
        {"coolboy_12", kCoolboy, nes, 12, Look(8, 0, 10, 1, true), kTour + "DDDDDDDDDDDDUUUUUUU"},
        {"coolboy_1000_white", kCoolboy, unf, 1000, Look(16, 1, 10, 2, true), kTour},
        {"mindkids_2", kMindkids, nes, 2, Look(32, 0, 15, 3, true), kTour},
        {"mindkids_203_white", kMindkids, unf, 203, Look(8, 1, 20, 3, true), kTour},
        {"coolgirl_1024", kCoolgirl, nes, 1024, Look(8, 0, 20, 4, true), kTour},
        {"coolgirl_1024_rows", kCoolgirl, unf, 1024, Look(8, 0, 5, 4, true, true),
         kAcross256 + kTour + "DDDDDDUUUUUU"},
        {"coolboy_1", kCoolboy, nes, 1, Look(8, 0, 5, 4, true), kTour},
        {"coolboy_20_full", kCoolboy, unf, 20, Look(32, 0, 10, 4, false), kTour},
        {"coolgirl_47_rows_white", kCoolgirl, nes, 47, Look(8, 1, 10, 1, true, true), kTour},
        {"mindkids_1024", kMindkids, nes, 1024, Look(16, 0, 15, 2, true), kTour}};
    return cases;
}

MenuModel ModelOf(const PagesCase& test) {
    return {DefaultLook(test.settings, test.games), test.settings, CountedNames(test.games)};
}

std::string StyleAttributes(bool white) {
    const auto repeat = [](const std::string& text, int times) {
        std::string all;
        while (times-- > 0)
            all += text;
        return all;
    };
    return white ? "5555AA55AA665555" + repeat("00", 40) + repeat("F0", 8) + repeat("FF", 8)
                 : repeat("00", 8) + repeat("55", 40) + repeat("A5", 8) + repeat("AA", 8);
}

class MenuPages : public testing::TestWithParam<size_t> {
  protected:
    static void SetUpTestSuite() {
        folder_ = std::make_unique<TemporaryFolder>();
        std::vector<ConsoleRun> runs;
        for (const PagesCase& test : Cases()) {
            const Cart cart = BuildCart({.board = test.board,
                                         .format = test.format,
                                         .settings = test.settings,
                                         .names = CountedNames(test.games)},
                                        folder_->Path(), test.label);
            problems_.push_back(cart.problem);
            runs.push_back({.rom = cart.rom,
                            .script = MenuScript("boot() shot('menu')\n"
                                                 "put('palette', hex(palette()))\n"
                                                 "put('attributes', hex(ppu_bytes(0x23C0, 64)))\n"
                                                 "put('arrow', hex(oam():sub(2, 8)))\n"
                                                 "walk('" +
                                                 test.moves + "')"),
                            .label = test.label});
        }
        results_ = RunAllOnConsole(runs);
    }
    static void TearDownTestSuite() {
        folder_.reset();
        results_.clear();
        problems_.clear();
    }

    const PagesCase& Case() const { return Cases()[GetParam()]; }
    const ConsoleResult& Result() const { return results_[GetParam()]; }

    static std::unique_ptr<TemporaryFolder> folder_;
    static std::vector<ConsoleResult> results_;
    static std::vector<std::string> problems_;
};

std::unique_ptr<TemporaryFolder> MenuPages::folder_;
std::vector<ConsoleResult> MenuPages::results_;
std::vector<std::string> MenuPages::problems_;

TEST_P(MenuPages, EveryMoveShowsWhatTheRulesSay) {
    ASSERT_EQ(problems_[GetParam()], "");
    ASSERT_TRUE(Result().Ok()) << Result().problem;
    MenuModel model = ModelOf(Case());
    for (size_t step = 0; step <= Case().moves.size(); ++step) {
        if (step > 0) model.Move(Case().moves[step - 1]);
        SCOPED_TRACE("after the moves " + Case().moves.substr(0, step));
        std::istringstream state(Result().At("state " + std::to_string(step)));
        size_t selected = 0;
        size_t page = 0;
        unsigned cursorY = 0;
        size_t frames = 0;
        std::string screen;
        state >> selected >> page >> cursorY >> frames >> screen;
        ASSERT_EQ(selected, model.Selected());
        ASSERT_EQ(page, model.PageFirst());
        ASSERT_EQ(cursorY, model.CursorY());
        ASSERT_EQ(frames, step > 0 ? model.Frames() : 0);
        const std::string expected(model.Tiles().begin(), model.Tiles().end());
        ASSERT_EQ(ScreenText(FromHex(screen)), ScreenText(expected));
    }
}

// Literal on purpose: the menu's own tables say the same in another form.
TEST_P(MenuPages, ColoursAndArrowAreThoseOfTheLook) {
    ASSERT_TRUE(Result().Ok()) << Result().problem;
    const bool white = Case().settings.ShowStyle == 1;
    EXPECT_EQ(Result().At("attributes"), StyleAttributes(white));
    EXPECT_EQ(Result().At("palette"),
              white ? "0F202A2A0F252C2C0F2A27270F2128160F202A2A0F272C2C0F2A27270F252816"
                    : "0F2423230F2121210F2722220F2222220F2222220F2424240F2121210F222222");
    // tile, attribute, X; and a second sprite that doesn't show
    EXPECT_EQ(Result().At("arrow"), white ? "1A0026F8F8F8F8" : "1F0026F8F8F8F8");
}

INSTANTIATE_TEST_SUITE_P(Carts, MenuPages, testing::Range<size_t>(0, Cases().size()),
                         [](const auto& param) { return Cases()[param.param].label; });

// The plain rule of the redraw's length, where all names fit the buffer.
TEST(MenuPagesModel, TakesOneFrameForSoManyNames) {
    for (const uint32_t speed : {1u, 2u, 3u, 4u}) {
        const BuildSettings settings = Look(8, 0, 20, speed, true);
        MenuModel model(DefaultLook(settings, 60), settings, CountedNames(60));
        model.Move('R');
        EXPECT_EQ(model.Frames(), (20 + speed - 1) / speed);
    }
}

// Names that fill the row, at the highest speed, and two names that open a bank of the table uncut,
// one of them longer than two records of it can be: the records of a frame must stay inside the
// command buffer, behind which the values of PPU_CTRL and PPU_MASK lie, and a frame's work inside
// the frame.
TEST(MenuLongNames, NeverOverrunTheCommandBuffer) {
    constexpr size_t kGames = 1024;
    constexpr size_t kFirstOpener = 282;   // (8192 - 2) / (26 + 3)
    constexpr size_t kSecondOpener = 556;  // (8192 - 2 - 258) / (26 + 3) further on
    constexpr size_t kPageSize = 20;
    std::vector<std::u16string> names;
    for (size_t i = 0; i < kGames; ++i) {
        std::string name = "GAME " + std::to_string(10000 + i) + " ABCDEFGHIJKLMNO";
        if (i == kFirstOpener) name.resize(255, '#');
        if (i == kSecondOpener) name.resize(110, '#');
        names.push_back(ToWide(name));
    }
    const BuildSettings settings = Look(8, 0, kPageSize, 4, true);
    const std::string moves = "AARRRRAARRRLRDBUUD";

    const TemporaryFolder folder;
    std::vector<ConsoleRun> runs;
    for (const BoardType board : {BoardType::kCoolboy, BoardType::kCoolgirl}) {
        const std::string label = board == BoardType::kCoolboy ? "coolboy" : "coolgirl";
        const Cart cart =
            BuildCart({.board = board, .settings = settings, .names = names}, folder.Path(), label);
        ASSERT_EQ(cart.problem, "");
        runs.push_back({.rom = cart.rom,
                        .script = MenuScript("local MOVES = '" + moves + "'" + R"lua(
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
        )lua"),
                        .label = "long_" + label});
    }
    for (const ConsoleResult& result : RunAllOnConsole(runs)) {
        ASSERT_TRUE(result.Ok()) << result.problem;
        EXPECT_GT(result.Number("most"), 150);
        EXPECT_LT(result.Number("most"), 0xC0);
        EXPECT_EQ(result.At("beside"), "");
        EXPECT_EQ(result.At("control"), "136 30");
        EXPECT_EQ(result.At("deepest"), "1");
        MenuModel model(DefaultLook(settings, kGames), settings, names);
        std::set<size_t> pages;
        for (size_t step = 1; step <= moves.size(); ++step) {
            model.Move(moves[step - 1]);
            SCOPED_TRACE("after the moves " + moves.substr(0, step));
            std::istringstream state(result.At("state " + std::to_string(step)));
            std::vector<std::string> words(std::istream_iterator<std::string>(state), {});
            ASSERT_EQ(words.size(), 5u);
            EXPECT_EQ(words[3], std::to_string(model.Frames()));
            const std::string expected(model.Tiles().begin(), model.Tiles().end());
            ASSERT_EQ(ScreenText(FromHex(words[4])), ScreenText(expected));
            pages.insert(model.PageFirst() / kPageSize);
        }
        EXPECT_THAT(pages,
                    testing::IsSupersetOf({kFirstOpener / kPageSize, kSecondOpener / kPageSize}));
    }
}

// The builder refuses more rows than the screen has, but doesn't look into a menu of the user's
// own. Rows below the screen would fall on the attribute table; they stay away.
TEST(MenuRows, BelowTheScreenLeaveTheColoursAlone) {
    const TemporaryFolder folder;
    ASSERT_EQ(WriteResources(folder.Path() / "own"), std::nullopt);
    BuildSettings settings = Look(8, 0, 20, 4, true, true);
    settings.ExternMenuEnable = true;
    settings.ExternMenuPath = folder.Path() / "own" / "menu" / "menu.asm";
    const Cart cart =
        BuildCart({.settings = settings, .names = CountedNames(50)}, folder.Path(), "rows");
    ASSERT_EQ(cart.problem, "");
    const ConsoleResult result = RunOnConsole({.rom = cart.rom, .script = MenuScript(R"lua(
        boot()
        for _ = 1, 5 do move("right") end
        put("colours", hex(ppu_bytes(0x23C0, 64)))
        put("top", row(1)) put("first", row(5)) put("last", row(29))
    )lua")});
    ASSERT_TRUE(result.Ok()) << result.problem;
    EXPECT_EQ(result.At("colours"), StyleAttributes(false));
    EXPECT_EQ(result.At("top"), "");
    EXPECT_EQ(result.At("first"), "      NAME 41");
    EXPECT_EQ(result.At("last"), "");
}

// Names that a careless table or source would break on.
TEST(MenuNames, ShowQuotesPunctuationAndNothingForAnEmptyName) {
    const std::vector<std::u16string> names{
        u"SAY \"HI\"", u"", u"A;B, C'S % $ #1 (X)", u"\\ ^ _ [@] <=> *+-./:?!&", u"", u"LAST"};
    const BuildSettings settings = Look(8, 0, 5, 4, true);
    const TemporaryFolder folder;
    const Cart cart = BuildCart({.settings = settings, .names = names}, folder.Path(), "names");
    ASSERT_EQ(cart.problem, "");
    const ConsoleResult result =
        RunOnConsole({.rom = cart.rom, .script = MenuScript("boot() walk('RLDDUU')")});
    ASSERT_TRUE(result.Ok()) << result.problem;
    MenuModel model(DefaultLook(settings, names.size()), settings, names);
    for (const char move : std::string("RLDDUU"))
        model.Move(move);
    const std::string last = result.At("state 6");
    EXPECT_EQ(ScreenText(FromHex(std::string_view(last).substr(last.rfind(' ') + 1))),
              ScreenText({reinterpret_cast<const char*>(model.Tiles().data()), 960}));
    EXPECT_THAT(ScreenText(FromHex(std::string_view(last).substr(last.rfind(' ') + 1))),
                testing::HasSubstr("      SAY \"HI\""));
}

}  // namespace
}  // namespace bw::console
