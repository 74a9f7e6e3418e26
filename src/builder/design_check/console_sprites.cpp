#include "builder/design_check/console_sprites.h"

#include <algorithm>
#include <bit>

#include "builder/tables/design_compile.h"
#include "designer/model/tiles.h"

namespace bw {
namespace {

constexpr uint8_t kFlipV = 0x80;
constexpr uint8_t kFlipH = 0x40;
constexpr uint8_t kBehind = 0x20;

constexpr std::array<uint8_t, 256> kMirrored = [] {
    std::array<uint8_t, 256> mirrored{};
    for (size_t byte = 0; byte < 256; ++byte)
        for (size_t bit = 0; bit < 8; ++bit)
            if ((byte >> bit & 1) != 0) mirrored[byte] |= static_cast<uint8_t>(0x80u >> bit);
    return mirrored;
}();

// Tall sprites name a pair of tiles, and by the lowest bit its table.
ConstTile TileOf(const TileItem& item, const DesignStore& store, int half) {
    if (store.BigSprite == 0) return TileAt(store, PatternTable::kSprites, item.Tile);
    const PatternTable table =
        (item.Tile & 1) != 0 ? PatternTable::kSprites : PatternTable::kBackground;
    return TileAt(store, table, (item.Tile & 0xFE) + half);
}

// `y`: the byte in the console's sprite memory, which shows the sprite one line below.
ConsoleSprite SpriteAt(const TileItem& item, const DesignStore& store, size_t index, uint8_t y) {
    ConsoleSprite sprite{.index = index,
                         .x = static_cast<uint8_t>(item.X),
                         .top = y + 1,
                         .height = store.BigSprite != 0 ? 2 * kTilePixels : kTilePixels,
                         .attribute = SpriteAttribute(item)};
    for (int row = 0; row < sprite.height; ++row) {
        const ConstTile tile = TileOf(item, store, row / kTilePixels);
        const auto from = static_cast<size_t>(row % kTilePixels);
        const int shownRow = (sprite.attribute & kFlipV) != 0 ? sprite.height - 1 - row : row;
        const auto byte = [&](size_t at) {
            return (sprite.attribute & kFlipH) != 0 ? kMirrored[tile[at]] : tile[at];
        };
        sprite.low[static_cast<size_t>(shownRow)] = byte(from);
        sprite.high[static_cast<size_t>(shownRow)] = byte(from + kTilePixels);
    }
    return sprite;
}

uint8_t ColourAt(const ConsoleSprite& sprite, int row, int column, const DesignStore& store) {
    const auto bit = [&](uint8_t byte) { return byte >> (kTilePixels - 1 - column) & 1; };
    const auto at = static_cast<size_t>(row);
    const int entry = (sprite.attribute & 3) * 4 + bit(sprite.low[at]) + 2 * bit(sprite.high[at]);
    return store.SpritePalette[static_cast<size_t>(entry)] & 0x3F;
}

bool IsShown(const ConsoleSprite& sprite) {
    return sprite.top < kScreenHeight;
}

}  // namespace

bool ConsoleSprite::IsBlank() const {
    const auto isZero = [](uint8_t byte) { return byte == 0; };
    return std::ranges::all_of(low, isZero) && std::ranges::all_of(high, isZero);
}

std::vector<ConsoleSprite> ShownSprites(const DesignDocument& document) {
    const DesignStore& store = document.store;
    const size_t room = SpritesShown(document.BigCursor != 0);
    std::vector<ConsoleSprite> sprites;
    size_t built = 0;
    for (size_t i = 0; i < store.SpriteTileList.size() && built < room; ++i) {
        const TileItem& item = store.SpriteTileList[i];
        if (!IsSpriteBuilt(item)) continue;
        ++built;
        sprites.push_back(SpriteAt(item, store, i, static_cast<uint8_t>(item.Y)));
        if (!IsShown(sprites.back())) sprites.pop_back();
    }
    return sprites;
}

std::span<const TileItem> CursorTiles(const DesignDocument& document) {
    if (document.BigCursor == 0) return {&document.store.ArrowTile, 1};
    const std::vector<TileItem>& parts = document.store.ArrowTileList;
    return std::span(parts).first(std::min(parts.size(), kLargeCursorTiles.size()));
}

std::vector<ConsoleSprite> CursorSprites(const DesignDocument& document, int below) {
    const DesignStore& store = document.store;
    std::vector<ConsoleSprite> sprites;
    const auto add = [&](const TileItem& item, size_t index, uint32_t y) {
        const ConsoleSprite sprite = SpriteAt(item, store, index, static_cast<uint8_t>(y));
        if (IsShown(sprite)) sprites.push_back(sprite);
    };
    const auto offset = static_cast<uint32_t>(below);
    if (document.BigCursor == 0) {
        // A build brings the small cursor to the screen, and draws it at its Y and not below.
        TileItem item = store.ArrowTile;
        item.X = std::clamp(item.X, 0, kLastSpriteX);
        item.Y = std::clamp(item.Y, kFirstSpriteY, kLastSpriteY);
        add(item, 0, static_cast<uint32_t>(item.Y) - 1 + offset);
        return sprites;
    }
    // The menu counts the parts with a tile but 0 and shows that many, from the first one on.
    const std::span<const TileItem> parts = CursorTiles(document);
    const auto used = std::ranges::count_if(parts, [](const auto& part) { return part.Tile != 0; });
    for (size_t i = 0; i < static_cast<size_t>(used); ++i)
        if (parts[i].Tile != 0) add(parts[i], i, static_cast<uint32_t>(parts[i].Y) + offset);
    return sprites;
}

bool OrderMatters(const ConsoleSprite& a, const ConsoleSprite& b, const DesignStore& store) {
    const int shift = b.x - a.x;
    if (shift <= -kTilePixels || shift >= kTilePixels) return false;
    const unsigned onScreen = 0xFF00u >> std::min(kTilePixels, kScreenWidth - a.x);
    const int end = std::min({a.End(), b.End(), kScreenHeight});
    for (int line = std::max(a.top, b.top); line < end; ++line) {
        const unsigned other = b.Opaque(line - b.top);
        unsigned both =
            a.Opaque(line - a.top) & onScreen & (shift >= 0 ? other >> shift : other << -shift);
        if (both != 0 && ((a.attribute ^ b.attribute) & kBehind) != 0) return true;
        for (; both != 0; both &= both - 1) {
            const int column = kTilePixels - 1 - std::countr_zero(both);
            if (ColourAt(a, line - a.top, column, store) !=
                ColourAt(b, line - b.top, column - shift, store)) {
                return true;
            }
        }
    }
    return false;
}

std::optional<PixelBox> OpaqueBox(const ConsoleSprite& sprite) {
    unsigned columns = 0;
    PixelBox box{.left = sprite.x, .top = sprite.End(), .right = sprite.x, .bottom = sprite.top};
    for (int row = 0; row < sprite.height; ++row) {
        const unsigned opaque = sprite.Opaque(row);
        if (opaque == 0) continue;
        columns |= opaque;
        box.top = std::min(box.top, sprite.top + row);
        box.bottom = sprite.top + row + 1;
    }
    if (columns == 0) return std::nullopt;
    box.left += std::countl_zero(static_cast<uint8_t>(columns));
    box.right += kTilePixels - std::countr_zero(columns);
    return box;
}

}  // namespace bw
