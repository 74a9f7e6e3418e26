#include "designer/files/tile_picture.h"

#include <algorithm>

#include "designer/files/png_file.h"
#include "designer/model/design_store.h"
#include "support/numbers.h"

namespace bw {
namespace {

constexpr uint32_t kSide = 128;  // pixels
constexpr size_t kPixels = size_t{kSide} * kSide;
constexpr size_t kTileSide = kTilePixels;

// Where a pixel lies in its table: the byte of the low plane, and the bit. The high plane's byte
// lies 8 further.
struct Place {
    size_t byte;
    uint8_t bit;
};

Place PlaceOf(size_t pixel) {
    const size_t x = pixel % kSide;
    const size_t y = pixel / kSide;
    const size_t tile = y / kTileSide * 16 + x / kTileSide;
    return {tile * kTileBytes + y % kTileSide, static_cast<uint8_t>(0x80u >> (x % kTileSide))};
}

std::string Colour(uint32_t colour) {
    std::string text = "#";
    AppendHex(text, colour & 0xFFFFFF, 6);
    return (colour & kTransparentPixel) != 0 ? "not opaque" : text;
}

}  // namespace

std::vector<uint8_t> TilePicture(std::span<const uint8_t> table) {
    std::vector<uint8_t> values(kPixels);
    for (size_t pixel = 0; pixel < values.size(); ++pixel) {
        const auto [byte, bit] = PlaceOf(pixel);
        values[pixel] = static_cast<uint8_t>(((table[byte] & bit) != 0 ? 1 : 0) +
                                             ((table[byte + kTileSide] & bit) != 0 ? 2 : 0));
    }
    return EncodePng(kSide, kSide, kTileGreys, values);
}

std::optional<std::string> ReadTilePicture(std::span<const uint8_t> png, std::span<uint8_t> table) {
    Picture picture;
    if (auto problem = DecodePng(png, kSide, kSide, picture)) return problem;
    std::vector<uint8_t> read(kPatternTableSize);
    for (size_t pixel = 0; pixel < picture.pixels.size(); ++pixel) {
        const uint32_t colour = picture.pixels[pixel];
        const auto grey = std::ranges::find(kTileGreys, colour);
        if (grey == kTileGreys.end()) {
            return "the pixel at column " + std::to_string(pixel % kSide) + ", row " +
                   std::to_string(pixel / kSide) + " is " + Colour(colour) +
                   "; #000000, #555555, #AAAAAA or #FFFFFF was expected";
        }
        const auto value = grey - kTileGreys.begin();
        const auto [byte, bit] = PlaceOf(pixel);
        if ((value & 1) != 0) read[byte] |= bit;
        if ((value & 2) != 0) read[byte + kTileSide] |= bit;
    }
    std::ranges::copy(read, table.begin());
    return std::nullopt;
}

}  // namespace bw
