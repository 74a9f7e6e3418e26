// The first thing that a user does: building the samples, from the start of the program to the
// written file.
// Not to be run right after something that deleted thousands of files (the other programs here do):
// for some seconds ext4 then takes ten times as long to create one, and a build creates some
// thirty.
//   bench_samples PATH_OF_BANKWEAVER_CLI FOLDER_OF_THE_SAMPLES [rounds]
#include "child.h"
#include "common/temporary_folder.h"

int main(int count, char** words) {
    if (count < 3) {
        std::fputs("bench_samples PATH_OF_BANKWEAVER_CLI FOLDER_OF_THE_SAMPLES [rounds]\n", stderr);
        return 2;
    }
    const int rounds = count > 3 ? std::atoi(words[3]) : 21;
    const TemporaryFolder scratch;
    setenv("BANKWEAVER_HOME", (scratch.Path() / "home").c_str(), 1);
    const auto target = scratch.Path() / "samples.nes";
    const auto log = std::filesystem::temp_directory_path() / "bankweaver-bench-samples.log";
    const std::filesystem::path samples = words[2];
    const std::pair<const char*, const char*> lists[] = {{"coolboy", "samples_coolboy.fcl"},
                                                         {"coolgirl", "samples.fcl"}};
    for (const auto& [board, list] : lists) {
        std::vector<double> times;
        long peak = 0;
        for (int round = 0; round < rounds; ++round) {
            std::filesystem::remove(target);
            const auto result = bench::RunChild(
                {words[1], "build", "--board", board, "-o", target, samples / list}, log);
            times.push_back(result.milliseconds);
            peak = std::max(peak, result.peakKilobytes);
        }
        std::printf(
            "samples on %s\n    median  ours %8.2f ms   least %.2f ms   peak memory %.1f MB\n",
            board, bench::Median(times), bench::Least(times), static_cast<double>(peak) / 1024);
    }
    return 0;
}
