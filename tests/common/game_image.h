// Game images made for tests: a header and data that differ from image to image.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace bw::test {

struct ImageShape {
    int prg = 1;  // 16 KB units
    int chr = 0;  // 8 KB units
    int mapper = 0;
    int flags = 0;  // byte 6, bits 3-0
};

// Every byte of the data follows from `seed` and its place, so that misplaced data shows.
inline std::string ImageBytes(ImageShape shape, uint32_t seed) {
    std::string image = "NES\x1A";
    image += static_cast<char>(shape.prg);
    image += static_cast<char>(shape.chr);
    image += static_cast<char>((shape.mapper & 0x0F) << 4 | shape.flags);
    image += static_cast<char>(shape.mapper & 0xF0);
    image.resize(16);
    const size_t size = size_t{16384} * static_cast<size_t>(shape.prg) +
                        size_t{8192} * static_cast<size_t>(shape.chr);
    uint32_t state = seed * 2654435761u + 1;
    image.reserve(16 + size);
    for (size_t i = 0; i < size; ++i) {
        state = state * 1664525u + 1013904223u;
        image += static_cast<char>(state >> 24);
    }
    return image;
}

inline void WriteText(const std::filesystem::path& file, const std::string& bytes) {
    std::ofstream(file, std::ios::binary)
        .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

inline std::string ReadText(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

}  // namespace bw::test
