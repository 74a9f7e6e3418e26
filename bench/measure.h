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

inline double Least(const std::vector<double>& values) {
    return *std::min_element(values.begin(), values.end());
}

// Milliseconds of both sides, one value for each round.
struct Pair {
    std::vector<double> ours;
    std::vector<double> bare;
};

// Runs both sides in turn, the first of each round changing, so that a slow moment of the machine
// falls on both.
template <typename Ours, typename Bare, typename Before>
Pair InTurn(int rounds, const Ours& ours, const Bare& bare, const Before& before) {
    Pair times;
    const auto runOurs = [&] {
        before();
        times.ours.push_back(Time(ours));
    };
    const auto runBare = [&] {
        before();
        times.bare.push_back(Time(bare));
    };
    for (int round = 0; round < rounds; ++round) {
        if (round % 2 == 0) runOurs();
        runBare();
        if (round % 2 != 0) runOurs();
    }
    return times;
}

// Medians, and the least of all rounds: what the machine can do when nothing else runs on it.
inline void Report(std::string_view what, const Pair& times) {
    const auto line = [](const char* kind, double ours, double bare) {
        std::printf("    %-6s  ours %8.2f ms   bare %8.2f ms   ours/bare %.2f   bare/ours %.2f\n",
                    kind, ours, bare, ours / bare, bare / ours);
    };
    std::printf("%.*s\n", static_cast<int>(what.size()), what.data());
    line("median", Median(times.ours), Median(times.bare));
    line("least", Least(times.ours), Least(times.bare));
}

}  // namespace bench
