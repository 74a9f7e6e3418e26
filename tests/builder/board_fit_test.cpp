#include "builder/layout/board_fit.h"

#include <algorithm>
#include <random>

#include <gtest/gtest.h>

#include "builder/layout/bank_layout.h"
#include "test_items.h"

namespace bw {
namespace {

// Random lists near a board's limit, and the plain way to each answer: everything is laid out by
// Allocate as a build would do it.
class RandomShelf {
  public:
    RandomShelf(uint32_t seed, size_t count, bool allChecked) : random_(seed) {
        for (size_t i = 0; i < count; ++i) {
            GameEntry entry;
            const bool large = random_() % 3 != 0;
            entry.header.bytes = {'N', 'E', 'S', 0x1A, Pick(large ? kLarge : kSmall), Pick(kChr)};
            entry.header.bytes[6] = 0x40;
            entry.checked = allChecked || i < count / 2;
            if (random_() % 4 == 0) entry.crcs = DataCrcs{Sum(entry, 4), Sum(entry, 5)};
            games.push_back(entry);
        }
    }

    // Of all checked games but those.
    LayoutResult Layout(const std::vector<uint32_t>& without) const {
        std::vector<MulticartItem> items;
        for (uint32_t row = 0; row < games.size(); ++row) {
            if (!games[row].checked || std::ranges::count(without, row) != 0) continue;
            const InesHeader& header = games[row].header;
            items.push_back(test::Game(row, header.PrgLow(), header.ChrLow()));
            if (games[row].crcs) items.back().prgCrc = games[row].crcs->prg;
            if (games[row].crcs) items.back().chrCrc = games[row].crcs->chr;
        }
        RoundChrUnits(items);
        ApplyPrgMinimum(items);
        return Allocate(test::Menu(8), items, BoardType::kCoolboy);
    }
    bool Fits(const std::vector<uint32_t>& without = {}) const {
        return Layout(without).romSize <= 32u << 20;
    }
    // Whether no set of so many games will do.
    bool NeedsMoreThan(size_t count, std::vector<uint32_t> without = {}) const {
        if (without.size() == count) return !Fits(without);
        for (uint32_t row = without.empty() ? 0 : without.back() + 1; row < games.size(); ++row) {
            without.push_back(row);
            if (!NeedsMoreThan(count, without)) return false;
            without.pop_back();
        }
        return true;
    }
    // Checks one row after the other, where it fits.
    std::vector<uint32_t> TakeInTurn(uint32_t from) {
        std::vector<uint32_t> taken;
        for (uint32_t row = from; row < games.size(); ++row) {
            if (games[row].checked) continue;
            games[row].checked = true;
            games[row].checked = Fits();
            if (games[row].checked) taken.push_back(row);
        }
        return taken;
    }

    GameList games;

  private:
    static constexpr uint8_t kLarge[] = {64, 128, 128, 32};
    static constexpr uint8_t kSmall[] = {2, 8, 16, 4};
    static constexpr uint8_t kChr[] = {0, 1, 4, 16, 32, 3};
    uint8_t Pick(std::span<const uint8_t> values) { return values[random_() % values.size()]; }
    // One of two for each size, so that some games share, but for no data.
    uint32_t Sum(const GameEntry& entry, size_t byte) {
        const uint32_t units = entry.header.bytes[byte];
        return units == 0 ? 0 : units * 8 + random_() % 2;
    }
    std::mt19937 random_;
};

TEST(BoardFit, LeavesOutTheFewestOrTheLast) {
    size_t open = 0;
    for (uint32_t seed = 0; seed < 40; ++seed) {
        RandomShelf shelf(seed, 28 + seed % 8, true);
        const auto rows = RowsToLeaveOut(shelf.games, {}, BoardType::kCoolboy, LeavingOut::kFewest);
        EXPECT_TRUE(shelf.Fits(rows)) << seed;
        for (size_t fewer = 0; fewer < std::min<size_t>(rows.size(), 3); ++fewer)
            EXPECT_TRUE(shelf.NeedsMoreThan(fewer)) << fewer << " would do, seed " << seed;
        open += rows.empty() ? 0 : 1;

        auto last = RowsToLeaveOut(shelf.games, {}, BoardType::kCoolboy, LeavingOut::kLeastLoved);
        uint32_t start = static_cast<uint32_t>(shelf.games.size());
        for (; !shelf.Fits(); shelf.games[start].checked = false)
            --start;
        shelf.TakeInTurn(start);
        std::vector<uint32_t> expected;
        for (; start < shelf.games.size(); ++start)
            if (!shelf.games[start].checked) expected.push_back(start);
        EXPECT_EQ(last, expected) << seed;
    }
    EXPECT_GT(open, 10u) << "the lists are too short to tell";
}

TEST(BoardFit, FillsUpInOrderAndMeasuresWhatABuildMakes) {
    for (uint32_t seed = 0; seed < 60; ++seed) {
        RandomShelf shelf(seed, 50, false);
        const LayoutResult layout = shelf.Layout({});
        const BoardFit fit = MeasureFit(shelf.games, {}, BoardType::kCoolboy);
        EXPECT_EQ(fit.usedBytes, layout.romSize);
        EXPECT_EQ(fit.dataBytes, layout.total) << "the menu's bytes are in it too";
        const auto rows = RowsToFillUp(shelf.games, {}, BoardType::kCoolboy);
        const auto expected = fit.Fits() ? shelf.TakeInTurn(0) : std::vector<uint32_t>();
        EXPECT_EQ(rows, expected) << seed;
    }
}

// Of three games of 1 MB two have the same data: one of them alone frees nothing.
TEST(BoardFit, EqualDataIsFreedByTheLastOfItsGames) {
    GameList games(40, RandomShelf(1, 1, true).games.front());
    for (GameEntry& game : games) {
        game.header.bytes[4] = 64;
        game.header.bytes[5] = 0;
        game.crcs.reset();
    }
    const auto leave = [&](LeavingOut how) {
        return RowsToLeaveOut(games, {}, BoardType::kCoolboy, how);
    };
    games.resize(32);
    games[30].crcs = games[31].crcs = DataCrcs{7, 0};
    EXPECT_TRUE(leave(LeavingOut::kFewest).empty()) << "31 MB and the menu's 1";
    games.insert(games.begin(), games.front());
    EXPECT_EQ(leave(LeavingOut::kFewest), std::vector<uint32_t>{30}) << "the last that helps";
    EXPECT_EQ(leave(LeavingOut::kLeastLoved), (std::vector<uint32_t>{31, 32}));
    EXPECT_EQ(MeasureFit(games, {}, BoardType::kCoolboy).shares.back().adds, 0u);
    EXPECT_EQ(MeasureFit(games, {}, BoardType::kCoolboy).OverBytes(), 1u << 20);
    // More games than a board takes.
    GameList many(1027, games.front());
    for (GameEntry& game : many)
        game.crcs = DataCrcs{8, 0};
    many[5].header.bytes[4] = 128;
    many[5].crcs.reset();
    games.swap(many);
    EXPECT_EQ(leave(LeavingOut::kFewest), (std::vector<uint32_t>{1024, 1025, 1026}));
}

}  // namespace
}  // namespace bw
