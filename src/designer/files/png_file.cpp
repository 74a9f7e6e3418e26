#include "designer/files/png_file.h"

#include <png.h>

namespace bw {
namespace {

// Frees what libpng keeps between its calls.
struct Image {
    Image() { value.version = PNG_IMAGE_VERSION; }
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;
    ~Image() { png_image_free(&value); }

    png_image value{};
};

std::string SizeText(uint32_t width, uint32_t height) {
    return std::to_string(width) + " by " + std::to_string(height);
}

}  // namespace

std::optional<std::string> DecodePng(std::span<const uint8_t> bytes, uint32_t width,
                                     uint32_t height, Picture& picture) {
    Image image;
    if (png_image_begin_read_from_memory(&image.value, bytes.data(), bytes.size()) == 0) {
        return std::string("no PNG picture: ") + image.value.message;
    }
    if (image.value.width != width || image.value.height != height) {
        return "the picture has " + SizeText(image.value.width, image.value.height) + " pixels, " +
               SizeText(width, height) + " were expected";
    }
    image.value.format = PNG_FORMAT_RGBA;
    image.value.flags |= PNG_IMAGE_FLAG_16BIT_sRGB;  // else such a picture counts as linear light
    std::vector<uint8_t> samples(PNG_IMAGE_SIZE(image.value));
    if (png_image_finish_read(&image.value, nullptr, samples.data(), 0, nullptr) == 0) {
        return std::string("damaged picture: ") + image.value.message;
    }
    picture = {.width = width, .height = height, .pixels = {}};
    picture.pixels.reserve(samples.size() / 4);
    for (size_t at = 0; at < samples.size(); at += 4) {
        const uint32_t colour = static_cast<uint32_t>(samples[at]) << 16 |
                                static_cast<uint32_t>(samples[at + 1]) << 8 | samples[at + 2];
        picture.pixels.push_back(samples[at + 3] == 255 ? colour : colour | kTransparentPixel);
    }
    return std::nullopt;
}

std::vector<uint8_t> EncodePng(uint32_t width, uint32_t height, std::span<const uint32_t> palette,
                               std::span<const uint8_t> indices) {
    Image image;
    image.value.width = width;
    image.value.height = height;
    image.value.format = PNG_FORMAT_RGB_COLORMAP;
    image.value.colormap_entries = static_cast<png_uint_32>(palette.size());
    std::vector<uint8_t> colours;
    for (const uint32_t colour : palette) {
        for (const int shift : {16, 8, 0})
            colours.push_back(static_cast<uint8_t>(colour >> shift));
    }
    png_alloc_size_t size = 0;
    std::vector<uint8_t> bytes;
    for (int pass = 0; pass < 2; ++pass) {  // the first only asks for the size
        bytes.resize(size);
        if (png_image_write_to_memory(&image.value, pass == 0 ? nullptr : bytes.data(), &size, 0,
                                      indices.data(), 0, colours.data()) == 0) {
            return {};
        }
    }
    return bytes;
}

}  // namespace bw
