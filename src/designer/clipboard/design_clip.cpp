#include "designer/clipboard/design_clip.h"

#include <algorithm>
#include <bitset>
#include <iterator>
#include <limits>
#include <optional>
#include <span>
#include <utility>

#include "designer/model/attribute_table.h"
#include "designer/model/tiles.h"
#include "designer/tools/list_tools.h"
#include "designer/tools/selection_tools.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr PatternTable kBkg = PatternTable::kBackground;
constexpr PatternTable kSprites = PatternTable::kSprites;
constexpr size_t kCells = size_t{kScreenColumns} * kScreenRows;

bool IsCell(int64_t x, int64_t y) {
    return x >= 0 && x < kScreenColumns && y >= 0 && y < kScreenRows;
}

// As the drag of a sprite has it.
bool IsSpritePlace(int64_t x, int64_t y) {
    return x >= 0 && x <= kLastSpriteX && y >= 0 && y < kLastSpriteY;
}

size_t CellOf(const TileItem& item) {
    return static_cast<size_t>(item.Y) * kScreenColumns + static_cast<size_t>(item.X);
}

TileItem Plain(TileItem item) {
    item.Index = 0;
    item.Selected = 0;
    return item;
}

PatternTable ActiveSide(const WorkingCopy& copy) {
    return copy.SpritePaletteActive ? kSprites : kBkg;
}

// Tall sprites take the sprite table's tiles in pairs.
bool InPairs(const WorkingCopy& copy, PatternTable table) {
    return table == kSprites && copy.Store().BigSprite != 0;
}

void CopyTile(const WorkingCopy& copy, PatternTable table, int number, ClipTiles& tiles) {
    std::ranges::copy(TileAt(copy.Store(), table, number),
                      tiles[static_cast<uint8_t>(number)].begin());
}

ClipTiles SelectedTiles(const WorkingCopy& copy, PatternTable table) {
    ClipTiles tiles;
    for (int number = 0; number < kTileCount; ++number)
        if (TileMarks(copy.Store(), table)[static_cast<size_t>(number)] != 0) {
            CopyTile(copy, table, number, tiles);
        }
    return tiles;
}

// The topmost one of each cell of the screen.
std::vector<TileItem> ItemsOnScreen(std::span<const TileItem> items) {
    std::vector<TileItem> topmost;
    std::bitset<kCells> taken;
    for (size_t i = items.size(); i-- > 0;) {
        const TileItem& item = items[i];
        if (!IsCell(item.X, item.Y) || taken[CellOf(item)]) continue;
        taken.set(CellOf(item));
        topmost.push_back(Plain(item));
    }
    std::ranges::reverse(topmost);
    return topmost;
}

std::vector<TileItem> SpritesOnScreen(std::span<const TileItem> sprites) {
    std::vector<TileItem> first;
    for (const TileItem& sprite : sprites) {
        if (IsSpritePlace(sprite.X, sprite.Y) && first.size() < kMostSprites) {
            first.push_back(Plain(sprite));
        }
    }
    return first;
}

std::vector<TileItem> Selected(const std::vector<TileItem>& items) {
    std::vector<TileItem> selected;
    std::ranges::copy_if(items, std::back_inserter(selected), &TileItem::IsSelected);
    return selected;
}

Pos TopLeft(const std::vector<TileItem>& items) {
    constexpr int32_t kFar = std::numeric_limits<int32_t>::max();
    Pos corner{kFar, kFar};
    for (const TileItem& item : items)
        corner = {std::min(corner.X, item.X), std::min(corner.Y, item.Y)};
    return corner;
}

// The current place may stand up to two rows below the screen, in a damaged state anywhere.
Pos CurrentCell(const WorkingCopy& copy) {
    return {std::clamp(copy.NameCellPos.X, 0, kScreenColumns - 1),
            std::clamp(copy.NameCellPos.Y, 0, kScreenRows - 1)};
}

