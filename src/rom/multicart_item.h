// One game, or the menu program, during a build.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "rom/image_crcs.h"
#include "rom/image_files.h"
#include "rom/ines_header.h"
#include "support/file_problem.h"

namespace bw {

// Counts and bytes, and units and spans, change together through the setters.
struct MulticartItem {
    bool prgPlaced = false;  // the allocator has given the PRG data its offset
    bool chrPlaced = false;
    uint32_t prgOffset = 0;  // bytes from the start of the ROM
    uint32_t chrOffset = 0;
    uint32_t prgCrc = 0;  // of the data as found in the file
    uint32_t chrCrc = 0;
    uint32_t prgSpan = 0;   // bytes in the ROM: prgUnits * 16384
    uint32_t chrSpan = 0;   // bytes in the ROM: chrUnits * 8192
    uint32_t prgCount = 0;  // 16 KB units in the file
    uint32_t chrCount = 0;  // 8 KB units in the file
    uint32_t prgBytes = 0;
    uint32_t chrBytes = 0;
    uint32_t index = 0;  // ordinal among the checked games, from 0
    uint32_t row = 0;    // in the list, from 1
    uint32_t mapper = 0;
    uint32_t headerSize = 0;   // 16 after a successful reading
    uint32_t prgUnits = 0;     // 16 KB units reserved in the ROM, may exceed prgCount
    uint32_t chrUnits = 0;     // 8 KB units reserved in the ROM, may exceed chrCount
    uint32_t trainerSize = 0;  // 512 with a trainer, else 0
    uint8_t mirroring = 0;     // 1 vertical
    uint8_t trainer = 0;
    uint8_t battery = 0;
    uint8_t fourScreen = 0;
    uint8_t isMenu = 0;
    uint8_t sizeHigh = 0;        // byte 9 of a NES 2.0 header: sizes beyond the counts
    uint8_t valid = 0;           // the header was read and its magic matched
    InesHeader header;           // as it stands in the file
    std::filesystem::path path;  // kept even when the reading fails
    std::u16string name;         // the file's name without folder and extension
    uint64_t fileSize = 0;       // bytes

    // The deep reading: sizes, flags and the CRC of PRG and CHR data. True if the header was read
    // and its magic matched. Whole images are never held in memory. Bytes 4 and 5 alone give the
    // sizes, also in a NES 2.0 header (the list's reading adds byte 9; the difference is meant). A
    // file that ends early is no failure: missing header bytes keep the magic and zeros, missing
    // data counts as 0xFF. Only regular files can be loaded. A failed load changes `path` and
    // nothing else.
    bool Load(const std::filesystem::path& file);
    // The same of a file that is open already.
    bool Load(const std::filesystem::path& file, const FileResult<ImageFile>& image);

    void SetPrgCount(uint32_t count);
    void SetChrCount(uint32_t count);
    void SetPrgUnits(uint32_t units);
    void SetChrUnits(uint32_t units);
};

// Why the header of a file can't be read; nothing if it can. Looks at the file anew: layouts copy
// and sort thousands of items, which have no room for what rarely goes wrong.
std::optional<FileProblem> WhyUnread(const std::filesystem::path& file);

// The deep reading of many files, one new item for each path and in the order of the paths, by a
// few threads, each archive once. Items that couldn't be loaded, or weren't reached before a stop,
// have `valid` 0. `index` stays 0.
std::vector<MulticartItem> LoadMulticartItems(std::span<const std::filesystem::path> paths,
                                              const ReadingProgress& progress = {});

}  // namespace bw
