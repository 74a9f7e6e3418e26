// The samples from the cartridge: START on each of them, on every board and in every file form,
// ends in its PASS, wherever in the ROM its banks lie.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "list/list_file.h"
#include "menu_cart.h"
#include "samples.h"
#include "support/text.h"

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

void AddImage(GameList& games, const GameImage& image, const std::filesystem::path& folder) {
    const auto file = folder / (image.name + ".nes");
    WriteWholeFile(file, image.File());
    GameEntry entry(file);
    entry.checked = true;
    games.push_back(std::move(entry));
}

// The games of a case in the order of the menu.
GameList ListOf(const CartCase& plan, const std::filesystem::path& folder) {
    GameList samples;
    const auto list = SampleList(plan.board);
    EXPECT_TRUE(LoadListFile(list, list.parent_path(), samples));
    if (plan.reversed) std::reverse(samples.begin(), samples.end());
    GameList games;
    if (plan.company == Company::kSmallGamesFirst) {
        for (uint32_t i = 0; i < 3; ++i)
            AddImage(games, {.name = std::string("small") + std::to_string(i), .number = 10 + i},
                     folder);
        AddImage(games, {.name = "odd", .number = 20, .mapper = 4, .prg = 8, .chr = 3}, folder);
    }
    games.insert(games.end(), samples.begin(), samples.end());
    if (plan.company == Company::kLargeGameLast)
        AddImage(games, {.name = "large", .number = 30, .mapper = 4, .prg = 64, .chr = 32}, folder);
    return games;
}

const Sample* SampleOf(const GameEntry& entry) {
    for (const Sample& sample : Samples())
        if (ToUtf8(entry.path).ends_with("/" + sample.name + ".nes")) return &sample;
    return nullptr;
}

class SamplesOnCart : public testing::TestWithParam<CartCase> {};

TEST_P(SamplesOnCart, EachEndsInItsPass) {
    const CartCase& plan = GetParam();
    const TemporaryFolder folder;
    const GameList games = ListOf(plan, folder.Path());
    CartPlan cartPlan{.board = plan.board, .format = plan.format};
    cartPlan.settings.MenuSize = plan.menuSize;
    if (plan.plainRecords) {
        ASSERT_EQ(MakeMenuByHand(cartPlan, games, folder.Path(), plan.label, UsePlainRecords), "");
    }
    const Cart cart = BuildCart(cartPlan, games, folder.Path(), plan.label);
    ASSERT_EQ(cart.problem, "");

    std::string script = SampleScript() + R"lua(
        function start(index, id, name)
            emu.poweron()
            boot()
            if index == 0 then shot("menu") end
            for _ = 1, index do move("down") end
            press("start", 2, 0)
            put(name, sample_result(id))
            frames(20)
            shot(name)
        end
    )lua";
    size_t count = 0;
    for (size_t i = 0; i < games.size(); ++i) {
        const Sample* sample = SampleOf(games[i]);
        if (sample == nullptr) continue;
        ++count;
        script += "start(" + std::to_string(i) + ", " + std::to_string(sample->id) + ", '" +
                  sample->name + "')\n";
    }
    const ConsoleResult result =
        RunOnConsole({.rom = cart.rom, .script = MenuScript(script), .label = plan.label});
    ASSERT_TRUE(result.Ok()) << result.problem;
    EXPECT_EQ(count, result.values.size());
    for (const Sample& sample : Samples()) {
        if (sample.onEveryBoard || plan.board == BoardType::kCoolgirl) {
            EXPECT_EQ(result.At(sample.name), "PASS 0 00");
        }
    }

    // The case is worth its time only if the banks lie where it says.
    bool inHole = false;
    for (const MulticartItem& item : cart.outcome.layout.items)
        inHole = inHole || (item.isMenu == 0 && item.prgOffset < kHoleEnd);
    EXPECT_EQ(inHole, plan.board == BoardType::kCoolgirl || plan.menuSize < 32);
}

INSTANTIATE_TEST_SUITE_P(Boards, SamplesOnCart, testing::ValuesIn(Cases()),
                         [](const auto& param) { return param.param.label; });

}  // namespace
}  // namespace bw::console
