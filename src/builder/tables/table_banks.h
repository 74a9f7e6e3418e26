// The shape that all tables of the menu share: 8 KB banks, each with the number of its first game,
// a pointer for each of its games and the games' data, and a table of one byte per game that names
// its bank.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "support/file_problem.h"

namespace bw {

inline constexpr uint32_t kTableBankSize = 8192;  // bytes
inline constexpr uint32_t kTableBankHead = 2;     // the number of the bank's first game

// Which games lie in which bank.
struct TableBanks {
    struct Bank {
        uint32_t first;  // number of the bank's first game, from 0
        uint32_t count;
    };
    std::vector<Bank> banks;
    std::vector<uint8_t> bankOfGame;
};

// Deals games to banks in their order. A game that doesn't fit opens the next bank.
class TableBankPacker {
  public:
    // True if a game of this many bytes opens a new bank.
    bool Overflows(uint32_t bytes) const { return used_ + bytes > kTableBankSize; }
    void Add(uint32_t bytes);
    TableBanks Take() { return std::move(result_); }

  private:
    TableBanks result_;
    uint32_t used_ = kTableBankHead;
};

// Games that all take the same room.
TableBanks PackEqual(size_t games, uint32_t bytesPerGame);

// The words that differ between the tables' files.
struct TableNames {
    std::string_view label;  // "game_name": labels game_name_begin_000, game_name_list_000, ...
    std::string_view beginLabel;  // "game_name_begin"
    std::string_view listLabel;   // "game_name_list"
};

// The head of a bank: number of the first game and the pointers, ten in a row. Nothing for an
// empty bank.
std::string TableBankHeadText(const TableNames& names, const TableBanks::Bank& bank);

// The label of one game, "game_name_007".
void AppendTableLabel(std::string& text, std::string_view label, uint32_t game);

// The table of banks: a label, then a byte for each game, ten in a row.
std::string BankIndexText(std::string_view label, const std::vector<uint8_t>& bankOfGame);

// How one table goes to the build folder.
struct TableFiles {
    std::string_view bankFile;   // "game_list_": the bank's number in hexadecimal and ".asm" follow
    std::string_view indexFile;  // "game_list_bank.asm"
    std::string_view indexLabel;
    uint32_t fileCount;  // unused bank files below this number are deleted
};

struct TableWriteOptions {
    bool write = true;  // off: only count banks; the index is still written if the folder exists
    bool keep = false;  // leave files of banks that are not in use any more
};

// Writes the banks, whose texts `bankText` makes, removes leftover files and writes the index.
// The problem of the first file that couldn't be written; all others still are.
FileResult<> WriteTable(const TableFiles& files, const TableBanks& banks,
                        const std::function<std::string(const TableBanks::Bank&)>& bankText,
                        const std::filesystem::path& folder, const TableWriteOptions& options);

}  // namespace bw
