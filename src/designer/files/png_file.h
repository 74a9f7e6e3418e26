// PNG pictures in memory, whatever library reads and writes them.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "language/language.h"

namespace bw {

// Rows from the top, pixels from the left, each 0xRRGGBB of sRGB.
struct Picture {
    uint32_t width = 0;
    uint32_t height = 0;
    std::vector<uint32_t> pixels;
};

// A pixel that isn't opaque has this bit set.
inline constexpr uint32_t kTransparentPixel = uint32_t{1} << 24;

// Reads a picture of any colour type and depth that has exactly this size; one of another size
// isn't unpacked. The result is what is wrong with it, or nothing.
std::optional<std::string> DecodePng(std::span<const uint8_t> bytes, uint32_t width,
                                     uint32_t height, Picture& picture);

// A larger file is no picture of a screen: 2048 by 2048 pixels of four bytes, not packed at all.
inline constexpr uint64_t kLargestPictureFile = (uint64_t{1} << 24) + (uint64_t{1} << 20);

// What is wrong with a picture that was to be read.
struct PictureFault {
    enum class Kind { kNoPng, kTooLarge, kMoreThanHeld, kDamaged };
    Kind kind = Kind::kNoPng;
    uint32_t width = 0;  // as the header tells
    uint32_t height = 0;
    uint32_t limit = 0;   // of both
    std::string details;  // in the words of the library
};
std::u16string FaultText(const PictureFault& fault, Language language);

// Reads a picture of any colour type, depth and size up to `largestSide` pixels each way. Pixels
// that are less than half opaque count as clear and have kTransparentPixel set. A header that tells
// of more pixels than the file can hold is refused before there is memory for them, and so are
// pictures with damaged chunks.
std::optional<PictureFault> DecodeAnyPng(std::span<const uint8_t> bytes, uint32_t largestSide,
                                         Picture& picture);

// An indexed picture, at the smallest depth that holds `palette` (0xRRGGBB, 1 to 256 entries).
// `indices` has a byte for each pixel, each below the number of entries. The same input gives the
// same bytes. Empty if there is no memory.
std::vector<uint8_t> EncodePng(uint32_t width, uint32_t height, std::span<const uint32_t> palette,
                               std::span<const uint8_t> indices);
// A picture of any colours: `samples` has red, green and blue of each pixel.
std::vector<uint8_t> EncodePng(uint32_t width, uint32_t height, std::span<const uint8_t> samples);

}  // namespace bw
