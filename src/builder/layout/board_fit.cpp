#include "builder/layout/board_fit.h"

#include <algorithm>
#include <limits>
#include <numeric>

#include "builder/layout/fewest_games.h"
#include "builder/layout/fit_games.h"

namespace bw {
namespace {

// Takes games in as long as they fit, in an order that is given. Layouts are dear, so many games at
// once are tried, and half as many where they don't fit; what the sums rule out isn't tried at all.
class Filling {
  public:
    // `kept`: for each of the games whether it is there already.
    Filling(const FitGames& games, std::vector<bool> kept)
        : games_(games), kept_(std::move(kept)), sum_(games) {
        for (uint32_t at = 0; at < kept_.size(); ++at) {
            if (!kept_[at]) continue;
            sum_.Add(games_.games[at].shape);
            ++count_;
        }
    }

    // Gives those that it has taken, in order.
    std::vector<uint32_t> Take(std::span<const uint32_t> candidates) {
        std::vector<uint32_t> taken;
        if (!Fits()) return taken;
        size_t most = candidates.size();
        for (size_t at = 0; at < candidates.size();) {
            const size_t start = at;
            std::vector<uint32_t> tried;
            for (; at < candidates.size() && tried.size() < most; ++at) {
                if (!MayFit(candidates[at])) continue;
                Put(candidates[at]);
                tried.push_back(candidates[at]);
            }
            if (tried.empty()) break;
            if (Fits()) {
                taken.insert(taken.end(), tried.begin(), tried.end());
                most = tried.size() * 2;
                continue;
            }
            for (const uint32_t game : tried)
                Drop(game);
            most = std::max<size_t>(tried.size() / 2, 1);
            if (tried.size() == 1) {
                Refuse(tried.front());
            } else {
                at = start;
            }
        }
        return taken;
    }

  private:
    struct Added {
        uint32_t prg;
        uint32_t chr;
    };
    Added AddedBy(uint32_t game) const {
        const GameShape& shape = games_.games[game].shape;
        return {sum_.PrgAdded(shape), sum_.ChrAdded(shape)};
    }

    // What takes as much as a game that had no room, or more, has none either.
    bool MayFit(uint32_t game) const {
        const Added added = AddedBy(game);
        return count_ < games_.gameLimit &&
               sum_.Bytes() + added.prg + added.chr <= games_.limitBytes &&
               std::ranges::none_of(refused_, [&](const Added& other) {
                   return other.prg <= added.prg && other.chr <= added.chr;
               });
    }
    void Refuse(uint32_t game) {
        const Added added = AddedBy(game);
        if (added.prg != 0 || added.chr != 0) refused_.push_back(added);
    }
    void Put(uint32_t game) {
        sum_.Add(games_.games[game].shape);
        kept_[game] = true;
        ++count_;
    }
    void Drop(uint32_t game) {
        sum_.Remove(games_.games[game].shape);
        kept_[game] = false;
        --count_;
    }
    bool Fits() const {
        std::vector<uint32_t> some;
        some.reserve(count_);
        for (uint32_t at = 0; at < kept_.size(); ++at) {
            if (kept_[at]) some.push_back(at);
        }
        return sum_.Bytes() <= games_.limitBytes && games_.Fit(some);
    }

    const FitGames& games_;
    std::vector<bool> kept_;
    DataSum sum_;
    size_t count_ = 0;
    std::vector<Added> refused_;
};

// How many games from the first on fit together.
size_t LongestStart(const FitGames& games, std::span<const uint32_t> all) {
    DataSum sum(games);
    size_t most = 0;
    while (most < std::min(all.size(), games.gameLimit)) {
        sum.Add(games.games[most].shape);
        if (sum.Bytes() > games.limitBytes) break;
        ++most;
    }
    const auto fits = [&](size_t count) { return games.Fit(all.first(count)); };
    if (fits(most)) return most;
    // Alignment costs little: the answer is near.
    size_t step = 1;
    size_t tooMany = most;
    while (tooMany > step && !fits(tooMany - step)) {
        tooMany -= step;
        step *= 2;
    }
    size_t good = tooMany > step ? tooMany - step : 0;
    while (tooMany - good > 1) {
        const size_t middle = good + (tooMany - good) / 2;
        (fits(middle) ? good : tooMany) = middle;
    }
    return good;
}

// The shortest end of the list, but for those of it that have room beside the rest.
std::vector<uint32_t> LastGames(const FitGames& games, std::span<const uint32_t> all) {
    const size_t start = LongestStart(games, all);
    std::vector<bool> kept(all.size());
    std::fill_n(kept.begin(), start, true);
    const std::vector<uint32_t> back = Filling(games, std::move(kept)).Take(all.subspan(start));
    std::vector<uint32_t> left;
    std::ranges::set_difference(all.subspan(start), back, std::back_inserter(left));
    return left;
}

std::vector<uint32_t> AllOf(const FitGames& games) {
    std::vector<uint32_t> all(games.games.size());
    std::iota(all.begin(), all.end(), uint32_t{0});
    return all;
}

std::vector<uint32_t> RowsOf(const FitGames& games, std::vector<uint32_t> numbers) {
    for (uint32_t& number : numbers)
        number = games.games[number].row;
    return numbers;
}

}  // namespace

BoardFit MeasureFit(const GameList& list, const BuildSettings& settings, BoardType board) {
    const FitGames games(list, settings, board, FitGames::Rows::kChecked);
    BoardFit fit;
    fit.limitBytes = games.limitBytes;
    fit.games = games.games.size();
    fit.gameLimit = games.gameLimit;
    fit.usedBytes = games.RomSize(AllOf(games));
    DataSum sum(games);
    auto next = games.games.begin();
    for (uint32_t row = 0; row < list.size(); ++row) {
        if (!list[row].checked) continue;
        GameShare share{.row = row, .runs = next != games.games.end() && next->row == row};
        if (share.runs) {
            const uint64_t before = sum.Bytes();
            sum.Add((next++)->shape);
            share.adds = sum.Bytes() - before;
        }
        fit.shares.push_back(share);
    }
    fit.dataBytes = sum.Bytes();
    fit.gapBytes = fit.usedBytes - std::min(fit.usedBytes, fit.dataBytes);
    return fit;
}

std::vector<uint32_t> RowsToLeaveOut(const GameList& list, const BuildSettings& settings,
                                     BoardType board, LeavingOut how) {
    const FitGames games(list, settings, board, FitGames::Rows::kChecked);
    const std::vector<uint32_t> all = AllOf(games);
    if (games.Fit(all)) return {};
    return RowsOf(games, how == LeavingOut::kFewest ? FewestGames(games) : LastGames(games, all));
}

std::vector<uint32_t> RowsToFillUp(const GameList& list, const BuildSettings& settings,
                                   BoardType board, std::optional<std::span<const uint32_t>> rows) {
    const FitGames games(list, settings, board, FitGames::Rows::kAll);
    std::vector<bool> kept(games.games.size());
    std::vector<uint32_t> candidates;
    for (uint32_t at = 0; at < kept.size(); ++at) {
        const uint32_t row = games.games[at].row;
        kept[at] = list[row].checked;
        if (!kept[at] && (!rows || std::ranges::binary_search(*rows, row)))
            candidates.push_back(at);
    }
    return RowsOf(games, Filling(games, std::move(kept)).Take(candidates));
}

}  // namespace bw
