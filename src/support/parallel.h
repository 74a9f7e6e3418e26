// Shares out a loop over several threads.
#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <system_error>
#include <thread>
#include <vector>

namespace bw {

// Calls work(begin, end) for pieces of at most `piece` indices until all of [0, count) is done, on
// at most `threads` threads, the caller's among them. Pieces are handed out in rising order. `work`
// must be safe to call from several threads at once and must not throw.
template <typename Work>
void ForPieces(size_t count, size_t piece, size_t threads, const Work& work) {
    std::atomic<size_t> next{0};
    const auto run = [&] {
        for (size_t begin = next.fetch_add(piece); begin < count; begin = next.fetch_add(piece)) {
            work(begin, std::min(begin + piece, count));
        }
    };
    const size_t pieces = (count + piece - 1) / piece;
    std::vector<std::jthread> helpers;
    try {
        for (size_t i = 1; i < std::min(threads, pieces); ++i)
            helpers.emplace_back(run);
    } catch (const std::system_error&) {
        // No more threads to be had: those that started do the work.
    }
    run();
}

}  // namespace bw
