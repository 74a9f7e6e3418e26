// What the fuzz targets share.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <span>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

// Ends the program if not.
inline void Expect(bool condition) {
    if (!condition) std::abort();
}

inline std::string_view TextOf(std::span<const uint8_t> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}
