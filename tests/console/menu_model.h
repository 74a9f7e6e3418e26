// What the screen of a menu with a default look must show: a second, plain telling of its rules, to
// compare with.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "menu_cart.h"

namespace bw::console {

class MenuModel {
  public:
    MenuModel(const BuildSettings& settings, const std::vector<std::u16string>& names);

    // One of U D L R S A B.
    void Move(char button);

    size_t Selected() const { return selected_; }
    size_t PageFirst() const { return page_; }
    uint8_t CursorY() const;
    // Frames in which names were sent for the last move.
    size_t Frames() const { return frames_; }
    // The screen's 960 tiles.
    const std::string& Tiles() const { return screen_; }

  private:
    void Redraw(size_t oldPage);
    size_t RowAddress(size_t row) const;
    void Put(size_t address, const std::string& text);

    BuildSettings settings_;
    // PPU addresses of the first name, and of the page number if it has one digit.
    size_t item_ = 0x20C6;
    size_t pageNumber_ = 0x236E;
    std::vector<std::string> names_;  // as the tables hold them
    std::string screen_ = std::string(960, '\0');
    size_t page_ = 0;
    size_t selected_ = 0;
    size_t frames_ = 0;
};

}  // namespace bw::console
