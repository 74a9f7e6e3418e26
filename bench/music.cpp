// Cycles that the menu's music takes in a frame, measured in the emulator: each set's tune over two
// loops, and each of its sounds started anew in every frame of a loop, which is worse than anything
// that a player can do.
#include <cstdio>

#include "console/menu_cart.h"
#include "music/set_reader.h"

namespace {

using namespace bw;
using namespace bw::console;

struct SetEntries {
    uint32_t music;
    unsigned init, play;
    std::array<unsigned, 3> sounds;  // song numbers, from 1
};

constexpr SetEntries kSets[] = {{2, 0xC400, 0x8000, {38, 37, 36}},
                                {3, 0xC400, 0x8001, {16, 14, 19}},
                                {4, 0xC450, 0x80D5, {21, 26, 39}},
                                {5, 0xDFF0, 0x813C, {17, 19, 36}}};

// Globals PLAY, INIT, SONG (0: none) and COUNT stand before it. The menu calls the set by mapping
// its banks, whose last instruction is a return. To start a song in every frame, that return is
// made to lead to the set's entry first.
constexpr const char* kScript = R"lua(
frames(60)
local call
for a = 0xFE00, 0xFFF0 do
    if peek(a) == 0x20 and peek16(a + 1) == PLAY then call = a end
end
local map_banks = peek16(call - 2)
local done = peek16(map_banks + 8)
while peek(done) ~= 0x60 do done = done + 1 end
local began, total, count, worst = nil, 0, 0, 0
memory.registerexecute(done, 1, function()
    local s = memory.getregister("s")
    if peek(0x101 + s) + 256 * peek(0x102 + s) ~= call - 1 then return end
    began = debugger.getcyclescount()
    if SONG == 0 then return end
    memory.writebyte(0x100 + s, math.floor((INIT - 1) / 256))
    memory.writebyte(0xFF + s, (INIT - 1) % 256)
    memory.setregister("s", s - 2)
    memory.setregister("a", SONG - 1)
end)
memory.registerexecute(call + 3, 1, function()
    local cycles = debugger.getcyclescount() - began - 6  -- without that return
    count, total, worst = count + 1, total + cycles, math.max(worst, cycles)
end)
frames(COUNT)
put("average", math.floor(total / count))
put("worst", worst)
)lua";

size_t LoopEnd(uint32_t music) {
    const MusicReading reading = ReadMusicSet(ReadText(std::filesystem::path(BANKWEAVER_MUSIC) /
                                                       ("set_" + std::to_string(music) + ".txt")),
                                              "set");
    size_t frames = 0;
    for (const auto& line : reading.set.songs[0].lines) {
        size_t length = 0;
        if (!line) continue;
        for (const MusicEvent& event : line->events)
            length += event.frames;
        frames = std::max(frames, length);
    }
    return frames;
}

}  // namespace

int main() {
    const TemporaryFolder folder;
    std::vector<ScriptRun> runs;
    for (const SetEntries& set : kSets) {
        CartPlan plan{.names = CountedNames(5)};
        plan.settings.Music = set.music;
        const Cart cart = BuildCart(plan, folder.Path(), "set" + std::to_string(set.music));
        const size_t once = LoopEnd(set.music);
        for (const unsigned song : {0u, set.sounds[0], set.sounds[1], set.sounds[2]}) {
            const size_t frames = (song == 0 ? 2 : 1) * once + 60;
            runs.push_back({.rom = cart.rom,
                            .script = "PLAY, INIT, SONG, COUNT = " + std::to_string(set.play) +
                                      ", " + std::to_string(set.init) + ", " +
                                      std::to_string(song) + ", " + std::to_string(frames) +
                                      kScript,
                            .label = "set" + std::to_string(set.music)});
        }
    }
    const std::vector<ScriptResult> results = RunAllOnConsole(runs);
    std::printf("cycles a frame          tune    + item    + page   + enter\n");
    for (size_t i = 0; i + 3 < results.size(); i += 4) {
        for (const char* what : {"average", "worst"}) {
            std::printf("set %u, %-10s", kSets[i / 4].music, what);
            for (size_t run = i; run < i + 4; ++run)
                std::printf("%10ld", results[run].Number(what));
            std::printf("\n");
        }
    }
    return 0;
}
