// Reads a cart of ours back: its board, its menu and the games that the menu's tables tell of. The
// one rule for what is a cart: the container names one of the boards, and at the menu's place lies
// a menu whose tables hold together. Any bytes may be read; docs/menu.md has the tables.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "builder/input/rom_format.h"
#include "builder/tables/board_registers.h"
#include "language/language.h"
#include "rom/board_tables.h"
#include "rom/ines_header.h"
#include "support/file_problem.h"

namespace bw {

// One game, as far as the tables tell.
struct CartGame {
    std::u16string name;     // as the table has it: the console's ASCII, capitals
    uint32_t prgOffset = 0;  // bytes from the ROM's start
    uint32_t prgBytes = 0;   // what the registers let the processor see of it
    uint32_t chrOffset = 0;  // only where chrBytes isn't 0
    uint32_t chrBytes = 0;   // 0: CHR RAM
    // What the registers stand for; the lowest number where several mappers have the same row.
    uint16_t mapper = 0;
    bool vertical = false;  // mirroring
    bool battery = false;
    bool fourScreen = false;
    // The lock that ends the menu's hold on the registers doesn't hold for this game (NROM on
    // COOLBOY and MINDKIDS): its own writes to their addresses reach them.
    bool registersOpen = false;
    BoardRegisters registers;
};

struct CartTables {
    BoardType board = BoardType::kCoolboy;
    RomFormat format = RomFormat::kNes20;
    uint64_t romStart = 0;    // offset of the ROM in the file
    uint64_t romBytes = 0;    // that the file has of it
    uint32_t menuOffset = 0;  // bytes from the ROM's start
    // 16 KB; of a menu of somebody's own, the least that takes in its tables.
    uint32_t menuUnits = 0;
    // The program is this version's own: what menu_places.h knows of it holds.
    bool ownProgram = false;
    std::vector<CartGame> games{};
};

// kWrongKind for a file that is no cart. The tables alone are held in memory. The menu must be
// there as a whole; a game may lie behind the end of a file that was cut short, in part or as a
// whole: 0xFF stands for what is missing. What lies behind the ROM in the file isn't looked at. A
// bare ROM is of the board whose registers its menu writes to; with a menu of somebody's own, which
// doesn't tell COOLBOY from MINDKIDS, it counts as COOLBOY's.
FileResult<CartTables> ReadCart(const std::filesystem::path& file);

// The header of an image of the game, as far as the tables tell.
InesHeader HeaderOf(const CartGame& game);

// The words for a file that ReadCart doesn't take, the file's path among them.
std::u16string NoCartText(const FileProblem& problem, Language language);

// The registers' addresses on the board: the first of them; they repeat up to the end of its 4 KB.
uint16_t FirstRegister(BoardType board);

}  // namespace bw
