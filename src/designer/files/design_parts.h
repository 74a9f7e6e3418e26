// The designer's files: the whole design and its parts, each with its own form. All are known only
// by what their reader was asked for; none but the chunk files could be told by its bytes.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string_view>
#include <variant>
#include <vector>

#include "designer/files/design_file.h"
#include "designer/model/views.h"
#include "designer/model/working_copy.h"

namespace bw {

enum class DesignPart {
    kDesign,           // .fcm: everything
    kScreen,           // .fcc: caption and texts with the tiles and colours behind them
    kTexts,            // .fct: caption and texts
    kVideoMemory2000,  // .bin, read only: 16 KB of the console's video memory, screen at $2000
    kVideoMemory2C00,  // the same with the screen at $2C00
    kBkgTiles,         // .chr: 16 bytes a tile
    kSpriteTiles,      // .chr
    kNameTable,        // .nam: 960 tiles, row by row
    kAttributes,       // .attr: 64 bytes
    kAttributesAsBin,  // .bin, written only: nothing. The file is made, or stays as it is
    kMmc5Attributes,   // .attr, written only: 1024 bytes, the palette of each cell in bits 7-6
    kSprites,          // .spl: 64 records of the console's sprite memory: Y, tile, attribute, X
    kBkgPalette,       // .pal: 16 bytes
    kSpritePalette,    // .pal
    kCharMap,          // .bin, written only: the tile of each character
};

// The extension that a file of this part has, without its point. The bare tables are also saved
// as "bin".
std::string_view PartExtension(DesignPart part);

// `path` with the extension appended where its last one differs, ignoring case.
std::filesystem::path WithPartExtension(const std::filesystem::path& path,
                                        std::string_view extension);

// With Shift held, parts are read and written otherwise:
// - tiles come in at the tile in use, and only the marked tiles are written, if there are any;
// - a name table joins the tiles that are there, and only the selected tiles are written, if any;
// - of the sprites those with odd tile numbers are written, if any sprite is selected. That looks
//   like a slip, but it is what these files have always held.
enum class Shift { kUp, kDown };

// Reads a part into the working copy: a step of the history, which the caller opens once the file
// has been read. The result is the views that are out of date, or what is wrong; the working copy
// then stays as it was. Short tables fill their own length, longer ones are cut. An attribute table
// in the MMC5 form isn't known for one: its first 64 bytes are taken. Sprites with a Y of 240 or
// more are passed over, and the list takes 255.
std::variant<Views, Diagnostic> LoadPart(DesignPart part, std::span<const uint8_t> bytes,
                                         Shift shift, WorkingCopy& copy, Language language);

// The bytes of a part, or what is wrong: more than 64 sprites on the screen, or a part that is only
// read. A name table holds what its view shows: tiles, and the list, texts and caption that are
// switched on, each blank with its own tile.
std::variant<std::vector<uint8_t>, Diagnostic> StorePart(DesignPart part, Shift shift,
                                                         const WorkingCopy& copy,
                                                         Language language);

// Writes a part to a file, in one safe step. Attributes, palettes, texts and screens replace the
// start of an existing file; a longer one keeps its tail. All others replace the whole file.
DesignProblem SavePart(const std::filesystem::path& file, DesignPart part, Shift shift,
                       const WorkingCopy& copy, Language language);

}  // namespace bw
