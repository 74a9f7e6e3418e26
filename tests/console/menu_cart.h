// Carts for the menu's tests: small game images made here, built into a ROM by the builder.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "builder/build_driver.h"
#include "designer/model/design_document.h"
#include "fceux_runner.h"

namespace bw::console {

// A game image whose every byte is told by its number. It waits in a loop and writes nothing to
// RAM; with a number in $10 and 1 in $11 it puts those 8 KB of its CHR in view.
struct GameImage {
    std::string name;     // of the file
    uint32_t number = 0;  // seed of the content
    uint32_t mapper = 0;  // 0 or 4
    uint32_t prg = 1;     // 16 KB units
    uint32_t chr = 1;     // 8 KB units; 0 for CHR RAM
    uint8_t flags = 0;    // header byte 6, low four bits

    std::string Prg() const;
    std::string Chr() const;
    // Writes the image to the folder, and gives its entry.
    GameEntry Write(const std::filesystem::path& folder) const;
};

struct CartPlan {
    BoardType board = BoardType::kCoolboy;
    RomFormat format = RomFormat::kNes20;
    BuildSettings settings = {};
    std::vector<std::u16string> names = {};
    // The games of the names; the last one stands for all further names.
    std::vector<GameImage> images = {GameImage{.name = "game"}};
    // The game of the last name, if it is to be another one.
    std::optional<GameImage> lastImage = std::nullopt;
    // In place of names and images, if not empty.
    GameList games = {};
    DesignStore design = {};
    // The design's stored values, and what else the builder reads from a store.
    std::shared_ptr<SettingsStore> store = MakeMemoryStore();
    // For a menu put together by hand: our sources and the exported tables in one folder, changed
    // by this, and assembled. The cart gets the ROM as an external menu.
    std::function<void(const std::filesystem::path& menu)> byHand = {};
};

struct Cart {
    std::filesystem::path rom;
    BuildOutcome outcome;
};

// Builds the cart in `folder` under `label`, which is unique in it. Throws ConsoleFailure.
Cart BuildCart(CartPlan plan, const std::filesystem::path& folder, const std::string& label);

// Builds a cart and runs a script on it, which is given the helpers of menu.lua.
ScriptResult Play(const CartPlan& plan, const std::string& script,
                  const std::string& label = "cart");

// Gives the plan the screen of a packed design, as `build --design` does; its names, which the
// caption counts, must be there. Gives what the file holds.
DesignDocument UseDesign(CartPlan& plan, const std::filesystem::path& file);

// Replaces the first `from` in a file, which must hold it.
void EditFile(const std::filesystem::path& file, std::string_view from, std::string_view to);

// For CartPlan::byHand: the console works the registers out itself.
void UsePlainRecords(const std::filesystem::path& menu);

// "NAME 1", "NAME 2" and so on.
std::vector<std::u16string> CountedNames(size_t count);

// The helpers that all scripts for the menu begin with.
std::string MenuScript(const std::string& body);

// The bytes of a text of hexadecimal digits, and the text.
std::string FromHex(std::string_view digits);
std::string ToHex(std::span<const uint8_t> bytes);

}  // namespace bw::console
