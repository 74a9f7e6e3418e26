#include "rom/crc32.h"

#include <libdeflate.h>

namespace bw {

uint32_t Crc32(std::span<const uint8_t> bytes, uint32_t previous) {
    // An empty span may carry a null pointer, which libdeflate takes as "start anew".
    if (bytes.empty()) return previous;
    return libdeflate_crc32(previous, bytes.data(), bytes.size());
}

}  // namespace bw
