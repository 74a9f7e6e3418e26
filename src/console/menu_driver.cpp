#include "console/menu_driver.h"

#include <algorithm>

#include "console/game_view.h"
#include "console/menu_places.h"

namespace bw {
namespace {

constexpr uint32_t kStep = 10;         // frames between two looks
constexpr uint32_t kRestFrames = 3;    // of a page that has just been drawn
constexpr uint32_t kForeignRest = 60;  // of a menu of which nothing is known
constexpr uint16_t kVectors = 0xFFFA;

GameStart Ended(GameStart::End end) {
    return {.end = end};
}

}  // namespace

ConsoleResult<> MenuDriver::Boot() {
    const ConsoleResult<bool> up = ComesUp();
    if (!up) return up.Problem();
    up_ = *up;
    const ConsoleResult<ConsoleRun> rest =
        console_.Run({.frames = own_ ? kRestFrames : kForeignRest});
    if (!rest) return rest.Problem();
    return console_.KeepState();
}

ConsoleResult<bool> MenuDriver::ComesUp() {
    for (uint32_t frame = 0; frame < kMenuFrames; frame += kStep) {
        const ConsoleResult<ConsoleRun> run = console_.Run({.frames = kStep, .picture = !own_});
        if (!run) return run.Problem();
        if (run->jammedAt) return false;
        ConsoleResult<bool> quiet =
            own_ ? IsQuiet() : ConsoleResult<bool>(!HasOneColour(run->picture));
        if (!quiet || *quiet) return quiet;
    }
    return false;
}

ConsoleResult<bool> MenuDriver::IsQuiet() {
    const ConsoleResult<std::vector<uint8_t>> mask = console_.ReadCpu(kMenuPpuMask, 1);
    if (!mask) return mask.Problem();
    const ConsoleResult<std::vector<uint8_t>> updating = console_.ReadCpu(kMenuUpdating, 1);
    if (!updating) return updating.Problem();
    return mask->front() == kMenuLit && updating->front() == 0;
}

ConsoleResult<bool> MenuDriver::HasVectors(const GameFacts& facts) {
    const auto wanted = facts.Vectors();
    const ConsoleResult<std::vector<uint8_t>> vectors =
        console_.ReadCpu(kVectors, static_cast<uint32_t>(wanted.size()));
    if (!vectors) return vectors.Problem();
    return std::ranges::equal(*vectors, wanted);
}

ConsoleResult<> MenuDriver::Push(uint8_t button, uint32_t down, uint32_t up) {
    const ConsoleResult<ConsoleRun> held = console_.Run({.frames = down, .pads = {button, 0}});
    if (!held) return held.Problem();
    const ConsoleResult<ConsoleRun> released = console_.Run({.frames = up});
    if (!released) return released.Problem();
    return {};
}

ConsoleResult<GameStart> MenuDriver::Start(uint32_t index, const GameFacts& facts,
                                           const std::vector<AddressRange>& watched) {
    if (!up_) return Ended(own_ ? GameStart::End::kNoMenu : GameStart::End::kNotDriven);
    if (keys_) return StartByKeys(index, facts, watched);
    ConsoleResult<GameStart> started = StartByVariable(index, watched);
    if (own_ || !started) return started;
    if (started->end == GameStart::End::kStarted) {
        const ConsoleResult<bool> right = HasVectors(facts);
        if (!right) return right.Problem();
        if (*right) return started;
    }
    keys_ = true;
    return StartByKeys(index, facts, watched);
}

ConsoleResult<GameStart> MenuDriver::StartByVariable(uint32_t index,
                                                     const std::vector<AddressRange>& watched) {
    constexpr uint32_t kPressFrames = 2;
    if (const auto restored = console_.RestoreState(); !restored) return restored.Problem();
    const auto written = console_.WriteCpu(
        kMenuSelected, {static_cast<uint8_t>(index), static_cast<uint8_t>(index >> 8)});
    if (!written) return written.Problem();
    const ConsoleResult<ConsoleRun> pressed =
        console_.Run({.frames = kPressFrames, .pads = {kPadStart, 0}});
    if (!pressed) return pressed.Problem();
    const ConsoleResult<ConsoleRun> run =
        console_.Run({.frames = kStartFrames, .untilExecuted = kMenuHandOver, .watched = watched});
    if (!run) return run.Problem();
    return GameStart{run->reached ? GameStart::End::kStarted : GameStart::End::kNoHandOver,
                     run->jammedAt, run->writes};
}

// The state that is kept is that of the last selection. A game whose vectors can't be told from the
// menu's counts as started by whatever follows.
ConsoleResult<GameStart> MenuDriver::StartByKeys(uint32_t index, const GameFacts& facts,
                                                 const std::vector<AddressRange>& watched) {
    constexpr uint32_t kDown = 3, kUp = 6;  // frames; every program that reads pads sees that
    if (index < selected_) return Ended(GameStart::End::kNotDriven);
    if (const auto restored = console_.RestoreState(); !restored) return restored.Problem();
    for (; selected_ < index; ++selected_) {
        if (const auto moved = Push(kPadDown, kDown, kUp); !moved) return moved.Problem();
    }
    if (const auto kept = console_.KeepState(); !kept) return kept.Problem();
    if (const auto pushed = Push(kPadStart, kDown, 0); !pushed) return pushed.Problem();
    for (uint32_t frame = 0; frame < kStartFrames; frame += kStep) {
        const ConsoleResult<ConsoleRun> run = console_.Run({.frames = kStep, .watched = watched});
        if (!run) return run.Problem();
        const ConsoleResult<bool> there = HasVectors(facts);
        if (!there) return there.Problem();
        // What was written in this step may have been the menu's.
        if (*there)
            return GameStart{GameStart::End::kStarted, run->jammedAt,
                             std::vector<WatchedWrites>(watched.size())};
        if (run->jammedAt) break;
    }
    return Ended(GameStart::End::kNotDriven);
}

}  // namespace bw