// One paste: it lives no longer than that.
class Paster {
  public:
    Paster(WorkingCopy& copy, const DesignClip& clip) : copy_(copy), clip_(clip) {}

    Pasted Paste();

  private:
    void PasteTiles(PatternTable table, const ClipTiles& tiles);
    void PasteItems();
    void ColourCells(const std::array<std::optional<int>, kCells>& palettes);
    void PasteSprites();
    Pos PlaceOfSprites() const;
    bool IsTaken(Pos shift) const;
    bool StayOnScreen(Pos shift) const;

    WorkingCopy& copy_;
    const DesignClip& clip_;
    Pos shift_;  // of the items, cells
    Pasted result_;
};

Pasted Paster::Paste() {
    result_.stale = DeselectAll(copy_);
    const bool both = !clip_.bkgTiles.empty() && !clip_.spriteTiles.empty();
    PasteTiles(both ? kBkg : ActiveSide(copy_), clip_.bkgTiles);
    PasteTiles(both ? kSprites : ActiveSide(copy_), clip_.spriteTiles);
    PasteItems();
    PasteSprites();
    return result_;
}

void Paster::PasteTiles(PatternTable table, const ClipTiles& tiles) {
    if (tiles.empty()) return;
    const int mask = InPairs(copy_, table) ? 0xFE : 0xFF;
    const int start = CurrentTile(copy_, table) & mask;
    const int first = tiles.begin()->first & mask;
    for (const auto& [number, pixels] : tiles) {
        const int to = start + number - first;
        if (to >= kTileCount) {
            ++result_.lost.tiles;
            continue;
        }
        std::ranges::copy(pixels, TileAt(copy_.Store(), table, to).begin());
        TileMarks(copy_.Store(), table)[static_cast<size_t>(to)] = 1;
        ++result_.placed.tiles;
    }
    result_.stale |= TableViews(table);
}

void Paster::PasteItems() {
    if (clip_.items.empty()) return;
    const Pos corner = TopLeft(clip_.items);
    const Pos cell = CurrentCell(copy_);
    shift_ = {cell.X - corner.X, cell.Y - corner.Y};
    std::array<std::optional<int>, kCells> palettes;
    for (TileItem item : clip_.items) {
        item.X += shift_.X;
        item.Y += shift_.Y;
        if (!IsCell(item.X, item.Y)) {
            ++result_.lost.items;
            continue;
        }
        palettes[CellOf(item)] = item.Palette & 3;
        item.Index = copy_.nextBkgIndex++;
        item.Selected = TileItem::kSelected;
        copy_.Store().BkgTileList.push_back(item);
        ++result_.placed.items;
    }
    ColourCells(palettes);
}

void Paster::ColourCells(const std::array<std::optional<int>, kCells>& palettes) {
    auto& attributes = copy_.Store().Attributes;
    const auto before = attributes;
    for (int32_t row = 0; row < kScreenRows; row += 2)
        for (int32_t column = 0; column < kScreenColumns; column += 2) {
            const auto at = [&](int32_t x, int32_t y) {
                return palettes[static_cast<size_t>((row + y) * kScreenColumns + column + x)];
            };
            const std::optional<int> palette = at(0, 0);
            if (!palette || at(1, 0) != palette || at(0, 1) != palette || at(1, 1) != palette) {
                continue;
            }
            uint8_t& byte = attributes[static_cast<size_t>(row / 4 * 8 + column / 4)];
            byte = WithQuadrantPalette(byte, {column / 2, row / 2}, *palette);
        }
    if (attributes != before) result_.stale |= SynchroniseCursors(copy_);
    // A placed tile bears the sub-palette that it was placed in.
    std::vector<TileItem>& items = copy_.Store().BkgTileList;
    for (TileItem& item : std::span(items).last(result_.placed.items))
        item.Palette = static_cast<uint8_t>(AttributePalette(attributes, item.X, item.Y));
}

