#include "builder/tables/board_registers.h"

#include <span>

#include "builder/layout/bank_layout.h"
#include "rom/board_tables.h"

namespace bw {
namespace {

// Bits high to low of value, moved down to bit 0.
constexpr uint8_t Bits(uint32_t value, int high, int low) {
    return static_cast<uint8_t>(value >> low & ((1u << (high - low + 1)) - 1));
}

constexpr uint8_t Byte(uint32_t value) {
    return static_cast<uint8_t>(value);
}

// Registers 0 and 1 take the same bits for PRG and CHR: the address from A17 up, and a mask of the
// size. Bits 2 and 3 of the mask are stored inverted.
void SetAddressAndMask(std::array<uint8_t, 8>& registers, uint32_t offset, uint8_t mask) {
    registers[0] = Byte(Bits(mask, 0, 0) << 6 | Bits(offset, 24, 23) << 4 | Bits(offset, 19, 17));
    registers[1] =
        Byte(Bits(mask, 1, 1) << 7 | (Bits(mask, 2, 2) ^ 1) << 6 | (Bits(mask, 3, 3) ^ 1) << 5 |
             Bits(offset, 20, 20) << 4 | Bits(offset, 22, 22) << 3 | Bits(offset, 21, 21) << 2);
}

// The same bits, moved up to bit `to`.
constexpr uint32_t Field(uint32_t value, int high, int low, int to) {
    return static_cast<uint32_t>(Bits(value, high, low)) << to;
}

uint32_t AddressOf(const std::array<uint8_t, 8>& registers) {
    return Field(registers[0], 5, 4, 23) | Field(registers[1], 3, 3, 22) |
           Field(registers[1], 2, 2, 21) | Field(registers[1], 4, 4, 20) |
           Field(registers[0], 2, 0, 17);
}

uint32_t MaskOf(const std::array<uint8_t, 8>& registers) {
    const uint32_t inverted = 0x0C;
    return (Field(registers[1], 5, 5, 3) | Field(registers[1], 6, 6, 2) |
            Field(registers[1], 7, 7, 1) | Field(registers[0], 6, 6, 0)) ^
           inverted;
}

// The counts of the record as the builder has rounded them.
void RoundUnits(MulticartItem& item) {
    item.SetChrUnits(item.chrCount);
    RoundChrUnits(std::span(&item, 1));
}

bool HasSizesOfItsMapper(const MulticartItem& item) {
    const MapperCapability* row = FindMapperCapability(item.mapper);
    return row != nullptr && row->prgSizes.contains(item.prgUnits) &&
           row->chrSizes.contains(item.chrUnits);
}

// An NROM game sees 16 or 32 KB, switched by register 3 instead of the MMC3's banks.
void SetNrom(const MulticartItem& item, BoardRegisters& registers) {
    auto& [chr, prg] = registers;
    prg[1] |= Byte(item.prgUnits & ~1u);
    prg[0] |= 0xC0;
    prg[1] = Byte((prg[1] & 0x1F) | 0x80);
    prg[3] |= 0x10;
    chr[0] |= 0xC0;
    chr[1] = Byte((chr[1] & 0x1F) | 0x80);
    chr[3] |= 0x10;
}

}  // namespace

BoardRegisters CoolboyRegisters(const MulticartItem& item) {
    BoardRegisters registers;
    auto& [chr, prg] = registers;
    const uint8_t prgMask = Byte(16 - (item.prgUnits >> 3));
    const uint32_t chrSize = item.chrUnits >> 4;
    const uint8_t chrMask = Byte(16 - (chrSize == 0 ? 1 : chrSize));

    SetAddressAndMask(prg, item.prgOffset, prgMask);
    prg[0] |= Byte((Bits(item.chrUnits, 5, 5) ^ 1) << 7);  // 128 KB of CHR RAM, else 256 KB
    prg[3] = Byte(0x80 | Bits(item.prgOffset, 16, 14) << 1);

    SetAddressAndMask(chr, item.chrOffset, chrMask);
    chr[3] = Bits(item.chrOffset, 16, 13);

    if (item.mapper == 0) SetNrom(item, registers);
    return registers;
}

BoardRegisters CoolgirlRegisters(const MulticartItem& item) {
    constexpr uint32_t kMmc3 = 4;
    const CoolgirlMapperConfig* config = FindCoolgirlMapperConfig(item.mapper);
    if (config == nullptr) {
        config = FindCoolgirlMapperConfig(kMmc3);  // mapper 74 is an MMC3 with some CHR RAM
    }
    const bool chrRam = item.chrUnits == 0 || item.mapper == 74;
    const uint32_t base = item.prgOffset >> 14;
    const uint32_t chrMask = (64 - item.chrUnits) & 0x3F;

    BoardRegisters registers;
    registers.prg = {
        Bits(base, 15, 8),
        Bits(base, 7, 0),
        Byte(((128 - item.prgUnits) & 0x7F) | Bits(chrMask, 5, 5) << 7),
        Byte(config->prgMode << 5 & 0xE0),
        Byte((chrMask & 0x1F) | (config->chrMode << 5 & 0xE0)),
        Byte(item.mapper == 42 ? 0x7C : 0),
        Byte((config->code & 0x1F) | (config->flags << 5 & 0xE0)),
        Byte(0x80 | Bits(config->code, 5, 5) << 6 | (item.fourScreen & 1) << 5 |
             (item.mirroring == 0 ? 0x08 : 0) | (chrRam ? 0x02 : 0) | 0x01),
    };
    return registers;
}

std::optional<MulticartItem> ItemOfCoolboyRegisters(const BoardRegisters& registers,
                                                    MulticartItem known) {
    const auto& [chr, prg] = registers;
    const bool nrom = (prg[3] & 0x10) != 0;
    known.mapper = nrom ? 0 : 4;
    known.prgOffset = AddressOf(prg) | Field(prg[3], 3, 1, 14);
    known.SetPrgUnits(nrom ? 1u + Bits(prg[1], 1, 1) : (16 - MaskOf(prg)) * 8);
    known.chrOffset = AddressOf(chr) | Field(chr[3], 3, 0, 13);
    RoundUnits(known);
    if (!HasSizesOfItsMapper(known) || CoolboyRegisters(known) != registers) return std::nullopt;
    return known;
}

std::optional<MulticartItem> ItemOfCoolgirlRegisters(const BoardRegisters& registers,
                                                     MulticartItem known) {
    const auto& prg = registers.prg;
    known.prgOffset = Field(prg[0], 7, 0, 22) | Field(prg[1], 7, 0, 14);
    known.SetPrgUnits(128u - (prg[2] & 0x7F));
    RoundUnits(known);
    for (known.mapper = 0; known.mapper < 256; ++known.mapper) {
        if (HasSizesOfItsMapper(known) && CoolgirlRegisters(known) == registers) return known;
    }
    return std::nullopt;
}

}  // namespace bw
