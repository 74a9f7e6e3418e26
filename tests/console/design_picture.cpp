#include "design_picture.h"

#include <algorithm>

namespace bw::console {
namespace {

constexpr size_t kTileSize = 16;
constexpr size_t kTableSize = 4096;
constexpr size_t kMostOnLine = 8;
constexpr size_t kLargeCursor = 4;
constexpr uint8_t kBehind = 0x20;
constexpr uint8_t kFlipX = 0x40;
constexpr uint8_t kFlipY = 0x80;

// 0 to 3: the colour of one pixel of a tile, before palettes.
uint8_t TilePixel(const DesignStore& store, size_t table, size_t tile, size_t x, size_t y) {
    const size_t at = table * kTableSize + tile * kTileSize + y;
    const auto bit = [&](uint8_t plane) { return plane >> (7 - x) & 1; };
    return static_cast<uint8_t>(bit(store.ChrData[at]) + 2 * bit(store.ChrData[at + 8]));
}

size_t SpriteHeight(const DesignStore& store) {
    return store.BigSprite != 0 ? 16 : 8;
}

// A tall sprite's tile number names its pattern table in bit 0 and an even tile, the upper half.
uint8_t SpritePixel(const DesignStore& store, const Sprite& sprite, size_t x, size_t y) {
    if ((sprite[2] & kFlipX) != 0) x = 7 - x;
    if ((sprite[2] & kFlipY) != 0) y = SpriteHeight(store) - 1 - y;
    if (store.BigSprite == 0) return TilePixel(store, 1, sprite[1], x, y);
    return TilePixel(store, sprite[1] & 1, (sprite[1] & 0xFE) + y / 8, x, y % 8);
}

size_t BackgroundPalette(const DesignStore& store, size_t column, size_t row) {
    const uint8_t block = store.Attributes[row / 4 * 8 + column / 4];
    return block >> (row % 4 / 2 * 4 + column % 4 / 2 * 2) & 3;
}

void DrawLine(const DesignStore& store, const MenuModel::Screen& tiles, size_t line,
              std::span<uint8_t, kPictureWidth> pixels, std::span<uint8_t, kPictureWidth> colours) {
    for (size_t x = 0; x < kPictureWidth; ++x) {
        const size_t column = x / 8;
        const size_t row = line / 8;
        pixels[x] = TilePixel(store, 0, tiles[row * 32 + column], x % 8, line % 8);
        // The sprites' palette is sent last, and its first entry is the background's too.
        colours[x] = pixels[x] == 0
                         ? store.SpritePalette[0]
                         : store.BkgPalette[BackgroundPalette(store, column, row) * 4 + pixels[x]];
    }
}

}  // namespace

Sprite ShownSprite(const TileItem& item, int32_t y) {
    return {static_cast<uint8_t>(y), item.Tile, SpriteAttribute(item),
            static_cast<uint8_t>(item.X)};
}

std::vector<Sprite> SpritesFrom(std::string_view page, size_t first) {
    std::vector<Sprite> sprites(kSprites);
    for (size_t i = 0; i < kSprites; ++i) {
        const size_t from = (first + i) % kSprites * 4;
        std::copy_n(page.begin() + static_cast<std::ptrdiff_t>(from), 4, sprites[i].begin());
    }
    return sprites;
}

MenuModel::Screen DesignBackground(const DesignDocument& design) {
    const DesignStore& store = design.store;
    MenuModel::Screen screen{};
    const auto put = [&](int32_t x, int32_t y, uint8_t tile) {
        if (x < 0 || x >= kScreenColumns || y < 0 || y >= kScreenRows) return;
        screen[static_cast<size_t>(y) * kScreenColumns + static_cast<size_t>(x)] = tile;
    };
    for (const TileItem& item : store.BkgTileList) {
        put(item.X, item.Y, item.Tile);
    }
    for (const TextItem& item : store.CustomText) {
        int32_t x = item.X;
        for (const char16_t character : item.Text) {
            if (character != u' ') put(x, item.Y, store.CharMapData[character & 0xFF]);
            ++x;
        }
    }
    return screen;
}

MenuLook DesignLook(const DesignDocument& design) {
    const auto place = [](const Pos& at) {
        return static_cast<uint16_t>(0x2000 + at.Y * kScreenColumns + at.X);
    };
    const std::u16string& caption = design.store.CaptionText;
    return {.item = place(design.ItemPos),
            .title = place(design.CaptionPos),
            .page = place(design.PageNumberPos),
            .centrePage = false,
            .titleText = std::string(caption.begin(), caption.end())};
}

std::vector<Sprite> DesignSprites(const DesignDocument& design, size_t row, size_t rowHeight) {
    const DesignStore& store = design.store;
    const auto down = static_cast<int32_t>(row * rowHeight);
    std::vector<Sprite> sprites;
    for (const TileItem& item : store.SpriteTileList) {
        sprites.push_back(item.Y == 0 ? kHiddenSprite : ShownSprite(item, item.Y));
    }
    if (design.BigCursor == 0) {
        sprites.resize(std::min(sprites.size(), kSprites - 1));
        sprites.push_back(ShownSprite(store.ArrowTile, store.ArrowTile.Y - 1 + down));
    } else {
        sprites.resize(std::min(sprites.size(), kSprites - kLargeCursor));
        for (const TileItem& item : std::span(store.ArrowTileList).first(kLargeCursor)) {
            if (item.Tile != 0) sprites.push_back(ShownSprite(item, item.Y + down));
        }
    }
    sprites.resize(kSprites, kHiddenSprite);
    return sprites;
}

std::vector<size_t> SpritesOnLine(const DesignDocument& design, std::span<const Sprite> sprites,
                                  size_t line) {
    std::vector<size_t> found;
    for (size_t i = 0; i < sprites.size() && found.size() < kMostOnLine; ++i) {
        const size_t top = size_t{sprites[i][0]} + 1;  // a sprite shows one line below its Y
        if (line >= top && line < top + SpriteHeight(design.store)) found.push_back(i);
    }
    return found;
}

Picture DrawDesign(const DesignDocument& design, const MenuModel::Screen& tiles,
                   std::span<const Sprite> sprites) {
    const DesignStore& store = design.store;
    Picture picture;
    for (size_t line = 0; line < kPictureHeight; ++line) {
        std::array<uint8_t, kPictureWidth> pixels{};
        std::array<uint8_t, kPictureWidth> colours{};
        DrawLine(store, tiles, line, pixels, colours);
        std::array<bool, kPictureWidth> taken{};
        for (const size_t number : SpritesOnLine(design, sprites, line)) {
            const Sprite& sprite = sprites[number];
            for (size_t i = 0; i < 8 && sprite[3] + i < kPictureWidth; ++i) {
                const size_t x = sprite[3] + i;
                const uint8_t pixel = SpritePixel(store, sprite, i, line - sprite[0] - 1);
                // The foremost sprite decides, also where it hides behind the background.
                if (pixel == 0 || taken[x]) continue;
                taken[x] = true;
                if ((sprite[2] & kBehind) != 0 && pixels[x] != 0) continue;
                colours[x] = store.SpritePalette[(sprite[2] & 3) * size_t{4} + pixel];
            }
        }
        picture.append(colours.begin(), colours.end());
    }
    return picture;
}

}  // namespace bw::console
