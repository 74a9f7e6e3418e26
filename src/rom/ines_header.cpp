#include "rom/ines_header.h"

#include <algorithm>

namespace bw {

bool InesHeader::HasMagic() const {
    static constexpr std::array<uint8_t, 4> kMagic{0x4E, 0x45, 0x53, 0x1A};
    return std::equal(kMagic.begin(), kMagic.end(), bytes.begin());
}

bool InesHeader::IsNes20() const {
    return (bytes[7] & 0x0C) == 0x08;
}

uint32_t InesHeader::PrgCount() const {
    const uint32_t high = IsNes20() ? bytes[9] & 0x0Fu : 0;
    return high << 8 | PrgLow();
}

uint32_t InesHeader::ChrCount() const {
    const uint32_t high = IsNes20() ? bytes[9] >> 4 : 0;
    return high << 8 | ChrLow();
}

uint32_t InesHeader::Mapper() const {
    const uint32_t high = IsNes20() ? bytes[8] & 0x0Fu : 0;
    return high << 8 | (bytes[7] & 0xF0u) | bytes[6] >> 4;
}

}  // namespace bw
