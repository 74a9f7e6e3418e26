#include "designer/gestures/pointer_place.h"

#include <algorithm>
#include <string_view>

#include "designer/gestures/gesture_places.h"
#include "designer/model/attribute_table.h"
#include "designer/model/tiles.h"
#include "designer/tools/pointer_edits.h"

namespace bw {
namespace {

constexpr PatternTable kBkg = PatternTable::kBackground;
constexpr PatternTable kSprites = PatternTable::kSprites;

// The console's video memory ("PPU memory map" of the NESdev wiki).
constexpr int kSpriteTable = 0x1000;
constexpr int kNameTableStart = 0x2000;
constexpr int kAttributesStart = 0x23C0;
constexpr int kPalettesStart = 0x3F00;
constexpr int kSpritePalettesStart = 0x3F10;

uint16_t Address(int start, int offset) {
    return static_cast<uint16_t>(start + offset);
}

uint16_t TileAddress(PatternTable table, int tile, int row = 0) {
    return Address(table == kSprites ? kSpriteTable : 0, tile * static_cast<int>(kTileBytes) + row);
}

uint8_t ColourOf(const DesignStore& store, PatternTable table, int palette, int index) {
    // Entry 0 shows the backdrop.
    if (index == 0) return store.SpritePalette[0];
    const auto& entries = table == kBkg ? store.BkgPalette : store.SpritePalette;
    return entries[static_cast<size_t>(palette * 4 + index)];
}

// The character that a text has in a cell. Blanks let through what lies below.
std::optional<char16_t> CharacterAt(std::u16string_view text, Pos start, int64_t below, Pos cell) {
    const int64_t column = int64_t{cell.X} - start.X;
    if (start.Y + below != cell.Y || column < 0 || column >= std::ssize(text)) return std::nullopt;
    const char16_t character = text[static_cast<size_t>(column)];
    if (character == u' ' || character >= kCharMapSize) return std::nullopt;
    return character;
}

// The uppermost of the texts in a cell, in the order in which the screen's picture lays them.
std::optional<ScreenCharacter> CharacterOnScreen(const WorkingCopy& copy, Pos cell) {
    const DesignDocument& document = copy.document;
    const auto found = [&](ScreenText of, std::u16string_view text, Pos start, int64_t below = 0) {
        const auto character = CharacterAt(text, start, below, cell);
        return character ? std::optional(ScreenCharacter{*character, of}) : std::nullopt;
    };
    std::optional<ScreenCharacter> character;
    if (copy.Show_Caption) {
        character = found(ScreenText::kCaption, copy.Store().CaptionText, document.CaptionPos);
    }
    if (!character && copy.ShowPageNumber) {
        character = found(ScreenText::kPageNumber, copy.PageNumberText, document.PageNumberPos);
    }
    for (size_t line = 0; copy.Show_List && !character && line < copy.ItemTextList.size(); ++line) {
        character = found(ScreenText::kList, copy.ItemTextList[line], document.ItemPos,
                          static_cast<int64_t>(line));
    }
    if (!copy.Show_Custom_Text || character) return character;
    if (copy.PlacedText) {
        character = found(ScreenText::kPlacedText, copy.PlacedText->Text,
                          {copy.PlacedText->X, copy.PlacedText->Y});
    }
    const std::vector<TextItem>& texts = copy.Store().CustomText;
    for (size_t i = texts.size(); !character && i-- > 0;)
        character = found(ScreenText::kPlacedText, texts[i].Text, {texts[i].X, texts[i].Y});
    return character;
}

std::optional<uint8_t> PlacedTile(const WorkingCopy& copy, Pos cell) {
    if (!copy.Show_Bg_Tile) return std::nullopt;
    const std::vector<TileItem>& items = copy.Store().BkgTileList;
    const auto item = std::find_if(items.rbegin(), items.rend(), [&](const TileItem& placed) {
        return Pos{placed.X, placed.Y} == cell;
    });
    return item == items.rend() ? std::nullopt : std::optional(item->Tile);
}

// The colour index of a sprite at a pixel from the corner of its picture.
int SpritePixel(const DesignStore& store, const TileItem& sprite, Pos pixel) {
    const bool tall = store.BigSprite != 0;
    const int height = tall ? 2 * kTilePixels : kTilePixels;
    if ((sprite.Flags & TileItem::kFlipHorizontally) != 0) pixel.X = kTilePixels - 1 - pixel.X;
    if ((sprite.Flags & TileItem::kFlipVertically) != 0) pixel.Y = height - 1 - pixel.Y;
    const PatternTable table = tall && sprite.Tile % 2 == 0 ? kBkg : kSprites;
    const int tile = tall ? (sprite.Tile & 0xFE) + pixel.Y / kTilePixels : sprite.Tile;
    return PixelOf(TileAt(store, table, tile), {pixel.X, pixel.Y % kTilePixels});
}

bool CursorAt(const WorkingCopy& copy, Point inScreen) {
    if (!copy.Show_Cursor) return false;
    const DesignStore& store = copy.Store();
    const auto holds = [&](const TileItem& item) {
        return CursorRect(item, store.BigSprite != 0).Holds(inScreen);
    };
    return copy.document.BigCursor != 0 ? std::ranges::any_of(store.ArrowTileList, holds)
                                        : holds(store.ArrowTile);
}

// Tile, characters, sprite and cursor of the screen, and the colour of the pixel below the cursor.
void DescribeScreen(const WorkingCopy& copy, Point inScreen, PointerPlace& place) {
    const DesignStore& store = copy.Store();
    const auto [column, row] = place.cell;
    const int palette = AttributePalette(store.Attributes, column, row);
    place.address = Address(kNameTableStart, row * kScreenColumns + column);
    place.attributes = Address(kAttributesStart, row / 4 * 8 + column / 4);
    place.palette = palette;
    place.written = CharacterOnScreen(copy, place.cell);
    place.tile =
        place.written ? store.CharMapData[place.written->character] : PlacedTile(copy, place.cell);
    place.cursor = CursorAt(copy, inScreen);

    const Pos pixel{inScreen.x / kScreenScale, inScreen.y / kScreenScale};
    const int index =
        place.tile ? PixelOf(TileAt(store, kBkg, *place.tile), {pixel.X % 8, pixel.Y % 8}) : 0;
    place.colour = ColourOf(store, kBkg, palette, index);
    const std::vector<TileItem>& sprites = store.SpriteTileList;
    for (size_t i = sprites.size(); copy.Show_Sp_Tile && i-- > 0;) {
        const ScreenRect rect = SpriteRect(sprites[i], store.BigSprite != 0);
        if (!rect.Holds(inScreen)) continue;
        if (!place.sprite) place.sprite = i;
        const Point inside = rect.From(inScreen);
        const int drawn =
            SpritePixel(store, sprites[i], {inside.x / kScreenScale, inside.y / kScreenScale});
        const bool behind = (sprites[i].Flags & TileItem::kBehindBackground) != 0;
        if (drawn == 0 || (behind && index != 0)) continue;
        place.colour = ColourOf(store, kSprites, sprites[i].Palette & 3, drawn);
        return;
    }
}

void DescribeTile(const WorkingCopy& copy, PatternTable table, PointerPlace& place) {
    place.tile = TileNumber(place.cell);
    place.address = TileAddress(table, *place.tile);
    place.palette = CurrentPalette(copy, table);
}

void DescribePixel(const WorkingCopy& copy, PatternTable table, PointerPlace& place) {
    place.tile = static_cast<uint8_t>(CurrentTile(copy, table));
    place.address = TileAddress(table, *place.tile, place.cell.Y);
    place.palette = CurrentPalette(copy, table);
    place.index = PixelOf(TileAt(copy.Store(), table, *place.tile), place.cell);
    place.colour = ColourOf(copy.Store(), table, *place.palette, *place.index);
}

void DescribeCharacter(const WorkingCopy& copy, PointerPlace& place) {
    const int code = place.cell.X + kFirstStripCode;
    place.character = static_cast<char16_t>(code);
    // The font has a tile of each code.
    place.tile = place.view == Control::kTargetStrip
                     ? static_cast<uint8_t>(code)
                     : copy.Store().CharMapData[static_cast<size_t>(code)];
    if (place.view == Control::kSourceStrip) place.address = TileAddress(kBkg, *place.tile);
}

void DescribeEntry(const DesignStore& store, PatternTable table, PointerPlace& place) {
    const auto entry = static_cast<size_t>(place.cell.X);
    place.address = Address(table == kBkg ? kPalettesStart : kSpritePalettesStart, place.cell.X);
    place.palette = place.cell.X / 4;
    place.colour = table == kBkg ? store.BkgPalette[entry] : store.SpritePalette[entry];
}

void Describe(const WorkingCopy& copy, Point inside, PointerPlace& place) {
    switch (place.view) {
        case Control::kNameTable:
            return DescribeScreen(copy, inside, place);
        case Control::kBkgTileList:
            return DescribeTile(copy, kBkg, place);
        case Control::kSpriteTileList:
            return DescribeTile(copy, kSprites, place);
        case Control::kBkgTileEditor:
            return DescribePixel(copy, kBkg, place);
        case Control::kSpriteTileEditor:
            return DescribePixel(copy, kSprites, place);
        case Control::kTargetStrip:
        case Control::kSourceStrip:
            return DescribeCharacter(copy, place);
        case Control::kAttribute:
            place.attributes =
                Address(kAttributesStart, copy.AttrBytePos.Y * 8 + copy.AttrBytePos.X);
            place.palette = QuadrantPalette(copy.CurrentAttribute, place.cell);
            return;
        case Control::kBkgPalette:
            return DescribeEntry(copy.Store(), kBkg, place);
        case Control::kSpritePalette:
            return DescribeEntry(copy.Store(), kSprites, place);
        case Control::kSystemPalette:
            place.colour = static_cast<uint8_t>(place.cell.Y * 16 + place.cell.X);
    }
}

}  // namespace

std::optional<PointerPlace> PlaceUnder(const WorkingCopy& copy, const DesignerLayout& layout,
                                       Point at) {
    for (size_t i = 0; i < kControlCount; ++i) {
        const auto view = static_cast<Control>(i);
        const auto hit = layout.CellAt(view, at);
        if (!hit) continue;
        PointerPlace place;
        place.view = view;
        place.cell = hit->cell;
        Describe(copy, layout.Relative(view, at), place);
        return place;
    }
    return std::nullopt;
}

}  // namespace bw
