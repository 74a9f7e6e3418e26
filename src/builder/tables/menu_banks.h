// Where the built-in menu has its tables; docs/menu.md has the whole map.
#pragma once

#include <array>
#include <cstdint>

namespace bw {

// Numbers of 8 KB banks, as if the menu had 64 of them; the menu drops the higher bits.
struct MenuBanks {
    uint32_t units;  // of the menu, 16 KB
    uint32_t records;
    uint32_t names;
};
inline constexpr std::array kMenuBanks{MenuBanks{8, 0x33, 0x37}, MenuBanks{16, 0x23, 0x2B},
                                       MenuBanks{32, 0x03, 0x18}};
// The banks that a menu of any size keeps for the records.
inline constexpr uint32_t kLeastRecordBanks = 4;

}  // namespace bw
