// Building a COOLGIRL cartridge of 1,024 games and nearly 128 MB, against the least that any
// program can do: read each image twice through a small buffer, take its CRC-32, write one file
// beside the target and rename it.
//   bench_build PATH_OF_BANKWEAVER_CLI [rounds]
// Everything lies below TMPDIR, so that decides which disk is measured.
#include <cstdint>
#include <cstring>
#include <fstream>
#include <random>

#include <libdeflate.h>

#include "child.h"
#include "common/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

struct Group {
    int images;
    uint8_t prg;  // 16 KB units
    uint8_t chr;  // 8 KB units
    uint8_t mapper;
};

// With the menu's 128 KB they fill the board's 128 MB but for some hundred KB.
constexpr Group kGroups[] = {
    {24, 32, 32, 4}, {90, 16, 16, 4}, {130, 8, 16, 4},
    {180, 8, 0, 2},  {440, 2, 1, 0},  {160, 1, 1, 0},
};

// Random bytes, so that no two games share data.
void MakeImages(const fs::path& folder) {
    std::mt19937_64 random(1);
    std::vector<uint64_t> words;
    int number = 0;
    for (const Group& group : kGroups) {
        words.resize((group.prg * 16384u + group.chr * 8192u) / sizeof(uint64_t));
        for (int i = 0; i < group.images; ++i) {
            for (uint64_t& word : words)
                word = random();
            char header[16] = {'N', 'E', 'S', 0x1A};
            header[4] = static_cast<char>(group.prg);
            header[5] = static_cast<char>(group.chr);
            header[6] = static_cast<char>(group.mapper << 4);
            // Sizes mixed along the list, as in a collection ordered by name.
            const int place = number * 389 % 1024;
            std::ofstream file(folder / ("Game " + std::to_string(10000 + place) + ".nes"),
                               std::ios::binary);
            file.write(header, sizeof header);
            file.write(reinterpret_cast<const char*>(words.data()),
                       static_cast<std::streamsize>(words.size() * sizeof(uint64_t)));
            ++number;
        }
    }
    if (number != 1024) std::abort();
    sync();
}

class Bare {
  public:
    int Run(const fs::path& folder, const fs::path& target) {
        std::vector<fs::path> images;
        for (const auto& item : fs::directory_iterator(folder))
            images.push_back(item.path());
        std::sort(images.begin(), images.end());
        uint32_t sum = 0;
        for (const fs::path& image : images) {
            uint32_t crc = 0;
            Read(image, [&](size_t size) { crc = libdeflate_crc32(crc, buffer_, size); });
            sum ^= crc;
        }
        const fs::path temporary = target.string() + ".part";
        const int out = open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
        bool written = out >= 0;
        for (const fs::path& image : images) {
            Read(image, [&](size_t size) {
                written = written && write(out, buffer_, size) == static_cast<ssize_t>(size);
            });
        }
        std::printf("%08x\n", sum);
        return written && close(out) == 0 && rename(temporary.c_str(), target.c_str()) == 0 ? 0 : 1;
    }

  private:
    template <typename Use>
    void Read(const fs::path& image, const Use& use) {
        const int file = open(image.c_str(), O_RDONLY | O_CLOEXEC);
        for (ssize_t size; (size = read(file, buffer_, sizeof buffer_)) > 0;) {
            use(static_cast<size_t>(size));
        }
        close(file);
    }

    uint8_t buffer_[65536];
};

struct Side {
    std::vector<std::string> words;
    fs::path target;
    std::vector<double> times;
    long peak = 0;

    void Run(bool fresh, const fs::path& log) {
        if (fresh) fs::remove(target);
        const bench::ChildResult result = bench::RunChild(words, log);
        times.push_back(result.milliseconds);
        peak = std::max(peak, result.peakKilobytes);
    }
};

void Compare(const char* what, bool fresh, int rounds, Side ours, Side bare, const fs::path& log) {
    for (int round = 0; round < rounds; ++round) {
        if (round % 2 == 0) ours.Run(fresh, log);
        bare.Run(fresh, log);
        if (round % 2 != 0) ours.Run(fresh, log);
        // What the system still has to write must not fall on the next round.
        sync();
    }
    bench::Report(what, {ours.times, bare.times});
    std::printf("    memory  ours %8.1f MB   bare %8.1f MB\n",
                static_cast<double>(ours.peak) / 1024, static_cast<double>(bare.peak) / 1024);
}

}  // namespace

int main(int count, char** words) {
    if (count == 4 && std::strcmp(words[1], "--bare") == 0) return Bare().Run(words[2], words[3]);
    if (count < 2) {
        std::fputs("bench_build PATH_OF_BANKWEAVER_CLI [rounds]\n", stderr);
        return 2;
    }
    const int rounds = count > 2 ? std::atoi(words[2]) : 9;
    const TemporaryFolder scratch;
    const fs::path images = scratch.Path() / "images";
    fs::create_directory(images);
    setenv("BANKWEAVER_HOME", (scratch.Path() / "home").c_str(), 1);
    MakeImages(images);

    Side ours{{words[1], "build", "--board", "coolgirl", "-o", scratch.Path() / "ours.nes", images},
              scratch.Path() / "ours.nes",
              {}};
    Side bare{
        {words[0], "--bare", images, scratch.Path() / "bare.bin"}, scratch.Path() / "bare.bin", {}};
    const fs::path log = fs::temp_directory_path() / "bankweaver-bench-build.log";
    ours.Run(true, log);
    bare.Run(true, log);
    std::printf("%.1f MB of ROM, %.1f MB of images\n",
                static_cast<double>(fs::file_size(ours.target)) / 1048576,
                static_cast<double>(fs::file_size(bare.target)) / 1048576);
    ours.times.clear();
    bare.times.clear();
    Compare("128 MB build, new file", true, rounds, ours, bare, log);
    Compare("128 MB build, over an existing file", false, rounds, ours, bare, log);
    return 0;
}
