#include "console/menu_walk.h"

#include "console/menu_places.h"

namespace bw {
namespace {

constexpr uint32_t kLook = 4;  // frames between two looks at the menu's memory
// A start takes 38 at the least, and a page of 20 names up to 22 more.
constexpr uint32_t kStart = 36;
constexpr uint32_t kPatience = 600;
// Behind the last piece of a page: its colours and the cursor go out in quiet frames.
constexpr uint32_t kSettling = 4;

ConsoleResult<> RunUntilQuiet(Console& console) {
    for (uint32_t frames = 0; frames < kPatience; frames += kLook) {
        if (const auto run = console.Run({.frames = kLook}); !run) return run.Problem();
        // Both places at once: an answer takes longer than its bytes.
        const auto memory = console.ReadCpu(kMenuUpdating, kMenuPpuMask - kMenuUpdating + 1);
        if (!memory) return memory.Problem();
        if (memory->back() != kMenuLit || memory->front() != 0) continue;
        const auto settled = console.Run({.frames = kSettling});
        return settled ? ConsoleResult<>() : settled.Problem();
    }
    return ConsoleProblem{ConsoleProblem::Kind::kRefused, "the menu doesn't come to rest"};
}

}  // namespace

ConsoleResult<> RunToMenu(Console& console) {
    if (const auto run = console.Run({.frames = kStart}); !run) return run.Problem();
    return RunUntilQuiet(console);
}

ConsoleResult<uint32_t> SelectedItem(Console& console) {
    const auto bytes = console.ReadCpu(kMenuSelected, 2);
    if (!bytes) return bytes.Problem();
    return uint32_t{(*bytes)[0]} | uint32_t{(*bytes)[1]} << 8;
}

// What the menu itself writes when a page is turned: page and selection with those before them,
// the offset in the page, the flag, the next row, the rows of this frame, and the first items of
// the two pages, of which the old one is wiped.
ConsoleResult<> GoToItem(Console& console, uint32_t item, uint32_t pageSize) {
    const auto old = console.ReadCpu(kMenuPage, 2);
    if (!old) return old.Problem();
    const uint32_t page = item / pageSize * pageSize;
    const auto low = [](uint32_t value) { return static_cast<uint8_t>(value); };
    const auto high = [](uint32_t value) { return static_cast<uint8_t>(value >> 8); };
    const uint8_t oldLow = (*old)[0];
    const uint8_t oldHigh = (*old)[1];
    const std::vector<uint8_t> turned{
        low(page), high(page), oldLow, oldHigh, low(item), high(item), low(item), high(item), 0,
        0,         1,          0,      0,       low(page), high(page), oldLow,    oldHigh};
    if (auto written = console.WriteCpu(kMenuPage, turned); !written) return written;
    return RunUntilQuiet(console);
}

}  // namespace bw
