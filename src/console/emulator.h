// The console, as the rest of the program sees it: an emulator that is a program of its own, found
// on this machine at run time. fceux.h is the one that there is; another one implements these two
// classes.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

#include "support/result.h"

namespace bw {

// What the console shows.
struct ConsolePicture {
    static constexpr uint32_t kWidth = 256;   // pixels
    static constexpr uint32_t kHeight = 240;  // all lines, also those that a television hides
    // kWidth * kHeight of them, row by row from the top left, 0xFFRRGGBB. Empty: no picture.
    std::vector<uint32_t> pixels;
};

// A pad's buttons, as bits. The order is that in which the console reads them, the first on top.
enum PadButton : uint8_t {
    kPadA = 0x80,
    kPadB = 0x40,
    kPadSelect = 0x20,
    kPadStart = 0x10,
    kPadUp = 0x08,
    kPadDown = 0x04,
    kPadLeft = 0x02,
    kPadRight = 0x01,
};
using PadStates = std::array<uint8_t, 2>;  // pads 1 and 2

// CPU addresses, both ends included.
struct AddressRange {
    uint16_t first = 0;
    uint16_t last = 0;
};

// What the console is to do next.
struct ConsoleOrder {
    uint32_t frames = 1;  // at most
    PadStates pads{};     // held all the time
    // Ends with the frame in which the processor executes this address.
    std::optional<uint16_t> untilExecuted{};
    // Writes to these are counted, with untilExecuted those after it.
    std::vector<AddressRange> watched{};
    bool codes = false;    // wanted: ConsoleRun::codes
    bool picture = false;  // wanted: ConsoleRun::picture
    // Where the console plays its sound: not these frames, which then go as fast as they can.
    bool silent = false;
};

// A number for each part of what a frame shows; equal numbers, equal parts.
struct FrameCode {
    uint32_t screen = 0;   // name tables and palette
    uint32_t sprites = 0;  // sprite memory, as far as programs fill it by DMA
    uint32_t tiles = 0;    // the pattern memory in view
    friend bool operator==(const FrameCode&, const FrameCode&) = default;
};

struct WatchedWrites {
    uint32_t count = 0;
    // Of the first one: where to, what, and the program counter behind the instruction.
    uint16_t address = 0;
    uint8_t value = 0;
    uint16_t counter = 0;
};

// What came of an order.
struct ConsoleRun {
    uint32_t frames = 0;   // that passed
    bool reached = false;  // untilExecuted was executed
    // The processor stands at an instruction that stops it for good: its address.
    std::optional<uint16_t> jammedAt{};
    std::vector<WatchedWrites> writes{};  // one for each watched range
    std::vector<FrameCode> codes{};       // one for each frame
    ConsolePicture picture{};             // after the last frame
};

struct ConsoleProblem {
    enum class Kind : uint8_t {
        kNotStarted,  // it is there and can't be run, or doesn't do what it should from the start
                      // on
        kRefused,     // it doesn't take this ROM
        kEnded,       // it ended or crashed on the way
        kSilent,      // it gave no answer in its time, and was ended
        kGarbled,     // it answered something else than it was asked for, and was ended
        kStopped,     // the caller wanted it to stop
    };
    Kind kind = Kind::kEnded;
    std::string
        detail{};  // the last of what it printed, or what is wrong; for whoever looks for the cause
};

template <typename Value = void>
using ConsoleResult = Result<Value, ConsoleProblem>;

struct ConsoleStart {
    std::filesystem::path rom;  // absolute
    // What the cartridge's battery keeps: read from this file at the start and written to it when
    // the console ends in order. Empty: empty at the start, forgotten at the end.
    std::filesystem::path save{};
    // Plays its sound on the user's loudspeakers, and keeps to the console's own speed meanwhile.
    bool sound = false;
    // The longest that an order may take, beside what its frames need.
    std::chrono::milliseconds patience{10000};
    // Ends whatever is waited for.
    std::stop_token stop{};
};

// A running console with a ROM in it. Memory is zeros at power-on and all colours are black, so
// that runs repeat each other. For one thread: the one that started it, which must outlive it.
// After a problem the emulator is gone, and every further order gives that problem again. No
// processor time passes between orders but for a watch of the emulator's own (some 2 %); none at
// all after Rest.
class Console {
  public:
    // Ends the emulator and leaves nothing of it: no process, no file.
    virtual ~Console() = default;

    virtual ConsoleResult<ConsoleRun> Run(const ConsoleOrder& order) = 0;

    // `count` bytes as the CPU sees them, or the PPU ($0000 to $3FFF, in today's banks).
    virtual ConsoleResult<std::vector<uint8_t>> ReadCpu(uint16_t address, uint32_t count) = 0;
    virtual ConsoleResult<std::vector<uint8_t>> ReadPpu(uint16_t address, uint32_t count) = 0;
    // As if the CPU wrote them, one after the other.
    virtual ConsoleResult<> WriteCpu(uint16_t address, const std::vector<uint8_t>& bytes) = 0;

    // One state is kept; a later one takes its place. Not beyond Load.
    virtual ConsoleResult<> KeepState() = 0;
    virtual ConsoleResult<> RestoreState() = 0;

    // Another ROM, switched on.
    virtual ConsoleResult<> Load(const std::filesystem::path& rom) = 0;
    virtual ConsoleResult<> Power() = 0;  // off and on again
    virtual ConsoleResult<> Reset() = 0;  // the reset button

    // Takes no processor time at all until the next order.
    virtual void Rest() = 0;
    // The emulator's process, for measurements.
    virtual int64_t ProcessId() const = 0;
};

// An emulator that was found. Immutable; for any thread.
class Emulator {
  public:
    virtual ~Emulator() = default;
    // As people call it, with its version: "FCEUX 2.6.5"; without one where it doesn't tell. Runs
    // it for a moment.
    virtual std::string Name() const = 0;
    virtual ConsoleResult<std::unique_ptr<Console>> Start(const ConsoleStart& start) const = 0;
};

// The emulator of this machine: what BANKWEAVER_FCEUX names, else fceux from PATH or where this
// system keeps such programs. Null if there is none; kEmulatorPackage is what to install. Looks at
// files, runs nothing.
std::unique_ptr<Emulator> FindEmulator();
inline constexpr std::string_view kEmulatorPackage = "fceux";

}  // namespace bw
