// Starts the games of a cart from its menu, one after the other.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "builder/tables/cart_tables.h"
#include "console/emulator.h"
#include "console/game_facts.h"

namespace bw {

struct GameStart {
    enum class End : uint8_t {
        kStarted,
        kNoMenu,      // the menu doesn't show up
        kNoHandOver,  // nothing comes of START
        kNotDriven,   // a menu of somebody's own, which does something else
    };
    End end = End::kStarted;
    std::optional<uint16_t> jammedAt{};
    std::vector<WatchedWrites> writes{};  // after the hand-over
};

// The built-in menu is told the game by its variable. Any other one is led there by its keys, and
// what it starts is told by the vectors that the processor finds then: such games are best asked
// for in rising order.
class MenuDriver {
  public:
    // Frames within which the menu has to show up, and the game to start.
    static constexpr uint32_t kMenuFrames = 600;
    static constexpr uint32_t kStartFrames = 400;

    MenuDriver(Console& console, bool ownProgram) : console_(console), own_(ownProgram) {}

    // On a console that was just switched on; once, before anything else.
    ConsoleResult<> Boot();
    // Writes to `watched` are counted from the hand-over on, as far as it can be told.
    ConsoleResult<GameStart> Start(uint32_t index, const GameFacts& facts,
                                   const std::vector<AddressRange>& watched);

  private:
    ConsoleResult<bool> ComesUp();
    ConsoleResult<bool> IsQuiet();
    ConsoleResult<bool> HasVectors(const GameFacts& facts);
    ConsoleResult<GameStart> StartByVariable(uint32_t index,
                                             const std::vector<AddressRange>& watched);
    ConsoleResult<GameStart> StartByKeys(uint32_t index, const GameFacts& facts,
                                         const std::vector<AddressRange>& watched);
    ConsoleResult<> Push(uint8_t button, uint32_t down, uint32_t up);

    Console& console_;
    bool own_;
    bool up_ = false;
    bool keys_ = false;      // the variables are not the built-in menu's
    uint32_t selected_ = 0;  // by keys
};

}  // namespace bw
