// What a build notes down of its games in unused bytes of the menu, so that a cart can be taken
// apart again: what the menu's tables don't tell. docs/menu.md says where it lies and how it is
// written.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "rom/board_tables.h"
#include "rom/image_crcs.h"
#include "rom/ines_header.h"
#include "rom/multicart_item.h"

namespace bw {

struct ManifestGame {
    InesHeader header;  // of the image
    DataCrcs crcs;
};

// One entry for each game, in the menu's order.
using CartManifest = std::vector<ManifestGame>;

CartManifest ManifestOf(std::span<const MulticartItem> items);

// As it stands in the menu: 12 bytes a game, 20 for one whose header has more than 8 bytes. Reading
// survives any bytes: nothing, unless length, number of games and sum are right. More bytes may
// follow.
std::vector<uint8_t> PackManifest(const CartManifest& manifest);
std::optional<CartManifest> UnpackManifest(std::span<const uint8_t> bytes);

// The bytes of the built-in menu that its records leave unused: behind the last record, up to the
// end of the records' banks. The console reads a record by its address alone, never on. From the
// menu's start. Nothing for a size that the built-in menu doesn't have.
struct ManifestRoom {
    uint32_t offset = 0;
    uint32_t size = 0;
};
std::optional<ManifestRoom> ManifestRoomOf(uint32_t menuUnits, BoardType board, size_t games);

// Writes it into the menu's PRG as assembled. Without the headers' last 8 bytes if it has no room
// with them; false, and nothing is written, if it has none at all or other bytes than the
// assembler's filling lie there.
bool AddManifest(std::span<uint8_t> menu, BoardType board, CartManifest manifest);

}  // namespace bw
