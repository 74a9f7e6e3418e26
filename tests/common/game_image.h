// Game images made for tests: a header and data that differ from image to image.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <string>
#include <string_view>

namespace bw::test {

struct ImageShape {
    int prg = 1;  // 16 KB units
    int chr = 0;  // 8 KB units
    int mapper = 0;
    int flags = 0;  // byte 6, bits 3-0
};

// Every byte follows from `seed` and its place, so that misplaced data shows.
inline std::string Noise(size_t size, uint32_t seed) {
    std::string bytes(size, '\0');
    uint32_t state = seed * 2654435761u + 1;
    for (char& byte : bytes) {
        state = state * 1664525u + 1013904223u;
        byte = static_cast<char>(state >> 24);
    }
    return bytes;
}

// The header bytes behind the magic; the rest of the 16 are zeros.
inline std::string Header(std::initializer_list<int> bytes) {
    std::string header = "NES\x1A";
    for (const int byte : bytes)
        header += static_cast<char>(byte);
    header.resize(16);
    return header;
}

inline std::string ImageBytes(ImageShape shape, uint32_t seed) {
    return Header({shape.prg, shape.chr, (shape.mapper & 0x0F) << 4 | shape.flags,
                   shape.mapper & 0xF0}) +
           Noise(size_t{16384} * static_cast<size_t>(shape.prg) +
                     size_t{8192} * static_cast<size_t>(shape.chr),
                 seed);
}

inline void WriteText(const std::filesystem::path& file, std::string_view bytes) {
    std::ofstream(file, std::ios::binary)
        .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

inline std::string ReadText(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

}  // namespace bw::test
