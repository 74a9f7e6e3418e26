// The console that somebody watches, in the real emulator:
//   start: from the session's start to its first picture;
//   pace: frames at 60 Hz, how many are late by more than 4 ms, and what a frame takes of the
//     processor, here and in the emulator;
//   pause: the same while nothing runs;
//   ends: a hundred starts and stops, and what is left of them;
//   sound: a program that plays one tone; its samples go to a file at the speed of a loudspeaker,
//     and the silence among them is counted.
//   bench_live [ROM [frames]]
#include <algorithm>
#include <cmath>
#include <condition_variable>
#include <cstdlib>
#include <fstream>
#include <mutex>
#include <string>
#include <thread>

#include <sys/resource.h>
#include <unistd.h>

#include "common/environment_variable.h"
#include "common/temporary_folder.h"
#include "console/live_session.h"
#include "measure.h"
#include "support/files.h"
#include "support/paths.h"

namespace {

using Clock = std::chrono::steady_clock;

class Watch : public bw::LiveWatcher {
  public:
    void Shows(const bw::ConsolePicture&, bw::PadStates) override {
        const std::lock_guard guard(lock_);
        times_.push_back(Clock::now());
        changed_.notify_all();
    }
    void Failed(const bw::ConsoleProblem& problem) override {
        std::fprintf(stderr, "the emulator failed: %s\n", problem.detail.c_str());
        std::exit(1);
    }
    std::vector<Clock::time_point> WaitFor(size_t pictures) {
        std::unique_lock held(lock_);
        changed_.wait(held, [&] { return times_.size() >= pictures; });
        return times_;
    }

  private:
    std::mutex lock_;
    std::condition_variable changed_;
    std::vector<Clock::time_point> times_;
};

// Tells of the consoles that it starts: their processes.
class Told : public bw::Emulator {
  public:
    std::string Name() const override { return emulator_->Name(); }
    bw::ConsoleResult<std::unique_ptr<bw::Console>> Start(
        const bw::ConsoleStart& start) const override {
        auto console = emulator_->Start(start);
        if (console) process = (*console)->ProcessId();
        return console;
    }
    bool There() const { return emulator_ != nullptr; }

    mutable std::atomic<int64_t> process = 0;

  private:
    std::unique_ptr<bw::Emulator> emulator_ = bw::FindEmulator();
};

// Milliseconds of the processor.
double OwnTime() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto milliseconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
    };
    return milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime);
}

double TimeOf(int64_t process) {
    std::ifstream file("/proc/" + std::to_string(process) + "/schedstat");
    double nanoseconds = 0;
    double total = 0;
    // Of each of its threads.
    for (const auto& task :
         std::filesystem::directory_iterator("/proc/" + std::to_string(process) + "/task")) {
        std::ifstream(task.path() / "schedstat") >> nanoseconds;
        total += nanoseconds;
    }
    return total / 1e6;
}

void Starts(const Told& emulator, const bw::LiveOptions& options) {
    std::vector<double> first;
    for (int i = 0; i < 10; ++i) {
        Watch watch;
        std::optional<bw::LiveSession> session;
        first.push_back(bench::Time([&] {
            session.emplace(emulator, watch, options);
            watch.WaitFor(1);
        }));
    }
    std::printf("start to the first picture: %.0f ms (median), %.0f ms at most\n",
                bench::Median(first), *std::ranges::max_element(first));
}

void Pace(const Told& emulator, const bw::LiveOptions& options, size_t frames, bool pauses) {
    Watch watch;
    bw::LiveSession session(emulator, watch, options);
    const size_t before = watch.WaitFor(60).size();
    const auto start = session.Measured();
    const double own = OwnTime();
    const double its = TimeOf(emulator.process);
    const auto times = watch.WaitFor(before + frames);
    const auto end = session.Measured();
    const double ownMilliseconds = (OwnTime() - own) / static_cast<double>(frames);
    const double itsMilliseconds = (TimeOf(emulator.process) - its) / static_cast<double>(frames);
    std::vector<double> off;
    for (size_t i = before + 1; i < times.size(); ++i) {
        const std::chrono::duration<double, std::milli> gap = times[i] - times[i - 1];
        off.push_back(std::abs(gap.count() - 1000 / bw::kFramesPerSecond));
    }
    std::ranges::sort(off);
    const std::chrono::duration<double> took = times.back() - times[before];
    std::printf(
        "%zu frames: %llu late by more than 4 ms, %.3f frames a second; off their distance "
        "by %.2f ms (median), %.2f ms (1 in 100), %.2f ms at most\n",
        frames, static_cast<unsigned long long>(end.late - start.late),
        static_cast<double>(off.size()) / took.count(), off[off.size() / 2],
        off[off.size() * 99 / 100], off.back());
    std::printf("a frame takes %.2f ms of the processor here and %.2f ms in the emulator\n",
                ownMilliseconds, itsMilliseconds);
    if (!pauses) return;
    session.Pause(true);
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    const double ownRest = OwnTime();
    const double itsRest = TimeOf(emulator.process);
    std::this_thread::sleep_for(std::chrono::seconds(5));
    std::printf("5 s of pause take %.2f ms here and %.2f ms in the emulator\n", OwnTime() - ownRest,
                TimeOf(emulator.process) - itsRest);
}

