// Games and settings for the builder's tests.
#pragma once

#include <cstdint>
#include <string>

#include "rom/multicart_item.h"

namespace bw::test {

// A valid game of `prg` 16 KB and `chr` 8 KB units with data of its own.
inline MulticartItem Game(uint32_t index, uint32_t prg, uint32_t chr, uint32_t mapper = 4) {
    MulticartItem item;
    item.index = index;
    item.mapper = mapper;
    item.valid = 1;
    item.headerSize = 16;
    item.SetPrgCount(prg);
    item.SetPrgUnits(prg);
    item.SetChrCount(chr);
    item.SetChrUnits(chr);
    item.prgCrc = 0x10000 + index;
    item.chrCrc = chr == 0 ? 0 : 0x20000 + index;
    item.name = u"Game " + std::u16string(1, static_cast<char16_t>(u'A' + index % 26));
    return item;
}

inline MulticartItem Placed(MulticartItem item, uint32_t prg, uint32_t chr = 0) {
    item.prgOffset = prg;
    item.chrOffset = chr;
    return item;
}

inline MulticartItem Menu(uint32_t units) {
    MulticartItem menu;
    menu.isMenu = 1;
    menu.SetPrgCount(units);
    menu.SetPrgUnits(units);
    return menu;
}

}  // namespace bw::test