bool Paster::IsTaken(Pos shift) const {
    return std::ranges::any_of(clip_.sprites, [&](const TileItem& pasted) {
        return std::ranges::any_of(copy_.Store().SpriteTileList, [&](const TileItem& there) {
            return there.X == pasted.X + shift.X && there.Y == pasted.Y + shift.Y;
        });
    });
}

bool Paster::StayOnScreen(Pos shift) const {
    return std::ranges::all_of(clip_.sprites, [&](const TileItem& sprite) {
        return IsSpritePlace(sprite.X + shift.X, sprite.Y + shift.Y);
    });
}

Pos Paster::PlaceOfSprites() const {
    if (!clip_.items.empty()) return {shift_.X * kTilePixels, shift_.Y * kTilePixels};
    constexpr int32_t kBeside = 4;  // pixels
    const Pos corner = TopLeft(clip_.sprites);
    const Pos cell = CurrentCell(copy_);
    // A sprite shows a line below its Y byte.
    Pos shift{cell.X * kTilePixels - corner.X,
              std::max(cell.Y * kTilePixels - 1, kFirstSpriteY) - corner.Y};
    while (IsTaken(shift)) {
        const Pos next{shift.X + kBeside, shift.Y + kBeside};
        if (!StayOnScreen(next)) break;
        shift = next;
    }
    return shift;
}

void Paster::PasteSprites() {
    if (clip_.sprites.empty()) return;
    const Pos shift = PlaceOfSprites();
    std::vector<TileItem>& sprites = copy_.Store().SpriteTileList;
    for (TileItem sprite : clip_.sprites) {
        sprite.X += shift.X;
        sprite.Y += shift.Y;
        if (!IsSpritePlace(sprite.X, sprite.Y) || sprites.size() >= kMostSprites) {
            ++result_.lost.sprites;
            continue;
        }
        sprite.Index = copy_.nextSpriteIndex++;
        sprite.Selected = TileItem::kSelected;
        sprites.push_back(sprite);
        ++result_.placed.sprites;
    }
}

}  // namespace

bool DesignClip::Empty() const {
    return CountsOf(*this).All() == 0;
}

ClipCounts CountsOf(const DesignClip& clip) {
    return {clip.bkgTiles.size() + clip.spriteTiles.size(), clip.items.size(), clip.sprites.size()};
}

std::u16string CountsText(const ClipCounts& counts, Language language) {
    std::u16string text;
    for (const auto& [id, count] : {std::pair{TextId::kClipTiles, counts.tiles},
                                    {TextId::kClipItems, counts.items},
                                    {TextId::kClipSprites, counts.sprites}}) {
        if (count == 0) continue;
        if (!text.empty()) text += LoadText(TextId::kPointerComma, language);
        text += FormatText(LoadText(id, language), count);
    }
    return text;
}

DesignClip ClipOfSelection(const WorkingCopy& copy) {
    const DesignStore& store = copy.Store();
    DesignClip clip{.bkgTiles = SelectedTiles(copy, kBkg),
                    .spriteTiles = SelectedTiles(copy, kSprites),
                    .items = ItemsOnScreen(Selected(store.BkgTileList)),
                    .sprites = SpritesOnScreen(Selected(store.SpriteTileList))};
    for (TileItem& item : clip.items)
        item.Palette = static_cast<uint8_t>(AttributePalette(store.Attributes, item.X, item.Y));
    if (!clip.Empty()) return clip;
    const PatternTable side = ActiveSide(copy);
    const int tile = CurrentTile(copy, side);
    ClipTiles& tiles = side == kBkg ? clip.bkgTiles : clip.spriteTiles;
    CopyTile(copy, side, tile, tiles);
    if (InPairs(copy, side)) CopyTile(copy, side, tile ^ 1, tiles);
    return clip;
}

void KeepRules(DesignClip& clip) {
    clip.items = ItemsOnScreen(clip.items);
    clip.sprites = SpritesOnScreen(clip.sprites);
}

Pasted PasteClip(WorkingCopy& copy, const DesignClip& clip) {
    return Paster(copy, clip).Paste();
}

}  // namespace bw