void Ends(const Told& emulator, const bw::LiveOptions& options) {
    for (int i = 0; i < 100; ++i) {
        Watch watch;
        const bw::LiveSession session(emulator, watch, options);
        if (i % 2 == 0) watch.WaitFor(1);
    }
    std::string children;
    std::ifstream("/proc/self/task/" + std::to_string(getpid()) + "/children") >> children;
    size_t left = 0;
    for ([[maybe_unused]] const auto& file :
         std::filesystem::recursive_directory_iterator(bw::WorkFolder().parent_path()))
        ++left;
    std::printf("100 starts and stops leave %zu files and folders and the processes [%s]\n", left,
                children.c_str());
}

// A tone without an end, as an image of 32 KB of program.
void WriteTone(const std::filesystem::path& file) {
    const uint8_t program[] = {0x78, 0xD8,                    // SEI, CLD
                               0xA9, 0x01, 0x8D, 0x15, 0x40,  // the first square channel on
                               0xA9, 0xBF, 0x8D, 0x00, 0x40,  // half of the time, no end, loudest
                               0xA9, 0x08, 0x8D, 0x01, 0x40,  // no sweep
                               0xA9, 0xFD, 0x8D, 0x02, 0x40,  // about 440 Hz
                               0xA9, 0x00, 0x8D, 0x03, 0x40, 0x4C, 0x1B, 0x80};  // JMP to itself
    std::vector<uint8_t> image{'N', 'E', 'S', 0x1A, 2, 1};
    image.resize(16 + 0x8000 + 0x2000);
    std::copy(std::begin(program), std::end(program), image.begin() + 16);
    for (size_t vector = 0; vector < 3; ++vector)
        image[16 + 0x7FFA + 2 * vector + 1] = 0x80;
    bw::WriteFile(file, std::span<const uint8_t>(image));
}

// Samples of 16 bits, one channel. Silence is where nothing moves for longer than the tone's wave.
void Sound(const Told& emulator, const std::filesystem::path& folder, size_t frames) {
    const auto tone = folder / "tone.nes";
    const auto samples = folder / "samples";
    WriteTone(tone);
    const EnvironmentVariable driver("SDL_AUDIODRIVER", "disk");
    const EnvironmentVariable place("SDL_DISKAUDIOFILE", samples.c_str());
    std::printf("with sound, ");
    Pace(emulator, {.rom = tone, .sound = true}, frames, false);
    const auto bytes = bw::ReadFile(samples, uint64_t{1} << 30).ValueOr({});
    const auto* values = reinterpret_cast<const int16_t*>(bytes.data());
    const size_t count = bytes.size() / 2;
    constexpr size_t kWave = 100;  // samples, at 44,100 or 48,000 in a second
    size_t first = 0;
    while (first < count && values[first] == 0)
        ++first;
    size_t gaps = 0, still = 0, silent = 0, longest = 0;
    for (size_t i = first + 1; i < count; ++i) {
        still = values[i] == values[i - 1] ? still + 1 : 0;
        if (still == kWave) ++gaps;
        if (still >= kWave) ++silent;
        longest = std::max(longest, still);
    }
    std::printf(
        "%zu samples, the first %zu of them silent; then %zu gaps, %zu samples together, "
        "the longest %zu\n",
        count, first, gaps, silent, longest);
}

}  // namespace

int main(int count, char** words) {
    const TemporaryFolder home;
    const EnvironmentVariable moved("BANKWEAVER_HOME", home.Path().c_str());
    const Told emulator;
    if (!emulator.There()) {
        std::fputs("there is no emulator\n", stderr);
        return 3;
    }
    const size_t frames = count > 2 ? std::strtoul(words[2], nullptr, 10) : 1800;
    WriteTone(home / "own.nes");
    const bw::LiveOptions options{
        .rom = count > 1 && *words[1] ? std::filesystem::absolute(words[1]) : home / "own.nes"};
    Starts(emulator, options);
    Pace(emulator, options, frames, true);
    Sound(emulator, home.Path(), frames);
    Ends(emulator, options);
}
