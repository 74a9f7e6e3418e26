// What the menu's screen must show: a second, plain telling of its rules, to compare with.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "menu_cart.h"

namespace bw::console {

// Where a menu's parts stand, as PPU addresses.
struct MenuLook {
    uint16_t item = 0;
    uint16_t title = 0;
    uint16_t page = 0;  // of one digit
    bool centrePage = true;
    std::string titleText;
    uint8_t firstSpriteY = 0;
};

// The places of a default look.
MenuLook DefaultLook(const BuildSettings& settings, size_t games);

class MenuModel {
  public:
    static constexpr size_t kScreenSize = 960;
    using Screen = std::array<uint8_t, kScreenSize>;
    using CharMap = std::array<uint8_t, 256>;

    MenuModel(const MenuLook& look, const BuildSettings& settings,
              const std::vector<std::u16string>& names);
    // With the stored name table, which in the default look doesn't show by itself, and with the
    // map from characters to tiles.
    MenuModel(const MenuLook& look, const BuildSettings& settings,
              const std::vector<std::u16string>& names, const Screen& background,
              bool showBackground, const CharMap& map);

    // One of U D L R S A B.
    void Move(char button);

    size_t Selected() const { return selected_; }
    size_t PageFirst() const { return page_; }
    uint8_t CursorY() const;
    // Frames in which names were sent for the last move.
    size_t Frames() const { return frames_; }
    const Screen& Tiles() const { return screen_; }

  private:
    void Redraw(size_t oldPage);
    size_t RowAddress(size_t row) const;
    void Put(size_t address, const std::string& text);
    void Wipe(size_t address, size_t count);
    void PutPageNumber();

    MenuLook look_;
    BuildSettings settings_;
    std::vector<std::string> names_;  // as the tables hold them
    Screen background_{};
    CharMap map_{};
    Screen screen_{};
    size_t page_ = 0;
    size_t selected_ = 0;
    size_t frames_ = 0;
};

// The screen as 30 lines of text, for messages: tiles $20 to $5F as characters.
std::string ScreenText(std::string_view tiles);

}  // namespace bw::console
