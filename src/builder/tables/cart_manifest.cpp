#include "builder/tables/cart_manifest.h"

namespace bw {

CartManifest ManifestOf(std::span<const MulticartItem>) {
    return {};
}

std::vector<uint8_t> PackManifest(const CartManifest&) {
    return {};
}

std::optional<CartManifest> UnpackManifest(std::span<const uint8_t>) {
    return std::nullopt;
}

std::optional<uint32_t> ManifestPlace(std::span<const uint8_t>, size_t) {
    return std::nullopt;
}

}  // namespace bw
