// The 16 bytes at the start of a game image. Source: the iNES and NES 2.0 pages of the NESdev wiki.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace bw {

inline constexpr size_t kInesHeaderSize = 16;
inline constexpr size_t kTrainerSize = 512;
inline constexpr uint32_t kPrgUnit = 16384;  // bytes
inline constexpr uint32_t kChrUnit = 8192;   // bytes

struct InesHeader {
    // The magic "NES" 1A, then zeros.
    std::array<uint8_t, kInesHeaderSize> bytes{0x4E, 0x45, 0x53, 0x1A};

    bool HasMagic() const;
    // What the list asks of a game: the magic, and a low PRG size other than 0.
    bool IsValid() const { return HasMagic() && PrgLow() != 0; }
    bool IsNes20() const;
    // Low 8 bits of the sizes: PRG in 16 KB units, CHR in 8 KB units (0 means CHR RAM).
    uint32_t PrgLow() const { return bytes[4]; }
    uint32_t ChrLow() const { return bytes[5]; }
    // With the high bits of byte 9 in a NES 2.0 header: 0 to 4095.
    uint32_t PrgCount() const;
    uint32_t ChrCount() const;
    // 0 to 255; 0 to 4095 in a NES 2.0 header.
    uint32_t Mapper() const;
    bool Vertical() const { return (bytes[6] & 0x01) != 0; }  // mirroring
    bool Battery() const { return (bytes[6] & 0x02) != 0; }
    bool Trainer() const { return (bytes[6] & 0x04) != 0; }
    bool FourScreen() const { return (bytes[6] & 0x08) != 0; }
};

}  // namespace bw
