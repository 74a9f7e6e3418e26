// Any bytes as what a build notes down of its games. Behind a byte 0 they are as they are; behind
// any other, head, length and sum are put right, so that what they guard is reached.
#include <algorithm>
#include <array>
#include <vector>

#include "builder/tables/cart_manifest.h"
#include "fuzz.h"
#include "rom/crc32.h"

namespace {

void SetNumber(std::span<uint8_t> bytes, uint32_t value) {
    for (uint8_t& byte : bytes) {
        byte = static_cast<uint8_t>(value);
        value >>= 8;
    }
}

void PutRight(std::vector<uint8_t>& bytes) {
    constexpr std::array<uint8_t, 6> kHead{'B', 'W', 'G', 0x1A, 1, 0};
    if (bytes.size() < 14 || bytes.size() > 0xFFFF) return;
    std::ranges::copy(kHead, bytes.begin());
    SetNumber(std::span(bytes).subspan(8, 2), static_cast<uint32_t>(bytes.size()));
    SetNumber(std::span(bytes).last(4), bw::Crc32(std::span(bytes).first(bytes.size() - 4)));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0) return 0;
    std::vector<uint8_t> bytes(data + 1, data + size);
    if (data[0] != 0) PutRight(bytes);
    const std::optional<bw::CartManifest> manifest = bw::UnpackManifest(bytes);
    if (!manifest) return 0;
    const std::optional<bw::CartManifest> again = bw::UnpackManifest(bw::PackManifest(*manifest));
    Expect(again && again->size() == manifest->size());
    for (size_t i = 0; i < manifest->size(); ++i) {
        Expect((*again)[i].header.bytes == (*manifest)[i].header.bytes);
        Expect((*again)[i].crcs == (*manifest)[i].crcs);
    }
    return 0;
}
