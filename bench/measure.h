// What the benchmark programs share: timing two sides in turn, and saying the result.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string_view>
#include <vector>

namespace bench {

// Milliseconds.
template <typename Work>
double Time(const Work& work) {
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    work();
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

inline double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

struct Pair {
    double ours = 0;  // medians, milliseconds
    double bare = 0;
};

// Runs both sides in turn, the first of each round changing, so that a slow moment of the machine
// falls on both.
template <typename Ours, typename Bare, typename Before>
Pair InTurn(int rounds, const Ours& ours, const Bare& bare, const Before& before) {
    std::vector<double> oursTimes;
    std::vector<double> bareTimes;
    const auto runOurs = [&] {
        before();
        oursTimes.push_back(Time(ours));
    };
    const auto runBare = [&] {
        before();
        bareTimes.push_back(Time(bare));
    };
    for (int round = 0; round < rounds; ++round) {
        if (round % 2 == 0) runOurs();
        runBare();
        if (round % 2 != 0) runOurs();
    }
    return {Median(oursTimes), Median(bareTimes)};
}

inline void Report(std::string_view what, const Pair& pair) {
    std::printf("%-44.*s ours %9.2f ms   bare %9.2f ms   ours/bare %5.2f   bare/ours %5.2f\n",
                static_cast<int>(what.size()), what.data(), pair.ours, pair.bare,
                pair.ours / pair.bare, pair.bare / pair.ours);
}

}  // namespace bench
