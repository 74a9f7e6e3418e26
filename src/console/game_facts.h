// What is known of a game before it runs: by its image, or by the cart's bytes.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "console/cart_check.h"

namespace bw {

struct GameFacts {
    bool byImage = false;  // else by the cart
    // Those that the registers may stand for. One by an image.
    std::vector<uint16_t> mappers{};
    bool vertical = false;
    bool fourScreen = false;
    // By the cart: no build puts a game there. It begins at no multiple of its length, or lies
    // partly over the menu or another game. Of two that overlap either may be the wrong one.
    bool misplaced = false;
    bool overlaps = false;
    std::vector<uint8_t> lastPrg{};  // the last 8 KB
    std::vector<uint8_t> chr{};      // CHR ROM; empty: the game has CHR RAM

    std::array<uint8_t, 6> Vectors() const;
    uint16_t ResetVector() const;
    bool Is(uint16_t mapper) const { return mappers.front() == mapper; }
    // The last 8 KB are at $E000 whatever the game does.
    bool HasFixedBank() const;
    // Its pattern memory can't be written to.
    bool HasFixedTiles() const;
    // No console could start what lies there.
    bool HasNoProgram() const;
};

GameFacts FactsOf(const CheckSubject& subject, uint32_t index);

}  // namespace bw
