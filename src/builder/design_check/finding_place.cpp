#include "builder/design_check/finding_place.h"

#include <algorithm>

#include "builder/design_check/console_sprites.h"
#include "builder/design_check/menu_screen.h"
#include "designer/gestures/gesture_items.h"
#include "designer/gestures/gesture_places.h"
#include "designer/pictures/small_views.h"
#include "designer/tools/pointer_edits.h"
#include "designer/tools/selection_tools.h"

namespace bw {
namespace {

template <typename... Cases>
struct Overloaded : Cases... {
    using Cases::operator()...;
};

// The part of the screen's picture, moved and cut into it.
ViewPart OnScreen(const ScreenRect& rect) {
    const auto inside = [](int64_t at, int64_t length, int64_t size) {
        const int64_t from = std::clamp<int64_t>(at, 0, size - kNameCell);
        const int64_t end = std::clamp<int64_t>(at + length, from + kNameCell, size);
        return std::pair(static_cast<int>(from), static_cast<int>(end - from));
    };
    const auto [left, width] = inside(rect.left, rect.width, kNameTableWidth);
    const auto [top, height] = inside(rect.top, rect.height, kNameTableHeight);
    return {Control::kNameTable, {{left, top}, width, height}};
}

ViewPart ListCell(Control view, int column, int row) {
    return {view, {{column * kListCell, row * kListCell}, kListCell, kListCell}};
}

ViewPart ObjectPart(const WorkingCopy& copy, ScreenObject object) {
    const DesignDocument& document = copy.document;
    switch (object) {
        case ScreenObject::kCaption:
            return OnScreen(TextRect(document.CaptionPos, copy.Store().CaptionText));
        case ScreenObject::kPageNumber:
            return OnScreen(TextRect(document.PageNumberPos, copy.PageNumberText));
        case ScreenObject::kList: {
            ScreenRect rect = TextRect(document.ItemPos, {});
            for (const std::u16string& line : copy.ItemTextList)
                rect.width = std::max(rect.width, static_cast<int64_t>(line.size()) * kNameCell);
            rect.height = static_cast<int64_t>(copy.ItemTextList.size()) * kNameCell;
            return OnScreen(rect);
        }
        case ScreenObject::kCursor:
            break;
    }
    const std::span<const TileItem> parts = CursorTiles(document);
    if (parts.empty()) return OnScreen({});
    ScreenRect rect = CursorRect(parts.front(), copy.Store().BigSprite != 0);
    if (document.BigCursor != 0) {
        rect.width *= 2;
        rect.height *= 2;
    }
    return OnScreen(rect);
}

Views Show(bool& layer) {
    if (layer) return {};
    layer = true;
    return View::kNameTable | View::kCheckBoxes;
}

Views GoToCell(WorkingCopy& copy, Pos cell) {
    const Pos inside{std::clamp(cell.X, 0, kScreenColumns - 1),
                     std::clamp(cell.Y, 0, kScreenRows - 1)};
    copy.NameCellPos = inside;
    return View::kNameTable | SetAttributeCell(copy, {inside.X / 2, inside.Y / 2}, false);
}

Views GoToObject(WorkingCopy& copy, ScreenObject object) {
    const DesignDocument& document = copy.document;
    switch (object) {
        case ScreenObject::kCaption:
            return Show(copy.Show_Caption) | GoToCell(copy, document.CaptionPos);
        case ScreenObject::kPageNumber:
            return GoToCell(copy, document.PageNumberPos);
        case ScreenObject::kList:
            return Show(copy.Show_List) | GoToCell(copy, document.ItemPos);
        case ScreenObject::kCursor:
            break;
    }
    const std::span<const TileItem> parts = CursorTiles(document);
    return Show(copy.Show_Cursor) |
           (parts.empty() ? Views() : SetCurrentCursor(copy, parts.front()));
}

Views GoToSprite(WorkingCopy& copy, size_t index) {
    std::vector<TileItem>& sprites = copy.Store().SpriteTileList;
    if (index >= sprites.size()) return {};
    DeselectItems(copy.Store());
    TileItem& sprite = sprites[index];
    sprite.Selected = TileItem::kSelected;
    return Show(copy.Show_Sp_Tile) | View::kNameTable | View::kCheckBoxes |
           SetCurrentTile(copy, PatternTable::kSprites, TilePlace(sprite.Tile));
}

Views GoToEntry(WorkingCopy& copy, const PaletteEntry& place) {
    const bool background = place.side == PatternTable::kBackground;
    const uint8_t colour =
        (background ? copy.Store().BkgPalette : copy.Store().SpritePalette)[place.entry] & 0x3F;
    copy.SystemPalettePos = {colour & 15, colour >> 4};
    return View::kSystemPalette | SetCurrentEntry(copy, place.side, place.entry) |
           ActivatePalette(copy, place.side);
}

}  // namespace

ViewPart WhereShown(const WorkingCopy& copy, const DesignPlace& place) {
    const DesignStore& store = copy.Store();
    const ViewPart beside = OnScreen({});
    return std::visit(
        Overloaded{[&](ScreenObject object) { return ObjectPart(copy, object); },
                   [&](const ScreenCell& cell) {
                       return OnScreen(TextRect({cell.column, cell.row}, u" "));
                   },
                   [&](const TableTile& tile) {
                       const Pos cell = TilePlace(tile.number);
                       return ListCell(TileListOf(tile.table), cell.X, cell.Y);
                   },
                   [&](const PaletteEntry& entry) {
                       return ListCell(entry.side == PatternTable::kBackground
                                           ? Control::kBkgPalette
                                           : Control::kSpritePalette,
                                       entry.entry, 0);
                   },
                   [&](const StripCharacter& character) {
                       return ListCell(Control::kSourceStrip, character.code - kFirstStripCode, 0);
                   },
                   [&](const PlacedSprite& sprite) {
                       if (sprite.index >= store.SpriteTileList.size()) return beside;
                       return OnScreen(
                           SpriteRect(store.SpriteTileList[sprite.index], store.BigSprite != 0));
                   },
                   [&](const PlacedText& text) {
                       if (text.index >= store.CustomText.size()) return beside;
                       const TextItem& item = store.CustomText[text.index];
                       return OnScreen(TextRect({item.X, item.Y}, item.Text));
                   }},
        place);
}

Views GoToPlace(WorkingCopy& copy, const DesignPlace& place) {
    return std::visit(
        Overloaded{[&](ScreenObject object) { return GoToObject(copy, object); },
                   [&](const ScreenCell& cell) {
                       return GoToCell(copy, {cell.column, cell.row});
                   },
                   [&](const TableTile& tile) {
                       return SetCurrentTile(copy, tile.table, TilePlace(tile.number));
                   },
                   [&](const PaletteEntry& entry) { return GoToEntry(copy, entry); },
                   [&](const StripCharacter& character) {
                       return SetSourceCharacter(copy, character.code - kFirstStripCode);
                   },
                   [&](const PlacedSprite& sprite) { return GoToSprite(copy, sprite.index); },
                   [&](const PlacedText& text) {
                       const std::vector<TextItem>& texts = copy.Store().CustomText;
                       if (text.index >= texts.size()) return Views();
                       return Show(copy.Show_Custom_Text) |
                              GoToCell(copy, {texts[text.index].X, texts[text.index].Y});
                   }},
        place);
}

}  // namespace bw
