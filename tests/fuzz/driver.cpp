// Runs a fuzz target without libFuzzer: every file of the given folder, then N simple variants of
// them in turn, the same in every run:
//   PROGRAM -runs=N FOLDER
// An input that ends the program is left in the file PROGRAM.input.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "fuzz.h"

using Bytes = std::vector<char>;

int main(int count, char** words) {
    size_t runs = 0;
    if (count != 3 || std::sscanf(words[1], "-runs=%zu", &runs) != 1) return 2;
    const std::string atWork = std::string(words[0]) + ".input";
    Bytes input;
    const auto work = [&] {
        std::ofstream(atWork, std::ios::binary).write(input.data(), std::ssize(input));
        // A copy of exact size, so that a read past its end is seen.
        const std::vector<uint8_t> exact(input.begin(), input.end());
        LLVMFuzzerTestOneInput(exact.data(), exact.size());
    };
    std::vector<std::filesystem::path> files(std::filesystem::directory_iterator(words[2]), {});
    std::ranges::sort(files);
    std::vector<Bytes> corpus;
    for (const auto& file : files) {
        std::ifstream stream(file, std::ios::binary);
        input = corpus.emplace_back(std::istreambuf_iterator<char>(stream),
                                    std::istreambuf_iterator<char>());
        work();
    }
    std::mt19937 random;  // its plain numbers are the same with every library
    const auto below = [&](size_t limit) { return static_cast<std::ptrdiff_t>(random() % limit); };
    for (size_t run = 0; run < runs; ++run) {
        input = corpus[run % corpus.size()];
        for (auto steps = below(5); steps >= 0; --steps) {
            const auto at = input.begin() + below(input.size() + 1);
            const auto end = at + std::min(input.end() - at, below(64));
            const Bytes& other = corpus[random() % corpus.size()];
            const auto from = other.begin() + below(other.size() + 1);
            const size_t kind = random() % 4;
            if (kind == 0) input.erase(at, random() % 4 == 0 ? input.end() : end);
            if (kind == 1 && at != end) *at = static_cast<char>(*at ^ 1 << below(8));
            if (kind == 2 && at != end) *at = "\n \"#=[]\x7F\xFF"[below(10)];
            if (kind == 3) input.insert(at, from, from + std::min(other.end() - from, below(64)));
        }
        work();
    }
    std::filesystem::remove(atWork);
}
