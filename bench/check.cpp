// The check of a cart of small games against the bare emulator: the processor time of both for the
// same number of frames. One of eight games stands still, so that it is run alone, too.
//   bench_check [--games N] [--jobs N] [--board coolgirl]
#include <atomic>
#include <cstdlib>

#include <sys/resource.h>

#include "console/cart_check.h"
#include "console/menu_cart.h"
#include "console/menu_driver.h"
#include "measure.h"
#include "small_game.h"
#include "support/text.h"

namespace {

using namespace bw;

// Counts the frames that all of its consoles play.
class CountedEmulator : public Emulator {
  public:
    explicit CountedEmulator(const Emulator& emulator) : emulator_(emulator) {}
    std::string Name() const override { return emulator_.Name(); }
    ConsoleResult<std::unique_ptr<Console>> Start(const ConsoleStart& start) const override {
        ConsoleResult<std::unique_ptr<Console>> started = emulator_.Start(start);
        if (!started) return started;
        return std::unique_ptr<Console>(
            std::make_unique<CountedConsole>(std::move(*started), frames_));
    }
    uint64_t Frames() const { return frames_; }

  private:
    class CountedConsole : public Console {
      public:
        CountedConsole(std::unique_ptr<Console> console, std::atomic<uint64_t>& frames)
            : console_(std::move(console)), frames_(frames) {}
        ConsoleResult<ConsoleRun> Run(const ConsoleOrder& order) override {
            ConsoleResult<ConsoleRun> run = console_->Run(order);
            if (run) frames_ += run->frames;
            return run;
        }
        ConsoleResult<std::vector<uint8_t>> ReadCpu(uint16_t address, uint32_t count) override {
            return console_->ReadCpu(address, count);
        }
        ConsoleResult<std::vector<uint8_t>> ReadPpu(uint16_t address, uint32_t count) override {
            return console_->ReadPpu(address, count);
        }
        ConsoleResult<> WriteCpu(uint16_t address, const std::vector<uint8_t>& bytes) override {
            return console_->WriteCpu(address, bytes);
        }
        ConsoleResult<> KeepState() override { return console_->KeepState(); }
        ConsoleResult<> RestoreState() override { return console_->RestoreState(); }
        ConsoleResult<> Load(const std::filesystem::path& rom) override {
            return console_->Load(rom);
        }
        ConsoleResult<> Power() override { return console_->Power(); }
        ConsoleResult<> Reset() override { return console_->Reset(); }
        void Rest() override { console_->Rest(); }
        int64_t ProcessId() const override { return console_->ProcessId(); }

      private:
        std::unique_ptr<Console> console_;
        std::atomic<uint64_t>& frames_;
    };
    const Emulator& emulator_;
    mutable std::atomic<uint64_t> frames_ = 0;
};

// Seconds of processor time of this process and of those that it has seen end.
double ProcessorTime() {
    double seconds = 0;
    for (const int who : {RUSAGE_SELF, RUSAGE_CHILDREN}) {
        rusage usage{};
        getrusage(who, &usage);
        for (const timeval& time : {usage.ru_utime, usage.ru_stime})
            seconds += static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
    }
    return seconds;
}

struct Cost {
    double seconds = 0;
    double processor = 0;
};

template <typename Work>
Cost Measure(const Work& work) {
    const double before = ProcessorTime();
    const double milliseconds = bench::Time(work);
    return {milliseconds / 1000, ProcessorTime() - before};
}

// So many frames of some of the games, with nothing asked.
void PlayBare(const Emulator& emulator, const CheckSubject& subject, uint64_t frames) {
    constexpr uint32_t kGames = 8;
    const auto console = emulator.Start({.rom = subject.cart});
    if (!console) std::abort();
    MenuDriver menu(**console, true);
    if (!menu.Boot()) std::abort();
    for (uint32_t game = 0; game < kGames; ++game) {
        const auto part = static_cast<uint32_t>(frames / kGames);
        if (!menu.Start(game, {}, {}) || !(*console)->Run({.frames = part})) std::abort();
    }
}

struct Nobody : CheckListener {
    void Checked(const CheckedGame&, size_t, size_t) override {}
};

}  // namespace

int main(int count, char** words) {
    uint32_t games = 1024, jobs = 0;
    BoardType board = BoardType::kCoolboy;
    for (int i = 1; i + 1 < count; i += 2) {
        const std::string_view option = words[i];
        if (option == "--games") games = static_cast<uint32_t>(std::atoi(words[i + 1]));
        if (option == "--jobs") jobs = static_cast<uint32_t>(std::atoi(words[i + 1]));
        if (option == "--board") board = BoardType::kCoolgirl;
    }
    const std::unique_ptr<Emulator> found = FindEmulator();
    if (!found) {
        std::puts("no emulator");
        return 1;
    }
    const TemporaryFolder folder;
    setenv("BANKWEAVER_HOME", (folder.Path() / "home").c_str(), 1);
    console::CartPlan plan{.board = board};
    CheckSubject subject{.cart = {}, .tables = {}};
    for (uint32_t i = 0; i < games; ++i) {
        const auto file = folder.Path() / (std::to_string(i) + ".nes");
        test::WriteText(file, bench::SmallImage({.number = i}, bench::SmallProgram(i % 8, false)));
        plan.games.emplace_back(file);
        plan.games.back().checked = true;
        subject.images.push_back(file);
    }
    subject.cart = console::BuildCart(plan, folder.Path(), "cart").rom;
    FileResult<CartTables> tables = ReadCart(subject.cart);
    if (!tables) std::abort();
    subject.tables = std::move(*tables);

    const CountedEmulator emulator(*found);
    Nobody nobody;
    CheckOutcome outcome;
    const Cost ours = Measure([&] {
        outcome = CheckCart(emulator, subject, {.jobs = jobs, .keepPictures = false}, nobody);
    });
    if (outcome.games.size() != games || outcome.HasErrors()) {
        std::printf("%zu games: %s\n", outcome.games.size(), ToUtf8(outcome.problem).c_str());
        return 1;
    }
    const uint64_t frames = emulator.Frames();
    const Cost bare = Measure([&] { PlayBare(*found, subject, frames); });
    const auto played = static_cast<double>(frames);
    std::printf(
        "check of %u games: %.1f s, %.3f s of processor time a game; %.0f frames, %.0f a second "
        "of\n"
        "processor time, the bare emulator %.0f: %.2f times its processor time\n",
        games, ours.seconds, ours.processor / games, played, played / ours.processor,
        played / bare.processor, ours.processor / bare.processor);
    return 0;
}
