// What a list of 20,000 rows takes on a board, what to leave out of it and what fills the board up:
// asked at a click, so each of the three has 50 ms.
#include <cstdlib>
#include <random>

#include "builder/layout/board_fit.h"
#include "measure.h"

namespace {

using bw::BoardType;

// Sizes as collections have them. Every fourth game has known sums, every third of those shares
// data with an earlier one. The first `checked` are checked.
bw::GameList MakeList(size_t checked) {
    static constexpr uint8_t kPrg[] = {1, 2, 2, 2, 4, 8, 8, 8, 16, 16, 32, 128};
    static constexpr uint8_t kChr[] = {1, 1, 0, 2, 4, 16, 16, 32, 1, 0, 64};
    std::mt19937 random(15);
    bw::GameList list(bw::kListLimit);
    for (size_t i = 0; i < list.size(); ++i) {
        auto& bytes = list[i].header.bytes;
        bytes = {'N',
                 'E',
                 'S',
                 0x1A,
                 kPrg[random() % std::size(kPrg)],
                 kChr[random() % std::size(kChr)]};
        bytes[6] = bytes[4] <= 2 && bytes[5] <= 1 ? 0 : 0x40;
        list[i].checked = i < checked;
        if (i % 4 == 3) list[i].crcs = bw::DataCrcs{static_cast<uint32_t>(i * 977 + 1), 0};
        if (i % 4 == 3 && bytes[5] != 0) list[i].crcs->chr = static_cast<uint32_t>(i * 977 + 2);
        if (i % 12 == 11) {
            list[i].header = list[i - 4].header;
            list[i].crcs = list[i - 4].crcs;
        }
    }
    return list;
}

template <typename Work>
void Measure(const char* what, const Work& work) {
    std::vector<double> times(21);
    for (double& time : times)
        time = bench::Time(work);
    std::printf("    %-28s median %8.2f ms   least %.2f ms\n", what, bench::Median(times),
                bench::Least(times));
}

void MeasureBoard(BoardType board, size_t checked) {
    const bw::GameList list = MakeList(checked);
    std::printf("%s, %zu of %zu rows checked: %s\n", bw::BoardName(board), checked, list.size(),
                MeasureFit(list, {}, board).Fits() ? "fits" : "doesn't fit");
    Measure("measure", [&] {
        if (MeasureFit(list, {}, board).usedBytes == 0) std::abort();
    });
    size_t rows = 0;
    Measure("leave out the fewest",
            [&] { rows = RowsToLeaveOut(list, {}, board, bw::LeavingOut::kFewest).size(); });
    std::printf("    %zu rows\n", rows);
    Measure("leave out the last",
            [&] { rows = RowsToLeaveOut(list, {}, board, bw::LeavingOut::kLeastLoved).size(); });
    std::printf("    %zu rows\n", rows);
    Measure("fill up", [&] { rows = RowsToFillUp(list, {}, board).size(); });
    std::printf("    %zu rows\n", rows);
}

}  // namespace

int main() {
    for (const BoardType board : {BoardType::kCoolboy, BoardType::kCoolgirl}) {
        for (const size_t checked : {size_t{0}, size_t{120}, size_t{1100}, bw::kListLimit})
            MeasureBoard(board, checked);
    }
    return 0;
}
