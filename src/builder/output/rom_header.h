// The containers of a finished ROM. Sources: NESdev wiki, NES 2.0 and UNIF.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "builder/input/rom_format.h"
#include "rom/board_tables.h"
#include "rom/ines_header.h"

namespace bw {

// "nes", "unf", "bin": the type's name and the extension that its files get.
std::string_view FormatExtension(RomFormat format);

// The NES 2.0 header of a ROM of this many bytes, and the size of the whole file. From 62898177
// bytes on the PRG size no longer fits its 12 bits: the header then holds a power of two, and the
// file is filled up to it.
struct Nes20Header {
    std::array<uint8_t, kInesHeaderSize> bytes{};
    uint64_t fileSize = 0;
};
Nes20Header MakeNes20Header(uint32_t romSize, BoardType board);

// Collects the chunks of a UNIF file. A chunk that is set twice replaces the earlier one; chunks
// are kept in the order of their names.
class UnifChunks {
  public:
    void SetBoardName(std::string_view name);
    void SetMirroring(uint8_t value);
    // Announces PRG data that follows the other chunks. A number above 15 or a size of 0 adds
    // nothing.
    void SetPrgSize(uint32_t number, uint32_t size);

    // The file up to the first byte of the PRG data. PRG chunks sort behind "MAPR" and "MIRR", so
    // the data ends the file.
    std::vector<uint8_t> Head() const;

  private:
    std::map<std::string, std::vector<uint8_t>> chunks_;
    std::string prgName_;
    uint32_t prgSize_ = 0;
};

// What stands before the ROM in a file of this format, and how long the whole file is.
struct Container {
    std::vector<uint8_t> head;
    uint64_t fileSize = 0;
};
Container MakeContainer(RomFormat format, uint32_t romSize, BoardType board);

}  // namespace bw
