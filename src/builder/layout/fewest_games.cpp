#include "builder/layout/fewest_games.h"

#include <algorithm>
#include <bit>
#include <functional>
#include <numeric>
#include <optional>
#include <span>
#include <utility>

namespace bw {
namespace {

// Of a byte: what a game frees is told as a part of data that several have.
constexpr uint64_t kPart = 64;
// What the search may cost: games taken up, and games in layouts. About ten milliseconds each.
constexpr size_t kSteps = 200'000;
constexpr size_t kLaidOut = 150'000;
constexpr int kAttempts = 24;  // layouts on the way to games further down

// How many games of each size there are, for the sum of the largest ones.
class SizeCounts {
  public:
    explicit SizeCounts(std::vector<uint64_t> sizes) : sizes_(std::move(sizes)) {
        std::ranges::sort(sizes_, std::greater{});
        sizes_.erase(std::unique(sizes_.begin(), sizes_.end()), sizes_.end());
        counts_.resize(std::bit_ceil(sizes_.size() + 1));
        sums_.resize(counts_.size());
    }

    void Change(uint64_t size, bool add) {
        const auto at = std::ranges::lower_bound(sizes_, size, std::greater{});
        for (auto i = static_cast<size_t>(at - sizes_.begin()) + 1; i < counts_.size();
             i += i & (~i + 1)) {
            counts_[i] += add ? 1 : ~size_t{0};
            sums_[i] += add ? size : ~size + 1;
        }
    }

    // Of the `count` largest of those that are there.
    uint64_t LargestSum(size_t count) const {
        uint64_t sum = 0;
        size_t at = 0;
        for (size_t step = counts_.size() / 2; step != 0; step /= 2) {
            if (at + step >= counts_.size() || counts_[at + step] > count) continue;
            at += step;
            count -= counts_[at];
            sum += sums_[at];
        }
        return at < sizes_.size() ? sum + count * sizes_[at] : sum;
    }

  private:
    std::vector<uint64_t> sizes_;  // the largest first; a sum tree over them, from 1
    std::vector<size_t> counts_;
    std::vector<uint64_t> sums_;
};

class Search {
  public:
    explicit Search(const FitGames& games) : games_(games), sum_(games) {
        for (const FitGames::Game& game : games.games)
            sum_.Add(game.shape);
        JudgeGames();
        const uint64_t bytes = sum_.Bytes();
        need_ = bytes > games.limitBytes ? (bytes - games.limitBytes) * kPart : 0;
    }

    std::vector<uint32_t> Run() {
        size_t count = Count() > games_.gameLimit ? Count() - games_.gameLimit : 0;
        while (count < Count() && freed_[count] < need_)
            ++count;
        const size_t enough = EnoughOfTheLargest(count);
        std::vector<uint32_t> found(order_.begin(),
                                    order_.begin() + static_cast<std::ptrdiff_t>(enough));
        for (; count < enough; ++count) {
            if (const auto set = FindSet(count)) {
                found = *set;
                break;
            }
        }
        if (const auto set = FurthestDown(found.size())) found = *set;
        std::ranges::sort(found);
        return found;
    }

  private:
    size_t Count() const { return games_.games.size(); }
    const GameShape& Shape(size_t game) const { return games_.games[game].shape; }

    // What each game frees at most: its part of all its data. The sum over a set is no less than
    // what leaving the set frees.
    void JudgeGames() {
        std::vector<uint32_t> prgUsers(games_.prgBytes.size());
        std::vector<uint32_t> chrUsers(games_.chrBytes.size());
        for (const FitGames::Game& game : games_.games) {
            ++prgUsers[game.shape.prgData];
            ++chrUsers[game.shape.chrData];
        }
        const auto part = [](uint64_t bytes, uint64_t users) {
            return (bytes * kPart + users - 1) / users;
        };
        for (const FitGames::Game& game : games_.games) {
            const GameShape& shape = game.shape;
            const uint32_t prg = prgUsers[shape.prgData];
            const uint32_t chr = chrUsers[shape.chrData];
            parts_.push_back(part(games_.prgBytes[shape.prgData], prg) +
                             part(games_.chrBytes[shape.chrData], chr));
            alone_.push_back(prg == 1 && chr == 1);
        }
        order_.resize(Count());
        std::iota(order_.begin(), order_.end(), uint32_t{0});
        // Those of equal data stand together, so that they are left out together.
        std::ranges::sort(order_, [this](uint32_t a, uint32_t b) {
            if (parts_[a] != parts_[b]) return parts_[a] > parts_[b];
            if (alone_[a] != alone_[b]) return alone_[a] > alone_[b];
            const GameShape& first = Shape(a);
            const GameShape& second = Shape(b);
            if (first.prgSpan != second.prgSpan) return first.prgSpan > second.prgSpan;
            if (!alone_[a] && first.prgData != second.prgData) {
                return first.prgData > second.prgData;
            }
            return a > b;
        });
        freed_.push_back(0);
        for (const uint32_t game : order_)
            freed_.push_back(freed_.back() + parts_[game]);
    }

