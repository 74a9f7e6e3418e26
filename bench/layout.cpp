// Laying out 1,024 games of mixed sizes, which is done twice in each build.
#include <cstdlib>

#include "builder/bank_layout.h"
#include "measure.h"

namespace {

constexpr size_t kGames = 1024;

bw::MulticartItem MakeMenu() {
    bw::MulticartItem menu;
    menu.isMenu = 1;
    menu.valid = 1;
    menu.SetPrgCount(8);
    menu.SetPrgUnits(8);
    return menu;
}

// Every size that the boards know, the small ones more often. Every eighth game shares its data
// with an earlier one.
std::vector<bw::MulticartItem> MakeGames() {
    static constexpr uint32_t kPrg[] = {1, 2, 2, 2, 4, 8, 8, 16, 16, 32, 3, 128};
    static constexpr uint32_t kChr[] = {1, 0, 1, 2, 4, 16, 16, 32, 1, 0, 64};
    std::vector<bw::MulticartItem> games(kGames);
    for (uint32_t i = 0; i < kGames; ++i) {
        bw::MulticartItem& game = games[i];
        game.index = i;
        game.valid = 1;
        game.mapper = i % 3 == 0 ? 0 : 4;
        game.SetPrgCount(kPrg[i % std::size(kPrg)]);
        game.SetPrgUnits(game.prgCount);
        game.SetChrCount(kChr[i % std::size(kChr)]);
        game.SetChrUnits(game.chrCount);
        const uint32_t data = i % 8 == 7 ? i - 7 : i;
        game.prgCrc = data * 2654435761u + 1;
        game.chrCrc = game.chrCount == 0 ? 0 : data * 2246822519u + 1;
        game.path = "/roms/Some game of this collection " + std::to_string(i) + ".nes";
        game.name = std::u16string(30, u'x');
    }
    return games;
}

void Measure(const char* what, bw::BoardType board) {
    std::vector<bw::MulticartItem> games = MakeGames();
    bw::RoundChrUnits(games);
    if (board != bw::BoardType::kCoolgirl) bw::ApplyPrgMinimum(games);
    const bw::MulticartItem menu = MakeMenu();
    std::vector<double> times(51);
    for (double& time : times) {
        time = bench::Time([&] {
            if (bw::Allocate(menu, games, board).romSize == 0) std::abort();
        });
    }
    std::printf("layout of 1,024 games, %s\n    median  ours %8.2f ms   least %.2f ms\n", what,
                bench::Median(times), bench::Least(times));
}

}  // namespace

int main() {
    Measure("COOLBOY", bw::BoardType::kCoolboy);
    Measure("COOLGIRL", bw::BoardType::kCoolgirl);
    return 0;
}
