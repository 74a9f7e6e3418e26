#include "designer/import/tile_merge.h"

#include <algorithm>
#include <map>

namespace bw {
namespace {

constexpr size_t kPart = 16;  // pixels between looks at the limit
constexpr size_t kParts = kTilePixelCount / kPart;

// Tiles that show the same pattern.
struct Cluster {
    PixelCosts costs;
    std::array<TileCost, kParts> least{};  // of each part of the pixels
    size_t nearest = 0;                    // the cluster that it would be merged with at least cost
    TileCost nearestCost = kEndless;
    bool stale = false;  // the nearest isn't what it was; another may be as near, none nearer

    void SetNearest(size_t other, TileCost cost) {
        nearest = other;
        nearestCost = cost;
        stale = false;
    }
};

TileCost Lower(TileCost one, TileCost other) {
    return one < other ? one : other;
}

void MeasureCluster(Cluster& cluster) {
    const auto& of = cluster.costs.of;
    for (size_t part = 0; part < kParts; ++part) {
        TileCost sum = 0;
        for (size_t pixel = part * kPart; pixel < (part + 1) * kPart; ++pixel)
            sum += Lower(Lower(of[0][pixel], of[1][pixel]), Lower(of[2][pixel], of[3][pixel]));
        cluster.least[part] = sum;
    }
}

// What both cost more as one than apart; any number over `limit` where it is more than that.
TileCost MergeCost(const Cluster& one, const Cluster& other, TileCost limit) {
    const auto& a = one.costs.of;
    const auto& b = other.costs.of;
    TileCost cost = 0;
    for (size_t part = 0; part < kParts && cost <= limit; ++part) {
        TileCost sum = 0;
        for (size_t pixel = part * kPart; pixel < (part + 1) * kPart; ++pixel) {
            const TileCost cost0 = a[0][pixel] + b[0][pixel];
            const TileCost cost1 = a[1][pixel] + b[1][pixel];
            const TileCost cost2 = a[2][pixel] + b[2][pixel];
            const TileCost cost3 = a[3][pixel] + b[3][pixel];
            sum += Lower(Lower(cost0, cost1), Lower(cost2, cost3));
        }
        cost += sum - one.least[part] - other.least[part];
    }
    return cost;
}

class Merge {
  public:
    explicit Merge(std::span<const PixelCosts> tiles) {
        std::map<TilePattern, size_t> known;
        for (const PixelCosts& tile : tiles) {
            const auto [place, isNew] = known.emplace(tile.Best(), clusters_.size());
            if (isNew) {
                clusters_.push_back({.costs = tile, .least = {}});
            } else {
                clusters_[place->second].costs.Add(tile);
            }
        }
        for (size_t number = 0; number < clusters_.size(); ++number) {
            MeasureCluster(clusters_[number]);
            alive_.push_back(number);
        }
    }

    void Run(size_t limit, const std::atomic<bool>& stop) {
        if (alive_.size() <= limit) return;
        for (size_t later = 1; later < alive_.size() && !stop; ++later)
            for (size_t earlier = 0; earlier < later; ++earlier)
                Compare(alive_[later], alive_[earlier]);
        while (alive_.size() > limit && alive_.size() > 1 && !stop)
            MergeClosest();
    }

    std::vector<TilePattern> Patterns() const {
        std::vector<TilePattern> patterns;
        for (const size_t number : alive_)
            patterns.push_back(clusters_[number].costs.Best());
        return patterns;
    }

  private:
    // Notes it where the two are nearer to each other than what they had.
    void Compare(size_t number, size_t other) {
        Cluster& one = clusters_[number];
        Cluster& two = clusters_[other];
        const TileCost cost = MergeCost(one, two, std::max(one.nearestCost, two.nearestCost));
        if (cost < one.nearestCost) one.SetNearest(other, cost);
        if (cost < two.nearestCost) two.SetNearest(number, cost);
    }

    void FindNearest(size_t number) {
        clusters_[number].nearestCost = kEndless;
        for (const size_t other : alive_)
            if (other != number) Compare(number, other);
    }

    // A cluster whose nearest one has changed or gone is looked after only when its turn comes: all
    // others are at least as far away as that was.
    size_t Closest() {
        while (true) {
            const size_t closest = *std::ranges::min_element(
                alive_, {}, [&](size_t number) { return clusters_[number].nearestCost; });
            if (!clusters_[closest].stale) return closest;
            FindNearest(closest);
        }
    }

    void MergeClosest() {
        const size_t kept = Closest();
        const size_t gone = clusters_[kept].nearest;
        std::erase(alive_, gone);
        clusters_[kept].costs.Add(clusters_[gone].costs);
        MeasureCluster(clusters_[kept]);
        for (const size_t number : alive_) {
            const size_t nearest = clusters_[number].nearest;
            clusters_[number].stale |= nearest == kept || nearest == gone;
        }
        FindNearest(kept);
    }

    std::vector<Cluster> clusters_;
    std::vector<size_t> alive_;
};

}  // namespace

std::vector<TilePattern> MergeTiles(std::span<const PixelCosts> tiles, size_t limit,
                                    const std::atomic<bool>& stop) {
    Merge merge(tiles);
    merge.Run(limit, stop);
    return merge.Patterns();
}

}  // namespace bw
