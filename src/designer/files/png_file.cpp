#include "designer/files/png_file.h"

#include <array>
#include <string_view>
#include <utility>

#include <png.h>

#include "support/text.h"

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

// Whether the file may hold the pixels that its header tells of: deflate makes data at most 1032
// times as short. The header has been found well; its fields stand at fixed places of the file.
bool MayHold(std::span<const uint8_t> bytes, uint32_t width, uint32_t height) {
    constexpr size_t kDepthAt = 24;
    constexpr size_t kColourTypeAt = 25;
    constexpr uint64_t kMostDeflated = 1032;
    if (bytes.size() <= kColourTypeAt) return false;
    constexpr std::array<uint8_t, 7> kSamples{1, 0, 3, 1, 2, 0, 4};  // of each colour type
    const uint8_t type = bytes[kColourTypeAt];
    const uint64_t bits = uint64_t{bytes[kDepthAt]} * (type < kSamples.size() ? kSamples[type] : 1);
    return (width * bits + 7) / 8 * height <= bytes.size() * kMostDeflated;
}

// libpng leaves out what isn't needed and damaged, and only warns of it; but then the colours are
// wrong or the clear pixels missing.
bool IsDamaged(const png_image& image) {
    return std::string_view(image.message).find("CRC") != std::string_view::npos;
}

constexpr uint8_t kOpaque = 255;

// Reads the pixels of a picture whose header has been read. Those with less than `leastAlpha` are
// marked.
std::optional<std::string> ReadPixels(png_image& image, uint8_t leastAlpha, Picture& picture) {
    image.format = PNG_FORMAT_RGBA;
    image.flags |= PNG_IMAGE_FLAG_16BIT_sRGB;  // else such a picture counts as linear light
    std::vector<uint8_t> samples(PNG_IMAGE_SIZE(image));
    if (png_image_finish_read(&image, nullptr, samples.data(), 0, nullptr) == 0) {
        return std::string("damaged picture: ") + image.message;
    }
    picture = {.width = image.width, .height = image.height, .pixels = {}};
    picture.pixels.reserve(samples.size() / 4);
    for (size_t at = 0; at < samples.size(); at += 4) {
        const uint32_t colour = static_cast<uint32_t>(samples[at]) << 16 |
                                static_cast<uint32_t>(samples[at + 1]) << 8 | samples[at + 2];
        picture.pixels.push_back(samples[at + 3] >= leastAlpha ? colour
                                                               : colour | kTransparentPixel);
    }
    return std::nullopt;
}

// `pixels` and `colours` as the picture's format has them. Empty if there is no memory.
std::vector<uint8_t> Encode(png_image& image, const void* pixels, const void* colours) {
    png_alloc_size_t size = 0;
    std::vector<uint8_t> bytes;
    for (int pass = 0; pass < 2; ++pass) {  // the first only asks for the size
        bytes.resize(size);
        if (png_image_write_to_memory(&image, pass == 0 ? nullptr : bytes.data(), &size, 0, pixels,
                                      0, colours) == 0) {
            return {};
        }
    }
    return bytes;
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
    return ReadPixels(image.value, kOpaque, picture);
}

std::optional<PictureFault> DecodeAnyPng(std::span<const uint8_t> bytes, uint32_t largestSide,
                                         Picture& picture) {
    using Kind = PictureFault::Kind;
    constexpr uint8_t kHalf = 128;
    Image image;
    const auto fault = [&](Kind kind) {
        return PictureFault{kind, image.value.width, image.value.height, largestSide,
                            image.value.message};
    };
    if (png_image_begin_read_from_memory(&image.value, bytes.data(), bytes.size()) == 0) {
        return fault(Kind::kNoPng);
    }
    if (image.value.width > largestSide || image.value.height > largestSide) {
        return fault(Kind::kTooLarge);
    }
    if (!MayHold(bytes, image.value.width, image.value.height)) return fault(Kind::kMoreThanHeld);
    Picture read;
    if (ReadPixels(image.value, kHalf, read) || IsDamaged(image.value)) {
        return fault(Kind::kDamaged);
    }
    picture = std::move(read);
    return std::nullopt;
}

std::u16string FaultText(const PictureFault& fault, Language language) {
    const auto words = [&](TextId id, const auto&... values) {
        return FormatText(LoadText(id, language), values...);
    };
    switch (fault.kind) {
        case PictureFault::Kind::kNoPng:
            return words(TextId::kNoPngPicture, ToWide(fault.details));
        case PictureFault::Kind::kTooLarge:
            return words(TextId::kPictureTooLarge, fault.width, fault.height, fault.limit,
                         fault.limit);
        case PictureFault::Kind::kMoreThanHeld:
            return words(TextId::kPictureHeaderLies, fault.width, fault.height);
        case PictureFault::Kind::kDamaged:
            return words(TextId::kPictureDamaged, ToWide(fault.details));
    }
    return {};
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
    return Encode(image.value, indices.data(), colours.data());
}

std::vector<uint8_t> EncodePng(uint32_t width, uint32_t height, std::span<const uint8_t> samples) {
    Image image;
    image.value.width = width;
    image.value.height = height;
    image.value.format = PNG_FORMAT_RGB;
    image.value.flags = PNG_IMAGE_FLAG_FAST;
    return Encode(image.value, samples.data(), nullptr);
}

}  // namespace bw
