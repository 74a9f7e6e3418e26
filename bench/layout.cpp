// Laying out 1,024 games of mixed sizes, which is done twice in each build; and estimating the room
// that as many games as can be checked take, which the window does at each click.
#include <cstdlib>

#include "builder/layout/bank_layout.h"
#include "builder/layout/board_space.h"
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

// The same sizes, as a list has them.
bw::GameList MakeList() {
    const std::vector<bw::MulticartItem> items = MakeGames();
    bw::GameList list(bw::kCheckedLimit);
    for (size_t i = 0; i < list.size(); ++i) {
        const bw::MulticartItem& item = items[i % items.size()];
        list[i].checked = true;
        list[i].header.bytes[4] = static_cast<uint8_t>(item.prgCount);
        list[i].header.bytes[5] = static_cast<uint8_t>(item.chrCount);
        list[i].header.bytes[6] = item.mapper == 4 ? 0x40 : 0;
    }
    return list;
}

void MeasureEstimate(const char* what, bw::BoardType board) {
    const bw::GameList list = MakeList();
    std::vector<double> times(51);
    for (double& time : times) {
        time = bench::Time([&] {
            if (bw::EstimateSpace(list, {}, board).usedBytes == 0) std::abort();
        });
    }
    std::printf("space of %zu checked games, %s\n    median  ours %8.2f ms   least %.2f ms\n",
                list.size(), what, bench::Median(times), bench::Least(times));
}

}  // namespace

int main() {
    Measure("COOLBOY", bw::BoardType::kCoolboy);
    Measure("COOLGIRL", bw::BoardType::kCoolgirl);
    MeasureEstimate("COOLBOY", bw::BoardType::kCoolboy);
    MeasureEstimate("COOLGIRL", bw::BoardType::kCoolgirl);
    return 0;
}
