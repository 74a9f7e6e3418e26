// Which of the designer's pictures a change has made out of date.
#pragma once

#include <cstdint>

namespace bw {

enum class View : uint32_t {
    kBkgTiles = 1u << 0,     // the tile image's background half, all sub-palettes
    kSpriteTiles = 1u << 1,  // its sprite half
    kNameTable = 1u << 2,
    kBkgTileList = 1u << 3,
    kSpriteTileList = 1u << 4,
    kBkgTileEditor = 1u << 5,
    kSpriteTileEditor = 1u << 6,
    kAttribute = 1u << 7,
    kBkgPalette = 1u << 8,
    kSpritePalette = 1u << 9,
    kSystemPalette = 1u << 10,
    kTargetStrip = 1u << 11,
    kSourceStrip = 1u << 12,
    // What a window shows in controls of its own.
    kCheckBoxes = 1u << 13,  // switches, and the flags of the selected sprites
    kCaptionBox = 1u << 14,  // WorkingCopy::captionBox
};

// A set of views.
class Views {
  public:
    constexpr Views() = default;
    constexpr Views(View view) : bits_(static_cast<uint32_t>(view)) {}  // NOLINT: a view is a set
    static constexpr Views All() {
        Views all;
        all.bits_ = ~0u;
        return all;
    }

    constexpr bool Has(View view) const { return (bits_ & static_cast<uint32_t>(view)) != 0; }
    constexpr Views Without(View view) const {
        Views rest = *this;
        rest.bits_ &= ~static_cast<uint32_t>(view);
        return rest;
    }
    constexpr bool Empty() const { return bits_ == 0; }
    constexpr Views& operator|=(Views other) {
        bits_ |= other.bits_;
        return *this;
    }
    friend constexpr Views operator|(Views a, Views b) { return a |= b; }
    bool operator==(const Views&) const = default;

  private:
    uint32_t bits_ = 0;
};

constexpr Views operator|(View a, View b) {
    return Views(a) | Views(b);
}

}  // namespace bw
