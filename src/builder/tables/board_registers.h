// The outer registers of the boards for one game. Sources: the NESdev wiki pages on the mappers
// 268 (COOLBOY, MINDKIDS) and 342 (COOLGIRL).
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "rom/multicart_item.h"

namespace bw {

// Values by register number. COOLBOY and MINDKIDS use 0 to 3 of both, COOLGIRL 0 to 7 of the PRG
// ones; the others are 0.
struct BoardRegisters {
    std::array<uint8_t, 8> chr{};
    std::array<uint8_t, 8> prg{};
    bool operator==(const BoardRegisters&) const = default;
};

// From the item's place, sizes, mapper and flags.
BoardRegisters CoolboyRegisters(const MulticartItem& item);
BoardRegisters CoolgirlRegisters(const MulticartItem& item);

// The way back: completes `known`, which has the CHR count and the flags of the game's record and
// on COOLGIRL the CHR offset, by place, size and mapper, so that it gives these registers again. Of
// several mappers that the board has one setting for, the one of the lowest number that takes the
// sizes. Nothing if no game that the board runs has these registers.
std::optional<MulticartItem> ItemOfCoolboyRegisters(const BoardRegisters& registers,
                                                    MulticartItem known);
std::optional<MulticartItem> ItemOfCoolgirlRegisters(const BoardRegisters& registers,
                                                     MulticartItem known);

}  // namespace bw
