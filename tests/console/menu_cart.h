// Carts for the menu's tests: small game images made here, built into a ROM by the builder.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "builder/build_driver.h"
#include "designer/model/design_document.h"
#include "fceux_runner.h"

namespace bw::console {

// A game image whose every byte is told by its number. It waits in a loop and writes nothing to
// RAM; with a number in $10 and 1 in $11 it puts those 8 KB of its CHR in view.
struct GameImage {
    std::string name;                          // of the file
    uint32_t number = 0;                       // seed of the content
    uint32_t mapper = 0;                       // 0 or 4
    uint32_t prg = 1;                          // 16 KB units
    uint32_t chr = 1;                          // 8 KB units; 0 for CHR RAM
    uint8_t flags = 0;                         // header byte 6, low four bits
    static constexpr uint16_t kLoop = 0xFFC0;  // where the program waits

    std::string Prg() const;
    std::string Chr() const;
    std::string File() const;
};

struct CartPlan {
    BoardType board = BoardType::kCoolboy;
    RomFormat format = RomFormat::kNes20;
    BuildSettings settings = {};
    std::vector<std::u16string> names = {};
    // The games' files; the last one stands for all further names.
    std::vector<GameImage> images = {GameImage{.name = "game"}};
    DesignStore design = {};
    // The design's stored values, and what else the builder reads from a store.
    std::shared_ptr<SettingsStore> store = MakeMemoryStore();
};

struct Cart {
    std::filesystem::path rom;
    BuildOutcome outcome;
    std::string problem;  // what the builder said, if the build failed
};

// Builds the cart in `folder` under `label`, which is unique in it.
Cart BuildCart(const CartPlan& plan, const std::filesystem::path& folder, const std::string& label);

// The same with games that exist as files; the plan's names and images don't count.
Cart BuildCart(const CartPlan& plan, const GameList& games, const std::filesystem::path& folder,
               const std::string& label);

// The games that the plan's names and images make; their files go to `folder`.
GameList WriteGames(const CartPlan& plan, const std::filesystem::path& folder,
                    const std::string& label);

// What a person does who puts a menu together by hand: our sources and the exported tables in one
// folder, changed by `edit`, and assembled. The plan's board and menu size count; the ROM is made
// an external menu of it. Gives what went wrong, or nothing.
std::string MakeMenuByHand(CartPlan& plan, const GameList& games,
                           const std::filesystem::path& folder, const std::string& label,
                           const std::function<void(const std::filesystem::path& menu)>& edit);

// Gives the plan the screen of a packed design, as `build --design` does; its names, which the
// caption counts, must be there. `design` gets what the file holds. Gives what went wrong, or
// nothing.
std::string UseDesign(CartPlan& plan, const std::filesystem::path& file, DesignDocument& design);

// Replaces the first `from` in a file, which must hold it.
void EditFile(const std::filesystem::path& file, std::string_view from, std::string_view to);

// The edit that makes the console work the registers out itself.
void UsePlainRecords(const std::filesystem::path& menu);

// "NAME 1", "NAME 2" and so on.
std::vector<std::u16string> CountedNames(size_t count);

// The helpers that all scripts for the menu begin with.
std::string MenuScript(const std::string& body);

// The bytes of a text of hexadecimal digits.
std::string FromHex(std::string_view digits);

}  // namespace bw::console
