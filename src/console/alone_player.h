// Games by themselves, in an emulator beside the cart's that is started when the first one is asked
// for.
#pragma once

#include <filesystem>
#include <memory>
#include <vector>

#include "console/emulator.h"
#include "console/game_view.h"

namespace bw {

struct AloneGame {
    std::filesystem::path image;
    // The emulator keeps such a game's save for its next start: it gets an emulator of its own.
    bool battery = false;
};

class AlonePlayer {
  public:
    // `start` is what is said to the emulator but for the ROM. The emulator must live longer.
    AlonePlayer(const Emulator& emulator, ConsoleStart start)
        : emulator_(emulator), start_(std::move(start)) {}

    // Each switches the image on anew. An emulator that ends meanwhile is tried once more.
    ConsoleResult<GameView> Watch(const AloneGame& game, const std::vector<uint32_t>& lookFrames);
    ConsoleResult<std::vector<FrameCode>> Record(const AloneGame& game, uint32_t frames);

  private:
    ConsoleResult<> SwitchOn(const AloneGame& game);
    template <typename Work>
    auto Try(const AloneGame& game, const Work& work) -> decltype(work());

    const Emulator& emulator_;
    ConsoleStart start_;
    std::unique_ptr<Console> console_;
};

}  // namespace bw
