#include "console/game_view.h"

#include <algorithm>
#include <array>

namespace bw {
namespace {

constexpr uint32_t kViewBytes = 0x3000;
// Frames from the end. The first of them are prime to each other and to usual periods of blinking.
constexpr std::array<uint32_t, 5> kBeforeEnd{119, 72, 41, 17, 0};
constexpr uint32_t kStillSpan = 60;  // frames below which stillness means nothing

void Join(std::vector<WatchedWrites>& all, const std::vector<WatchedWrites>& more) {
    all.resize(std::max(all.size(), more.size()));
    for (size_t i = 0; i < more.size(); ++i) {
        const uint32_t count = all[i].count + more[i].count;
        if (all[i].count == 0) all[i] = more[i];
        all[i].count = count;
    }
}

bool AllEqual(const GameView& view, uint32_t from) {
    return std::ranges::all_of(view.looks, [&](const GameLook& look) {
        return look.frame < from || look.picture.pixels == view.LastPicture().pixels;
    });
}

}  // namespace

bool HasOneColour(const ConsolePicture& picture) {
    const std::vector<uint32_t>& pixels = picture.pixels;
    return std::ranges::all_of(pixels, [&](uint32_t pixel) { return pixel == pixels.front(); });
}

bool GameView::IsBlack() const {
    return HasOneColour(LastPicture());
}

bool GameView::IsBlackThroughout() const {
    return std::ranges::all_of(looks,
                               [](const GameLook& look) { return HasOneColour(look.picture); });
}

bool GameView::IsStill() const {
    return frames >= kStillSpan && AllEqual(*this, frames - std::min(frames, kBeforeEnd.front()));
}

bool GameView::IsStillThroughout() const {
    return AllEqual(*this, 0);
}

std::vector<uint32_t> LookFrames(uint32_t frames) {
    std::vector<uint32_t> looks;
    if (frames > 2 * kBeforeEnd.front()) looks.push_back((frames - kBeforeEnd.front()) / 2);
    for (const uint32_t before : kBeforeEnd) {
        if (before < frames) looks.push_back(frames - before);
    }
    return looks;
}

ConsoleResult<GameView> WatchGame(Console& console, const std::vector<uint32_t>& lookFrames,
                                  const std::vector<AddressRange>& watched) {
    GameView view;
    view.frames = lookFrames.back();
    view.writes.resize(watched.size());
    uint32_t passed = 0;
    for (const uint32_t frame : lookFrames) {
        ConsoleResult<ConsoleRun> run = console.Run(
            {.frames = frame - passed, .watched = watched, .codes = false, .picture = true});
        if (!run) return run.Problem();
        ConsoleResult<std::vector<uint8_t>> memory = console.ReadPpu(0, kViewBytes);
        if (!memory) return memory.Problem();
        passed = frame;
        Join(view.writes, run->writes);
        view.looks.push_back({frame, std::move(run->picture), std::move(*memory)});
        view.jammedAt = run->jammedAt;
        if (view.jammedAt) break;
    }
    return view;
}

}  // namespace bw
