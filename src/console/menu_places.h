// Where the built-in menu program keeps what a check or a preview needs; docs/menu.md has the map.
#pragma once

#include <cstdint>

namespace bw {

inline constexpr uint16_t kMenuPage = 0x53;      // 16 bits: the first item of the page
inline constexpr uint16_t kMenuSelected = 0x57;  // 16 bits: the selected item of the whole list
inline constexpr uint16_t kMenuUpdating = 0x5D;  // not 0 while a page is being redrawn
inline constexpr uint16_t kMenuPpuMask = 0x2C1;  // kMenuLit once the screen is on
inline constexpr uint8_t kMenuLit = 0x1E;
// The last piece of the menu that runs: it clears RAM and goes on with the game.
inline constexpr uint16_t kMenuHandOver = 0x01E0;

}  // namespace bw
