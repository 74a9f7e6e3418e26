// Checks a cart in the emulator: every game through the real menu and the board's registers.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "builder/tables/cart_tables.h"
#include "console/emulator.h"
#include "console/findings.h"
#include "language/language.h"

namespace bw {

// What is checked.
struct CheckSubject {
    std::filesystem::path cart;  // absolute
    CartTables tables;
    // The images that the cart was built from, in the menu's order: what a game shows alone is seen
    // by them. Empty for a cart alone: then it is by the cart's bytes (alone_image.h).
    std::vector<std::filesystem::path> images{};
    // The names for people, in the same order; empty: those of the tables.
    std::vector<std::u16string> names{};
};

struct CheckOptions {
    uint32_t jobs = 0;             // emulators at a time; 0: one for each processor
    uint32_t frames = 300;         // that each game is watched for, from 1 on
    std::vector<uint32_t> only{};  // indices; empty: all
    // Off: only the listener sees the pictures, which take 240 KB each, and the outcome has none.
    bool keepPictures = true;
    Language language = Language::kEnglish;
};

// Called from the threads of the check, one call at a time.
class CheckListener {
  public:
    virtual ~CheckListener() = default;
    // In any order of games. `done` of `total` are done, this one among them.
    virtual void Checked(const CheckedGame& game, size_t done, size_t total) = 0;
};

struct CheckOutcome {
    BoardType board = BoardType::kCoolboy;
    std::string emulator{};            // its name
    std::vector<CheckedGame> games{};  // those that were run, in the menu's order
    bool stopped = false;              // by the caller
    // What kept the whole check from going on, in words; the games before it are there.
    std::u16string problem{};

    bool HasErrors() const;
};

// Blocks; the emulators run beside each other. Leaves no process and no file, however it ends.
CheckOutcome CheckCart(const Emulator& emulator, const CheckSubject& subject,
                       const CheckOptions& options, CheckListener& listener,
                       const std::stop_token& stop = {});

}  // namespace bw
