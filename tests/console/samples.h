// The project's own samples, and what the games leave in RAM (samples/README.md).
#pragma once

#include <filesystem>
#include <span>
#include <string>

#include "rom/board_tables.h"

namespace bw::console {

struct Sample {
    std::string name;  // of the file, without its extension
    uint32_t id = 0;   // what it writes to $07F7
    uint32_t mapper = 0;
    uint32_t prg = 0;  // 8 KB banks
    uint32_t chr = 0;  // 1 KB banks; 0 for CHR RAM
    bool onEveryBoard = false;

    std::filesystem::path File() const;
};

std::span<const Sample> Samples();

// The list file that names all samples, or those for COOLBOY and MINDKIDS.
std::filesystem::path SampleList(BoardType board);

// The packed design `name` of the samples.
std::filesystem::path SampleDesign(const std::string& name);

// Where a sample's outcome stands; fault, bank and the byte read there follow the word.
inline constexpr unsigned kResultAddress = 0x07F0;
enum class Fault : uint8_t { kNone, kPrg, kChr, kChrRam, kMirroring, kWorkRam, kCounter };

// Lua: a function sample_result() that waits for the outcome of sample `id` and gives it as text
// "PASS 0 00" or "FAIL fault bank", the bank in two digits of hexadecimal.
std::string SampleScript();

}  // namespace bw::console
