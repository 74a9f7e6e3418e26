// What a build notes down of its games in unused bytes of the menu, so that a cart can be taken
// apart again: what the menu's tables don't tell. docs/menu.md says where it lies and how it is
// written.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "rom/image_crcs.h"
#include "rom/multicart_item.h"

namespace bw {

struct ManifestGame {
    uint16_t mapper = 0;    // iNES number, 0 to 4095
    uint8_t prgCount = 0;   // 16 KB units of the image
    uint8_t chrCount = 0;   // 8 KB units of the image, 0: CHR RAM
    bool vertical = false;  // mirroring
    bool battery = false;
    bool fourScreen = false;
    DataCrcs crcs;
    bool operator==(const ManifestGame&) const = default;
};

// One entry for each game, in the menu's order.
using CartManifest = std::vector<ManifestGame>;

CartManifest ManifestOf(std::span<const MulticartItem> items);

// As it stands in the menu. Reading survives any bytes: nothing, unless length, number of games and
// sum are right.
std::vector<uint8_t> PackManifest(const CartManifest& manifest);
std::optional<CartManifest> UnpackManifest(std::span<const uint8_t> bytes);

// Where in a menu's PRG (its bytes as assembled) a manifest of `size` bytes may lie: behind the
// last used byte of a bank of which the rest is unused. Nothing if there is no room. The offset is
// in bytes from the menu's start.
std::optional<uint32_t> ManifestPlace(std::span<const uint8_t> menu, size_t size);

}  // namespace bw
