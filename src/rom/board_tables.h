// What the cartridge boards can do, by iNES mapper number.
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <span>

#include "rom/ines_header.h"

namespace bw {

// The numbers go to the assembler as BOARD_TYPE.
enum class BoardType : uint8_t { kCoolboy = 0, kMindkids = 1, kCoolgirl = 2 };

// "COOLBOY", "MINDKIDS", "COOLGIRL".
const char* BoardName(BoardType board);

// The sizes that a game of one mapper may have.
struct MapperCapability {
    uint32_t key;                 // the mapper number that the row is looked up by
    uint32_t mapper;              // a number of its own that nobody reads; 189 in the row of 184
    std::set<uint32_t> prgSizes;  // 16 KB units
    std::set<uint32_t> chrSizes;  // 8 KB units, 0 for CHR RAM
};

// How COOLGIRL's programmable mapper is set up to behave as a mapper.
struct CoolgirlMapperConfig {
    uint8_t mapper;
    uint8_t zero;     // always 0
    uint8_t code;     // 6 bits: register 6 bits 4-0 and register 7 bit 6
    uint8_t flags;    // 3 bits: register 6 bits 7-5
    uint8_t prgMode;  // 3 bits: register 3 bits 7-5
    uint8_t chrMode;  // 3 bits: register 4 bits 7-5
};

// The row of a mapper, or nullptr.
const MapperCapability* FindMapperCapability(uint32_t mapper);
const CoolgirlMapperConfig* FindCoolgirlMapperConfig(uint32_t mapper);

// Mappers that a board takes: 0, 4 and 74 on COOLBOY and MINDKIDS, every row on COOLGIRL.
bool BoardTakesMapper(BoardType board, uint32_t mapper);

// What the list shows in its board columns: a look at the header alone, by the enlarged sizes of a
// NES 2.0 header. The check of a build is stricter.
bool CoolboySupported(const InesHeader& header);
bool CoolgirlSupported(const InesHeader& header);

}  // namespace bw
