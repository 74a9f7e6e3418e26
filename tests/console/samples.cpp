#include "samples.h"

#include <array>

namespace bw::console {

std::filesystem::path Sample::File() const {
    return std::filesystem::path(BANKWEAVER_SAMPLES) / (name + ".nes");
}

std::span<const Sample> Samples() {
    static const std::array<Sample, 6> samples{{
        {.name = "star_catcher", .id = 1, .mapper = 0, .prg = 2, .chr = 8, .onEveryBoard = true},
        {.name = "nrom256_check", .id = 2, .mapper = 0, .prg = 4, .chr = 8, .onEveryBoard = true},
        {.name = "uxrom_check", .id = 3, .mapper = 2, .prg = 16, .chr = 0},
        {.name = "cnrom_check", .id = 4, .mapper = 3, .prg = 4, .chr = 32},
        {.name = "mmc1_check", .id = 5, .mapper = 1, .prg = 16, .chr = 64},
        {.name = "mmc3_check", .id = 6, .mapper = 4, .prg = 16, .chr = 128, .onEveryBoard = true},
    }};
    return samples;
}

std::filesystem::path SampleList(BoardType board) {
    return std::filesystem::path(BANKWEAVER_SAMPLES) /
           (board == BoardType::kCoolgirl ? "samples.fcl" : "samples_coolboy.fcl");
}

std::filesystem::path SampleDesign(const std::string& name) {
    return std::filesystem::path(BANKWEAVER_SAMPLES) / "designs" / (name + ".fcm");
}

std::string SampleScript() {
    return R"lua(
        function sample_result(id)
            local seen = wait_until(function()
                local word = bytes(0x07F0, 4)
                return peek(0x07F7) == id and (word == "PASS" or word == "FAIL")
            end, 300)
            if not seen then return "no result, id " .. peek(0x07F7) end
            return string.format("%s %d %02X", bytes(0x07F0, 4), peek(0x07F4), peek(0x07F5))
        end
    )lua";
}

}  // namespace bw::console
