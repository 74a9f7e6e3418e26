// What a running game shows at a few moments.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "console/emulator.h"

namespace bw {

struct GameLook {
    uint32_t frame = 0;  // of the watch, from 1
    ConsolePicture picture{};
    std::vector<uint8_t> memory{};  // PPU $0000 to $2FFF: tiles and name tables
};

struct GameView {
    uint32_t frames = 0;  // of the whole watch; fewer passed if the processor jammed
    std::vector<GameLook> looks{};
    std::optional<uint16_t> jammedAt{};
    std::vector<WatchedWrites> writes{};  // one for each range that was watched

    const ConsolePicture& LastPicture() const { return looks.back().picture; }
    // The last picture has one colour.
    bool IsBlack() const;
    // All pictures of its last part are equal; false if that part is too short to tell.
    bool IsStill() const;
    // The same of all pictures.
    bool IsBlackThroughout() const;
    bool IsStillThroughout() const;
};

bool HasOneColour(const ConsolePicture& picture);

// The frames of a watch of so many frames at which a look tells most: some close to its end, at
// distances that no blinking has, and one before.
std::vector<uint32_t> LookFrames(uint32_t frames);

// Runs the console to the last of `lookFrames`, which rise, and looks at each of them.
ConsoleResult<GameView> WatchGame(Console& console, const std::vector<uint32_t>& lookFrames,
                                  const std::vector<AddressRange>& watched = {});

}  // namespace bw
