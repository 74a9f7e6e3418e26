// The command line of bankweaver-cli, parsed but not carried out.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "builder/input/build_settings.h"
#include "builder/layout/board_fit.h"
#include "builder/output/rom_header.h"
#include "designer/import/picture_import.h"

namespace bw {

enum class Command {
    kInfo,
    kBuild,
    kExport,
    kList,
    kCheck,
    kDesignPack,
    kDesignUnpack,
    kDesignRender,
    kDesignInfo,
    kDesignCheck,
    kDesignConvert,
    kDesignImportPicture,
    kPlay,
    kSplit,
    kCompare
};

// A part of a design and the file that it comes from or goes to.
struct PartFile {
    std::string part;
    std::filesystem::path file;
};

// Of the command "check".
struct CheckArguments {
    uint32_t jobs = 0;             // emulators at a time; 0: one for each processor
    uint32_t frames = 300;         // that each game is watched for
    std::vector<uint32_t> only{};  // games in the menu, from 0; empty: all
    std::filesystem::path sheet{};
    std::string building{};  // the first option that was given and says how to build; or empty
};

struct Arguments {
    Command command = Command::kInfo;
    std::vector<std::filesystem::path> inputs;  // images, list files, folders; in menu order
    bool json = false;                          // info, list, check, design info, design check
    bool quiet = false;                         // say nothing but errors and warnings
    bool verbose = false;                       // say what is done
    bool strict = false;                        // build, export: warnings end it
    bool skipUnsupported = false;               // build, export: leave out what the board can't run
    bool skipDamaged = false;                   // build, export, list, check: also the next five
    bool tidyNames = false;
    bool shortenNames = false;                   // by whole words, to the room on the console
    bool keepBest = false;                       // of the versions of a game
    std::vector<std::filesystem::path> names{};  // databases of names, the first counts most
    std::filesystem::path lookIn{};              // for missing files; empty: nowhere
    std::optional<LeavingOut> leaveOut{};        // build, export, list: if the board is too small
    bool fillUp = false;                         // build, export, list: take what still fits
    bool why = false;                            // info: why boards don't run games
    bool fit = false;                            // info: what games add to a board
    bool dryRun = false;                         // build: write nothing, tell what would be made
    // build: the ROM; list: the list file, or empty; design pack and import-picture:
    // the design; design render: the picture
    std::filesystem::path output;
    std::filesystem::path folder;  // export, design, split: the folder
    std::filesystem::path design;  // build, export: the menu's screen, or empty; design
    BoardType board = BoardType::kCoolboy;
    BuildSettings settings;
    RomFormat format = RomFormat::kNes20;
    std::optional<std::filesystem::path> keepWork;      // absolute
    std::optional<std::filesystem::path> keepPlaces{};  // build: of this cart; absolute
    std::filesystem::path played;                       // play: the cart or game
    std::filesystem::path report;                       // empty: none; "-": standard output
    std::vector<PartFile> loads;  // design convert, in this order; then the saves
    std::vector<PartFile> saves;
    CheckArguments checking;
    std::filesystem::path cart;  // split, compare
    std::filesystem::path dump;  // compare
    uint32_t sectorSize = 64;    // compare: KB
    // design import-picture
    std::filesystem::path picture;
    ImportOptions importing;
    // design render
    std::vector<std::string> layers;  // empty: as the designer shows them
    std::string view = "screen";      // or "tiles"
    uint32_t scale = 2;               // pixels of the picture for one of the console
};

struct ParseResult {
    std::optional<Arguments> arguments{};  // what to carry out, unless a text is to be shown
    std::string text{};                    // help, version, or what is wrong with the usage
    int exitCode = 0;                      // with a text: 0 help and version, 2 wrong usage
};

// `words` are those behind the program's name, in UTF-8.
ParseResult ParseArguments(const std::vector<std::string>& words);

}  // namespace bw
