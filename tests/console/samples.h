// The project's own samples, and what the games leave in RAM (samples/README.md).
#pragma once

#include <filesystem>
#include <span>
#include <string>

#include "list/game_list.h"
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

// The games of the list file that names all samples, or those for COOLBOY and MINDKIDS.
GameList SampleGames(BoardType board);

// The packed design `name` of the samples.
std::filesystem::path SampleDesign(const std::string& name);

// What went wrong, as a sample leaves it.
enum class Fault : uint8_t { kNone, kPrg, kChr, kChrRam, kMirroring, kWorkRam, kCounter };

// Lua: a function sample_result(id) that waits for the outcome of sample `id` and gives it as text
// "PASS 0 00" or "FAIL fault bank", the bank in two digits of hexadecimal.
inline const std::string kSampleScript = R"lua(
    function sample_result(id)
        local seen = wait_until(function()
            local word = bytes(0x07F0, 4)
            return peek(0x07F7) == id and (word == "PASS" or word == "FAIL")
        end, 300)
        if not seen then return "no result, id " .. peek(0x07F7) end
        return string.format("%s %d %02X", bytes(0x07F0, 4), peek(0x07F4), peek(0x07F5))
    end
)lua";

// Lua: for each sample among the games a call play(index in the list, id, name).
std::string PlaySamples(const GameList& games);

}  // namespace bw::console
