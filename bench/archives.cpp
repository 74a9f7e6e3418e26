// A collection of 20,000 images in 200 zip archives: listing it, against `bsdtar -t` over each and
// a bare loop that reads 16 bytes of each member; building 1,000 games of it, against a bare loop
// that unpacks as often and writes; and one archive of 100,000 members.
//   bench_archives PATH_OF_BSDTAR [rounds]
// The archives go below TMPDIR.
#include <cstdlib>
#include <fstream>
#include <set>

#include <sys/resource.h>

#include "builder/layout/bank_layout.h"
#include "builder/output/rom_writer.h"
#include "child.h"
#include "common/archive_writer.h"
#include "common/temporary_folder.h"
#include "list/game_entry.h"
#include "support/text.h"

namespace {

namespace fs = std::filesystem;

constexpr int kArchives = 200;
constexpr int kImages = 100;  // in each
constexpr int kBuilt = 5;     // of each, spread

// A quarter is noise, which is about what games pack to.
std::string Image(uint32_t number) {
    std::string image = bw::test::ImageBytes({.prg = 2, .chr = 1}, number);
    for (size_t i = 16; i < image.size(); ++i) {
        if (i / 64 % 4 != 0) image[i] = static_cast<char>(i / 64 + number);
    }
    return image;
}

void MakeArchive(const fs::path& file, uint32_t first, int images, bool small) {
    std::vector<bw::test::ArchiveMember> members;
    for (int i = 0; i < images; ++i) {
        const uint32_t number = first + static_cast<uint32_t>(i);
        members.push_back({"Game of the year " + std::to_string(i * 37 % images) + ".nes",
                           small ? bw::test::Header({1, 1}) : Image(number)});
    }
    bw::test::WriteArchive(file, members, "zip:compression-level=1");
}

// Calls use(entry, reader) for each member of an archive.
template <typename Use>
void Bare(const fs::path& file, const Use& use) {
    archive* const reader = archive_read_new();
    archive_read_support_format_zip(reader);
    archive_read_open_filename(reader, file.c_str(), 65536);
    archive_entry* entry = nullptr;
    while (archive_read_next_header(reader, &entry) == ARCHIVE_OK)
        use(archive_entry_pathname(entry), reader);
    archive_read_free(reader);
}

class Listing {
  public:
    Listing(fs::path root, std::string bsdtar)
        : root_(std::move(root)), bsdtar_(std::move(bsdtar)) {
        for (const auto& item : fs::directory_iterator(root_))
            files_.push_back(item.path());
        std::sort(files_.begin(), files_.end());
    }
    void Ours() const {
        const auto entries = bw::ReadGameFolder(root_);
        if (entries.size() != kArchives * kImages || !entries.back().HasValidHeader()) std::abort();
    }
    void Bare() const {
        for (const fs::path& file : files_)
            bench::RunChild({bsdtar_, "-t", "-f", file.string()});
        int valid = 0;
        for (const fs::path& file : files_) {
            ::Bare(file, [&](const char*, archive* reader) {
                char start[16];
                valid += archive_read_data(reader, start, 16) == 16 && start[0] == 'N' ? 1 : 0;
            });
        }
        if (valid != kArchives * kImages) std::abort();
    }

  private:
    fs::path root_;
    std::string bsdtar_;
    std::vector<fs::path> files_;
};

class Building {
  public:
    Building(const fs::path& root, fs::path out) : out_(std::move(out)) {
        const auto entries = bw::ReadGameFolder(root);
        // Round the archives, so that the list jumps from one to the next.
        for (int i = 0; i < kBuilt; ++i) {
            for (int file = 0; file < kArchives; ++file) {
                const auto at = static_cast<size_t>(file * kImages + i * 19);
                paths_.push_back(bw::TextPath(entries[at].path));
            }
        }
        for (const fs::path& path : paths_) {
            wanted_[path.parent_path()].insert(path.filename().string());
        }
    }
    void Ours() const {
        auto items = bw::LoadMulticartItems(paths_);
        for (size_t i = 0; i < items.size(); ++i) {
            if (items[i].valid == 0) std::abort();
            items[i].index = static_cast<uint32_t>(i);
        }
        bw::MulticartItem menu;
        menu.isMenu = 1;
        const auto layout = bw::Allocate(menu, items, bw::BoardType::kCoolgirl);
        if (!bw::WriteRom(layout, bw::BoardType::kCoolgirl, bw::RomFormat::kBinary, out_)) {
            std::abort();
        }
    }
    void Bare() const {
        uint32_t crc = 0;
        size_t unpacked = 0;
        std::vector<char> bytes(16 + 40960);
        std::ofstream out(out_.string() + ".bare", std::ios::binary);
        for (const bool write : {false, true}) {
            for (const auto& [file, names] : wanted_) {
                ::Bare(file, [&](const char* name, archive* reader) {
                    if (!names.contains(name)) return;
                    const auto size = archive_read_data(reader, bytes.data(), bytes.size());
                    unpacked += static_cast<size_t>(size);
                    if (write) out.write(bytes.data(), size);
                    if (!write) crc ^= bw::test::CrcOf({bytes.data(), static_cast<size_t>(size)});
                });
            }
        }
        if (unpacked != 2 * paths_.size() * bytes.size() || crc == 0) std::abort();
    }

  private:
    fs::path out_;
    std::vector<fs::path> paths_;
    std::map<fs::path, std::set<std::string>> wanted_;
};

void ListManyMembers(const fs::path& file) {
    constexpr int kMembers = 100'000;
    MakeArchive(file, 0, kMembers, true);
    const auto peak = [] {
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        return usage.ru_maxrss / 1024;
    };
    const long before = peak();
    size_t found = 0;
    const double time = bench::Time([&] { found = bw::ReadGameFolder(file).size(); });
    std::printf("one zip of 100,000 members: %zu found, %.0f ms, peak %ld MB (before: %ld MB)\n",
                found, time, peak(), before);
}

}  // namespace

int main(int count, char** words) {
    if (count < 2) return 2;
    const int rounds = count > 2 ? std::atoi(words[2]) : 7;
    const TemporaryFolder folder;
    const fs::path root = folder / "shelf";
    fs::create_directory(root);
    for (int i = 0; i < kArchives; ++i) {
        MakeArchive(root / ("Collection " + std::to_string(1000 + i) + ".zip"),
                    static_cast<uint32_t>(i * kImages), kImages, false);
    }
    const Listing listing(root, words[1]);
    bench::Report("20,000 images in 200 zip archives listed",
                  bench::InTurn(
                      rounds, [&] { listing.Ours(); }, [&] { listing.Bare(); }, [] {}));
    const Building building(root, folder / "cart.bin");
    bench::Report("1,000 games of them built",
                  bench::InTurn(
                      rounds, [&] { building.Ours(); }, [&] { building.Bare(); }, [] {}));
    ListManyMembers(folder / "many.zip");
    return 0;
}
