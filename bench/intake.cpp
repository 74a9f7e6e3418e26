// Taking in a collection of 20,000 images, against the least that any program can do: walk the
// folders, open each image, ask for its size, read 16 bytes, close.
//   bench_intake [warm rounds] [cold rounds]
// The images go below TMPDIR, so that decides which disk is measured.
// Cold rounds empty the system's caches, which needs root and slows everybody for a moment.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <span>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "common/temporary_folder.h"
#include "list/game_entry.h"
#include "measure.h"
#include "support/text.h"

namespace {

constexpr int kFolders = 40;
constexpr int kImagesPerFolder = 500;
constexpr size_t kImages = size_t{kFolders} * kImagesPerFolder;

void MakeImages(const std::filesystem::path& root) {
    std::string image(16 + 4096, '\x55');
    for (int folder = 0; folder < kFolders; ++folder) {
        const auto path = root / ("Collection " + std::to_string(folder));
        std::filesystem::create_directories(path);
        for (int i = 0; i < kImagesPerFolder; ++i) {
            static constexpr char kHeader[16] = {'N', 'E', 'S', 0x1A, 2, 1, 0x41, 0};
            std::copy(std::begin(kHeader), std::end(kHeader), image.begin());
            std::ofstream file(path / ("Game of the year " + std::to_string(i * 7919 % 1000) +
                                       " (" + std::to_string(i) + ").nes"),
                               std::ios::binary);
            file.write(image.data(), static_cast<std::streamsize>(image.size()));
        }
    }
    sync();
}

struct Bare {
    size_t files = 0;
    size_t valid = 0;
    uint64_t bytes = 0;

    void Walk(int folder) {
        DIR* opened = fdopendir(folder);
        while (const dirent* item = readdir(opened)) {
            if (item->d_name[0] == '.') continue;
            if (item->d_type == DT_DIR) {
                Walk(openat(folder, item->d_name, O_RDONLY | O_DIRECTORY));
            } else {
                ReadOne(folder, item->d_name);
            }
        }
        closedir(opened);
    }

    void ReadOne(int folder, const char* name) {
        const int file = openat(folder, name, O_RDONLY);
        struct stat status {};
        fstat(file, &status);
        char header[16];
        const bool whole = read(file, header, sizeof header) == sizeof header;
        close(file);
        ++files;
        bytes += static_cast<uint64_t>(status.st_size);
        if (whole && std::memcmp(header, "NES\x1A", 4) == 0) ++valid;
    }
};

void RunBare(const std::filesystem::path& root) {
    Bare bare;
    bare.Walk(open(root.c_str(), O_RDONLY | O_DIRECTORY));
    if (bare.valid != kImages) std::abort();
}

void RunOurs(const std::filesystem::path& root) {
    const std::vector<bw::GameEntry> entries = bw::ReadGameFolder(root);
    if (entries.size() != kImages || !entries.back().HasValidHeader()) std::abort();
}

void RunByPaths(std::span<const std::filesystem::path> paths) {
    const auto entries = bw::ReadGameEntries(paths);
    if (entries.size() != kImages || !entries.back().HasValidHeader()) std::abort();
}

bool DropCaches() {
    sync();
    std::ofstream control("/proc/sys/vm/drop_caches");
    control << "3" << std::flush;
    return control.good();
}

}  // namespace

int main(int count, char** words) {
    const int warmRounds = count > 1 ? std::atoi(words[1]) : 21;
    const int coldRounds = count > 2 ? std::atoi(words[2]) : 3;
    const TemporaryFolder folder;
    const auto& root = folder.Path();
    MakeImages(root);

    const auto bare = [&] { RunBare(root); };
    const auto ours = [&] { RunOurs(root); };
    std::vector<std::filesystem::path> paths;
    for (const bw::GameEntry& entry : bw::ReadGameFolder(root))
        paths.push_back(bw::TextPath(entry.path));
    const auto byPaths = [&] { RunByPaths(paths); };
    bare();
    bench::Report("20,000 images, warm", bench::InTurn(warmRounds, ours, bare, [] {}));
    bench::Report("20,000 images, warm, by list of paths",
                  bench::InTurn(warmRounds, byPaths, bare, [] {}));
    if (coldRounds > 0 && !DropCaches()) {
        std::puts("cold: not measured, since /proc/sys/vm/drop_caches can't be written");
        return 0;
    }
    const auto drop = [] { DropCaches(); };
    if (coldRounds > 0) {
        bench::Report("20,000 images, cold (drop_caches)",
                      bench::InTurn(coldRounds, ours, bare, drop));
        bench::Report("20,000 images, cold, by list of paths",
                      bench::InTurn(coldRounds, byPaths, bare, drop));
    }
    return 0;
}
