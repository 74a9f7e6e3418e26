// Runs a fuzz target without libFuzzer: every file of the given folders first, then mutations of
// them from a fixed seed, so that a failure in the suite can be repeated.
//   PROGRAM [-runs=N] [-seconds=N] [-seed=N] [-max_len=N] FOLDER_OR_FILE...
// An input that ends the program is left as "crash-input" in the current folder.
#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

extern "C" {
int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);
// Of the sanitizer runtimes, where one is linked: called before it ends the program.
// NOLINTNEXTLINE(bugprone-reserved-identifier)
[[gnu::weak]] void __sanitizer_set_death_callback(void (*callback)());
}

namespace {

using Bytes = std::vector<uint8_t>;

struct Options {
    uint64_t runs = 0;
    uint64_t seconds = 0;
    uint64_t seed = 1;
    uint64_t maxLength = 1 << 16;
    std::vector<std::filesystem::path> inputs;
};

// Where a dying program finds the input at work.
const Bytes* current = nullptr;

void KeepCurrentInput() {
    if (current == nullptr) return;
    if (std::FILE* file = std::fopen("crash-input", "wb")) {
        std::fwrite(current->data(), 1, current->size(), file);
        std::fclose(file);
        std::fputs("The input is in crash-input.\n", stderr);
    }
}

void OnSignal(int signal) {
    KeepCurrentInput();
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

void WatchForDeath() {
    // A sanitizer handles the faults of memory itself, but leaves abort() alone.
    std::signal(SIGABRT, OnSignal);
    if (__sanitizer_set_death_callback != nullptr) {
        __sanitizer_set_death_callback(KeepCurrentInput);
        return;
    }
    for (const int signal : {SIGSEGV, SIGFPE, SIGILL})
        std::signal(signal, OnSignal);
}

void Run(const Bytes& input) {
    current = &input;
    // A copy of exact size on the heap, so that a read past its end is seen.
    const Bytes exact(input);
    LLVMFuzzerTestOneInput(exact.data(), exact.size());
    current = nullptr;
}

class Mutator {
  public:
    Mutator(uint64_t seed, const std::vector<Bytes>& corpus, size_t maxLength)
        : random_(seed), corpus_(corpus), maxLength_(maxLength) {}

    Bytes Next() {
        Bytes input = corpus_[Below(corpus_.size())];
        for (size_t steps = 1 + Below(6); steps > 0; --steps)
            Step(input);
        if (input.size() > maxLength_) input.resize(maxLength_);
        return input;
    }

  private:
    // Not a standard distribution: those differ between libraries.
    size_t Below(size_t limit) { return limit == 0 ? 0 : static_cast<size_t>(random_() % limit); }
    uint8_t Byte() { return static_cast<uint8_t>(random_()); }

    Bytes Piece(const Bytes& source) {
        const size_t begin = Below(source.size());
        const size_t length = Below(std::min<size_t>(source.size() - begin, 64) + 1);
        const auto first = source.begin() + static_cast<std::ptrdiff_t>(begin);
        return {first, first + static_cast<std::ptrdiff_t>(length)};
    }

    void Insert(Bytes& input, const Bytes& piece) {
        const auto at = static_cast<std::ptrdiff_t>(Below(input.size() + 1));
        input.insert(input.begin() + at, piece.begin(), piece.end());
    }

    void Step(Bytes& input) {
        static constexpr uint8_t kTelling[] = {0,   1,   9,   10,   13,   ' ',  '"',  '#',  '=',
                                               '[', ']', '0', 0x1A, 0x7F, 0x80, 0xEF, 0xFE, 0xFF};
        const size_t at = Below(input.size());
        switch (Below(7)) {
            case 0:
                if (!input.empty()) input[at] ^= static_cast<uint8_t>(1u << Below(8));
                break;
            case 1:
                if (!input.empty()) input[at] = kTelling[Below(std::size(kTelling))];
                break;
            case 2:
                Insert(input, Bytes(1 + Below(4), Byte()));
                break;
            case 3:
                Insert(input, {kTelling[Below(std::size(kTelling))]});
                break;
            case 4:
                Insert(input, Piece(corpus_[Below(corpus_.size())]));
                break;
            case 5: {
                const size_t length = Below(std::min<size_t>(input.size() - at, 64) + 1);
                const auto first = input.begin() + static_cast<std::ptrdiff_t>(at);
                input.erase(first, first + static_cast<std::ptrdiff_t>(length));
                break;
            }
            default:
                input.resize(at);
                break;
        }
    }

    std::mt19937_64 random_;
    const std::vector<Bytes>& corpus_;
    size_t maxLength_;
};

std::optional<Options> ParseOptions(int count, char** words) {
    Options options;
    for (int i = 1; i < count; ++i) {
        const std::string_view word = words[i];
        const auto number = [&](std::string_view name, uint64_t& out) {
            if (!word.starts_with(name)) return false;
            out = std::strtoull(words[i] + name.size(), nullptr, 10);
            return true;
        };
        if (number("-runs=", options.runs) || number("-seconds=", options.seconds) ||
            number("-seed=", options.seed) || number("-max_len=", options.maxLength)) {
            continue;
        }
        if (word.starts_with("-")) return std::nullopt;
        options.inputs.emplace_back(word);
    }
    return options;
}

std::vector<Bytes> ReadCorpus(const std::vector<std::filesystem::path>& inputs) {
    std::vector<std::filesystem::path> files;
    for (const auto& input : inputs) {
        if (!std::filesystem::is_directory(input)) {
            files.push_back(input);
            continue;
        }
        for (const auto& item : std::filesystem::directory_iterator(input)) {
            files.push_back(item.path());
        }
    }
    std::sort(files.begin(), files.end());
    std::vector<Bytes> corpus;
    for (const auto& path : files) {
        std::ifstream file(path, std::ios::binary);
        if (file)
            corpus.emplace_back(std::istreambuf_iterator<char>(file),
                                std::istreambuf_iterator<char>());
    }
    return corpus;
}

}  // namespace

int main(int count, char** words) {
    const std::optional<Options> options = ParseOptions(count, words);
    if (!options) {
        std::fputs("unknown option\n", stderr);
        return 2;
    }
    const std::vector<Bytes> corpus = ReadCorpus(options->inputs);
    if (corpus.empty()) {
        std::fputs("no input files\n", stderr);
        return 2;
    }
    WatchForDeath();
    for (const Bytes& input : corpus)
        Run(input);

    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::seconds(options->seconds);
    Mutator mutator(options->seed, corpus, options->maxLength);
    uint64_t done = 0;
    while (done < options->runs || (options->seconds > 0 && Clock::now() < end)) {
        Run(mutator.Next());
        ++done;
    }
    std::printf("%zu files, %llu mutations\n", corpus.size(),
                static_cast<unsigned long long>(done));
    return 0;
}
