// Pictures that become screens: how long one takes, and how far screen and picture differ, beside
// the plain conversion of the same picture. With a folder as its argument the pairs are left there,
// each the picture, the plain screen and ours side by side.
#include <atomic>
#include <filesystem>
#include <string>

#include <png.h>

#include "designer/import/picture_import.h"
#include "measure.h"
#include "pictures/drawn_pictures.h"
#include "pictures/plain_conversion.h"
#include "support/files.h"

namespace {

constexpr int kRounds = 11;

bool SaveBeside(const std::filesystem::path& file,
                const std::vector<std::vector<uint32_t>>& pictures) {
    constexpr size_t kWidth = 256;
    std::vector<uint8_t> samples;
    for (size_t row = 0; row < pictures.front().size(); row += kWidth)
        for (const auto& pixels : pictures)
            for (size_t x = 0; x < kWidth; ++x)
                for (const int shift : {16, 8, 0})
                    samples.push_back(static_cast<uint8_t>(pixels[row + x] >> shift));
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(kWidth * pictures.size());
    image.height = static_cast<png_uint_32>(pictures.front().size() / kWidth);
    image.format = PNG_FORMAT_RGB;
    return png_image_write_to_file(&image, file.c_str(), 0, samples.data(), 0, nullptr) != 0;
}

}  // namespace

int main(int count, char** words) {
    const std::atomic<bool> stop = false;
    const bw::WorkingCopy empty;
    for (const auto& [name, picture] : bw::bench::DrawnPictures()) {
        std::optional<bw::ImportResult> result;
        std::vector<bw::Colour> plain;
        const bench::Pair times = bench::InTurn(
            kRounds, [&] { result = bw::ImportPicture(empty, picture, {}, stop); },
            [&] { plain = bw::bench::PlainScreen(picture); }, [] {});
        const auto shown = result->result.Pixels();
        std::printf(
            "%-10s ours %6.1f ms (least %6.1f)  plain %6.1f ms   mean error ours %6.3f  plain "
            "%6.3f   tiles %3zu, squares with loss %3zu%s\n",
            std::string(name).c_str(), bench::Median(times.ours), bench::Least(times.ours),
            bench::Median(times.bare), bw::bench::MeanError(picture, {shown.begin(), shown.end()}),
            bw::bench::MeanError(picture, plain), result->tiles, result->lossyBlocks.size(),
            result->withoutLoss ? ", without loss" : "");
        if (count > 1 && !SaveBeside(std::filesystem::path(words[1]) / (std::string(name) + ".png"),
                                     {picture.pixels, plain, {shown.begin(), shown.end()}})) {
            return 1;
        }
    }
    return 0;
}
