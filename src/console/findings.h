// What a check says of a game, and the rules by which it says so.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "console/emulator.h"

namespace bw {

enum class FindingKind : uint8_t {
    kNoStart,    // the menu doesn't hand over
    kJam,        // the processor stops for good
    kBlack,      // one colour, where the game alone shows more
    kFrozen,     // nothing moves, where it does alone
    kTiles,      // the tiles aren't the game's
    kRegisters,  // it writes to the board's registers, and they listen
    kSaves,      // its save shares the board's memory with other games' saves
};

// "no-start", "jam", "black", "frozen", "tiles", "registers", "saves".
std::string_view FindingKindName(FindingKind kind);

enum class FindingSeverity : uint8_t { kNote, kError };

struct CheckFinding {
    FindingKind kind = FindingKind::kNoStart;
    FindingSeverity severity = FindingSeverity::kError;
    // Whole sentences: what was seen, what it means on this board, how sure it is, what may help.
    std::u16string text{};
};

struct CheckedGame {
    uint32_t index = 0;  // in the menu, from 0
    std::u16string name{};
    std::filesystem::path path{};  // of its image; empty for a game of a cart
    // Why the game couldn't be run, in words; empty if it was. Not its own fault: the emulator's.
    std::u16string notRun{};
    ConsolePicture picture{};  // at the end of its time
    std::vector<CheckFinding> findings{};

    bool HasErrors() const;
};

}  // namespace bw
