// The outer registers of the boards for one game. Sources: the NESdev wiki pages on the mappers
// 268 (COOLBOY, MINDKIDS) and 342 (COOLGIRL).
#pragma once

#include <array>
#include <cstdint>

#include "rom/multicart_item.h"

namespace bw {

// Values by register number. COOLBOY and MINDKIDS use 0 to 3 of both, COOLGIRL 0 to 7 of the PRG
// ones; the others are 0.
struct BoardRegisters {
    std::array<uint8_t, 8> chr{};
    std::array<uint8_t, 8> prg{};
};

// From the item's place, sizes, mapper and flags.
BoardRegisters CoolboyRegisters(const MulticartItem& item);
BoardRegisters CoolgirlRegisters(const MulticartItem& item);

}  // namespace bw
