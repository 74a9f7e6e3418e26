#include "samples.h"

#include <array>

#include <fmt/format.h>

#include "list/list_file.h"
#include "support/text.h"

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

GameList SampleGames(BoardType board) {
    const std::filesystem::path folder = BANKWEAVER_SAMPLES;
    GameList games;
    LoadListFile(folder / (board == BoardType::kCoolgirl ? "samples.fcl" : "samples_coolboy.fcl"),
                 folder, games);
    return games;
}

std::filesystem::path SampleDesign(const std::string& name) {
    return std::filesystem::path(BANKWEAVER_SAMPLES) / "designs" / (name + ".fcm");
}

std::string PlaySamples(const GameList& games) {
    std::string script;
    for (size_t i = 0; i < games.size(); ++i)
        for (const Sample& sample : Samples())
            if (ToUtf8(games[i].path).ends_with("/" + sample.name + ".nes"))
                script += fmt::format("play({}, {}, '{}')\n", i, sample.id, sample.name);
    return script;
}

}  // namespace bw::console