    // Without the games of the set.
    bool Fits(std::span<const uint32_t> set, uint64_t* over = nullptr) const {
        std::vector<bool> left(Count());
        for (const uint32_t game : set)
            left[game] = true;
        std::vector<uint32_t> rest;
        rest.reserve(Count() - set.size());
        for (uint32_t game = 0; game < Count(); ++game) {
            if (!left[game]) rest.push_back(game);
        }
        const uint64_t size = games_.RomSize(rest);
        if (over != nullptr) *over = size > games_.limitBytes ? size - games_.limitBytes : 0;
        return size <= games_.limitBytes && rest.size() <= games_.gameLimit;
    }

    // How many of those that free most are enough, from `least` on.
    size_t EnoughOfTheLargest(size_t least) const {
        const auto fits = [&](size_t count) { return Fits(std::span(order_).first(count)); };
        size_t tooFew = least;  // known as such once the first one has failed
        size_t enough = least;
        for (size_t step = 1; enough < Count() && !fits(enough); step *= 2) {
            tooFew = enough;
            enough = std::min(enough + step, Count());
        }
        while (enough - tooFew > 1) {
            const size_t middle = tooFew + (enough - tooFew) / 2;
            (fits(middle) ? enough : tooFew) = middle;
        }
        return enough;
    }

    // Any set of this size that will do, as long as the search may go on. Games alike in size and
    // alone with their data stand for each other.
    std::optional<std::vector<uint32_t>> FindSet(size_t count) {
        std::vector<size_t> chosen;  // places in order_
        const auto drop = [&] {
            sum_.Add(Shape(order_[chosen.back()]));
            chosenParts_ -= parts_[order_[chosen.back()]];
            const size_t place = chosen.back();
            chosen.pop_back();
            return NextKind(place);
        };
        std::optional<std::vector<uint32_t>> found;
        size_t place = 0;
        chosenParts_ = 0;
        while (!found && steps_ < kSteps && laidOut_ < kLaidOut) {
            ++steps_;
            const size_t wanted = count - chosen.size();
            if (wanted == 0) {
                if (sum_.Bytes() <= games_.limitBytes) found = Set(chosen);
                if (found || chosen.empty()) break;
                place = drop();
            } else if (place + wanted > Count() ||
                       chosenParts_ + freed_[place + wanted] - freed_[place] < need_) {
                if (chosen.empty()) break;
                place = drop();
            } else {
                chosen.push_back(place);
                chosenParts_ += parts_[order_[place]];
                sum_.Remove(Shape(order_[place]));
                ++place;
            }
        }
        while (!chosen.empty())
            drop();
        return found;
    }

    std::optional<std::vector<uint32_t>> Set(std::span<const size_t> places) {
        std::vector<uint32_t> set;
        for (const size_t place : places)
            set.push_back(order_[place]);
        laidOut_ += Count() - set.size() + 1;
        return Fits(set) ? std::optional(std::move(set)) : std::nullopt;
    }

    size_t NextKind(size_t place) const {
        const uint32_t game = order_[place];
        size_t next = place + 1;
        while (alone_[game] && next < Count() && alone_[order_[next]] &&
               Shape(order_[next]).prgSpan == Shape(game).prgSpan &&
               Shape(order_[next]).chrSpan == Shape(game).chrSpan) {
            ++next;
        }
        return next;
    }

    // The set of this size that stands furthest down: one game after the other from the end of the
    // list on, as long as the largest of those before it can free what is still needed. What the
    // alignment costs shows in the layout alone, so the need is raised by it.
    std::optional<std::vector<uint32_t>> FurthestDown(size_t count) const {
        uint64_t need = need_;
        for (int attempt = 0; attempt < kAttempts; ++attempt) {
            const std::vector<uint32_t> set = FurthestDown(count, need);
            if (set.size() != count) return std::nullopt;
            uint64_t over = 0;
            if (Fits(set, &over)) return set;
            if (over == 0) return std::nullopt;
            need += over * kPart;
        }
        return std::nullopt;
    }

    std::vector<uint32_t> FurthestDown(size_t count, uint64_t need) const {
        SizeCounts before(parts_);
        for (const uint64_t part : parts_)
            before.Change(part, true);
        std::vector<uint32_t> set;
        uint64_t freed = 0;
        for (size_t game = Count(); game-- > 0 && set.size() < count;) {
            before.Change(parts_[game], false);
            if (freed + parts_[game] + before.LargestSum(count - set.size() - 1) < need) continue;
            freed += parts_[game];
            set.push_back(static_cast<uint32_t>(game));
        }
        return set;
    }

    const FitGames& games_;
    DataSum sum_;                  // of the games that aren't chosen
    std::vector<uint64_t> parts_;  // that each game frees at most, in parts of a byte
    std::vector<bool> alone_;      // whether the game shares nothing
    std::vector<uint32_t> order_;  // those that free most first, of equal ones the last
    std::vector<uint64_t> freed_;  // by the first games of the order, at most
    uint64_t need_ = 0;            // to free at least
    uint64_t chosenParts_ = 0;
    size_t steps_ = 0;
    size_t laidOut_ = 0;
};

}  // namespace

std::vector<uint32_t> FewestGames(const FitGames& games) {
    return Search(games).Run();
}

}  // namespace bw
