// The samples from the cartridge: START on each of them, on every board and in every file form,
// ends in its PASS, wherever in the ROM its banks lie.
#include <algorithm>

#include <gtest/gtest.h>

#include "menu_cart.h"
#include "samples.h"

namespace bw::console {
namespace {

constexpr uint32_t kHoleEnd = 0x80000;  // where the menu of COOLBOY and MINDKIDS ends

// What stands around the samples in the list, so that their banks come to lie elsewhere.
enum class Company { kNone, kSmallGamesFirst, kLargeGameLast };

struct CartCase {
    std::string label;
    BoardType board;
    RomFormat format;
    uint32_t menuSize;
    bool reversed;
    Company company;
    bool plainRecords = false;  // the console works the registers out
};

const std::vector<CartCase>& Cases() {
    using enum BoardType;
    using enum Company;
    static const std::vector<CartCase> cases{
        {"coolboy_nes", kCoolboy, RomFormat::kNes20, 8, false, kNone},
        {"coolboy_unf", kCoolboy, RomFormat::kUnif, 16, true, kSmallGamesFirst},
        {"coolboy_no_hole", kCoolboy, RomFormat::kNes20, 32, false, kLargeGameLast},
        {"mindkids_nes", kMindkids, RomFormat::kNes20, 16, true, kLargeGameLast},
        {"mindkids_unf", kMindkids, RomFormat::kUnif, 8, false, kSmallGamesFirst},
        {"mindkids_no_hole", kMindkids, RomFormat::kUnif, 32, true, kNone},
        {"coolgirl_nes", kCoolgirl, RomFormat::kNes20, 8, false, kNone},
        {"coolgirl_unf", kCoolgirl, RomFormat::kUnif, 8, true, kSmallGamesFirst},
        {"coolgirl_large", kCoolgirl, RomFormat::kNes20, 8, true, kLargeGameLast},
        {"coolboy_packing", kCoolboy, RomFormat::kNes20, 8, false, kSmallGamesFirst, true},
        {"coolboy_packing_large", kCoolboy, RomFormat::kUnif, 32, true, kLargeGameLast, true},
        {"mindkids_packing", kMindkids, RomFormat::kNes20, 16, false, kSmallGamesFirst, true},
        {"coolgirl_packing", kCoolgirl, RomFormat::kNes20, 8, false, kSmallGamesFirst, true},
        {"coolgirl_packing_large", kCoolgirl, RomFormat::kUnif, 8, true, kLargeGameLast, true}};
    return cases;
}

// The games of a case in the order of the menu.
GameList ListOf(const CartCase& plan, const std::filesystem::path& folder) {
    GameList samples = SampleGames(plan.board);
    if (plan.reversed) std::reverse(samples.begin(), samples.end());
    std::vector<GameImage> first;
    std::vector<GameImage> last;
    if (plan.company == Company::kSmallGamesFirst) {
        for (uint32_t i = 0; i < 3; ++i)
            first.push_back({.name = "small" + std::to_string(i), .number = 10 + i});
        first.push_back({.name = "odd", .number = 20, .mapper = 4, .prg = 8, .chr = 3});
    }
    if (plan.company == Company::kLargeGameLast)
        last.push_back({.name = "large", .number = 30, .mapper = 4, .prg = 64, .chr = 32});
    GameList games;
    for (const GameImage& image : first)
        games.push_back(image.Write(folder));
    games.insert(games.end(), samples.begin(), samples.end());
    for (const GameImage& image : last)
        games.push_back(image.Write(folder));
    return games;
}

class SamplesOnCart : public testing::TestWithParam<CartCase> {};

TEST_P(SamplesOnCart, EachEndsInItsPass) {
    const CartCase& test = GetParam();
    const TemporaryFolder folder;
    CartPlan plan{.board = test.board, .format = test.format, .games = ListOf(test, folder.Path())};
    plan.settings.MenuSize = test.menuSize;
    if (test.plainRecords) plan.byHand = UsePlainRecords;
    const Cart cart = BuildCart(plan, folder.Path(), test.label);
    const ScriptResult result = RunOnConsole({.rom = cart.rom,
                                              .script = MenuScript(kSampleScript + R"lua(
        function play(index, id, name)
            emu.poweron()
            boot()
            if index == 0 then shot("menu") end
            for _ = 1, index do move("down") end
            press("start", 2, 0)
            put(name, sample_result(id))
            frames(20)
            shot(name)
        end
    )lua" + PlaySamples(plan.games)),
                                              .label = test.label});
    for (const Sample& sample : Samples()) {
        if (sample.onEveryBoard || test.board == BoardType::kCoolgirl) {
            EXPECT_EQ(result.At(sample.name), "PASS 0 00") << sample.name;
        }
    }

    // The case is worth its time only if the banks lie where it says.
    bool inHole = false;
    for (const MulticartItem& item : cart.outcome.layout.items)
        inHole = inHole || (item.isMenu == 0 && item.prgOffset < kHoleEnd);
    EXPECT_EQ(inHole, test.board == BoardType::kCoolgirl || test.menuSize < 32);
}

INSTANTIATE_TEST_SUITE_P(Boards, SamplesOnCart, testing::ValuesIn(Cases()),
                         [](const auto& param) { return param.param.label; });

}  // namespace
}  // namespace bw::console
