// Any bytes as an archive of each kind: listing, reading in another order than its own, sums.
#include <algorithm>
#include <array>
#include <fstream>
#include <string>
#include <vector>

#include "common/temporary_folder.h"
#include "fuzz.h"
#include "rom/image_crcs.h"
#include "rom/image_files.h"
#include "support/text.h"

namespace {

namespace fs = std::filesystem;

// Told by the first byte of the input.
constexpr std::array kNames = {"a.zip", "a.7z", "a.rar", "a.tar", "a.tgz", "a.nes.gz"};

fs::path WriteInput(const fs::path& folder, std::span<const uint8_t> input) {
    const fs::path file = folder / kNames[input[0] % kNames.size()];
    std::ofstream(file, std::ios::binary)
        .write(reinterpret_cast<const char*>(input.data() + 1), std::ssize(input) - 1);
    return file;
}

void CheckPlaces(std::span<const fs::path> paths, const fs::path& file) {
    for (const fs::path& path : paths) {
        Expect(bw::ContainerOf(path) == file);
        Expect(path.lexically_normal() == path);
        const std::string text = bw::WideToBytes(bw::PathText(path));
        Expect(bw::HasImageExtension(text));
        Expect(std::ranges::none_of(text, [](char c) { return c >= 0 && c < ' '; }));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const TemporaryFolder folder;
    if (size == 0) return 0;
    const fs::path file = WriteInput(folder.Path(), {data, size});
    const bw::FolderImages found = bw::ListImages(file);
    std::vector<fs::path> paths;
    for (const auto& image : found.images) {
        paths.push_back(found.PathOf(image));
        Expect(found.starts[image.start].arrived <= 16);
    }
    CheckPlaces(paths, file);
    Expect(std::ranges::adjacent_find(paths) == paths.end());
    std::ranges::reverse(paths);
    std::vector<int> visits(paths.size());
    bw::VisitImages(paths, bw::ImageDepth::kWhole, 1,
                    [&](size_t index, const bw::FileResult<bw::ImageFile>& image) {
                        ++visits[index];
                        std::array<uint8_t, 64> end{};
                        Expect(!image || image->ReadAt(uint64_t{7} << 20, end).ValueOr(0) == 0);
                    });
    Expect(std::ranges::all_of(visits, [](int count) { return count == 1; }));
    bw::ReadImageSums(paths);
    fs::remove(file);
    return 0;
}
