// PNG pictures in memory, whatever library reads and writes them.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

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

// An indexed picture, at the smallest depth that holds `palette` (0xRRGGBB, 1 to 256 entries).
// `indices` has a byte for each pixel, each below the number of entries. The same input gives the
// same bytes. Empty if there is no memory.
std::vector<uint8_t> EncodePng(uint32_t width, uint32_t height, std::span<const uint32_t> palette,
                               std::span<const uint8_t> indices);

}  // namespace bw
