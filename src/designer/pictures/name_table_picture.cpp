#include "designer/pictures/name_table_picture.h"

#include <algorithm>

#include "designer/model/attribute_table.h"
#include "designer/model/system_palette.h"
#include "designer/pictures/marks.h"

namespace bw {
namespace {

constexpr Colour kCursorMark = 0xFF8080;
constexpr Colour kSelectedCursor = 0x80FF00;

enum class Cover { kTransparent, kOpaque };

// Draws one composition; lives no longer than that.
class Composer {
  public:
    Composer(const WorkingCopy& copy, const TileImage& tiles, Surface& picture, Surface& layer)
        : copy_(copy),
          tiles_(tiles),
          picture_(picture),
          layer_(layer),
          backdrop_(SystemColour(copy.Store().SpritePalette[0])) {}

    void DrawScreen();
    void DrawMarks(const std::optional<RubberBand>& band);

  private:
    void FillAttributes();
    void DrawBackground();
    void DrawTile(Surface& target, uint8_t tile, int column, int row);
    void DrawText(std::u16string_view text, int32_t column, int64_t row);
    void DrawTexts();
    void DrawList();
    void DrawSprites(bool behindBackground);
    void DrawSprite(Surface& target, const TileItem& sprite, Cover cover);
    void DrawSpriteTile(Surface& target, const TileItem& sprite, const SourceRect& tile, int y,
                        Cover cover);
    void DrawTallSprite(Surface& target, const TileItem& sprite, Cover cover);
    void DrawCursor();
    void DrawLargeCursor();
    void DrawScreenGrid();
    void MarkSelection();
    void MarkSelectedCursor();
    void Frame(int64_t left, int64_t top, int64_t width, int64_t height, Colour colour);

    // Transparent copies leave out the backdrop's colour, whichever palette it stands in.
    void CopyLayer() {
        Copy(picture_, {0, 0}, {layer_, {0, 0}, layer_.Width(), layer_.Height()},
             {.transparent = backdrop_});
    }

    const WorkingCopy& copy_;
    const TileImage& tiles_;
    Surface& picture_;
    Surface& layer_;
    Colour backdrop_;
};

bool OnScreen(int64_t column, int64_t row) {
    return column >= 0 && column < kScreenColumns && row >= 0 && row < kScreenRows;
}

void Composer::DrawScreen() {
    picture_.Fill(backdrop_);
    if (copy_.FillColor) FillAttributes();
    if (copy_.Show_Sp_Tile) DrawSprites(true);
    if (copy_.Show_Bg_Tile) DrawBackground();
    if (copy_.Show_Custom_Text) DrawTexts();
    if (copy_.Show_List) DrawList();
    if (copy_.ShowPageNumber) {
        DrawText(copy_.PageNumberText, copy_.document.PageNumberPos.X,
                 copy_.document.PageNumberPos.Y);
    }
    if (copy_.Show_Sp_Tile) DrawSprites(false);
    if (copy_.Show_Caption)
        DrawText(copy_.Store().CaptionText, copy_.document.CaptionPos.X,
                 copy_.document.CaptionPos.Y);
    if (copy_.Show_Cursor) DrawCursor();
}

void Composer::FillAttributes() {
    constexpr int kAttributeCell = 2 * kNameCell;
    for (int row = 0; row < kScreenRows; row += 2) {
        for (int column = 0; column < kScreenColumns; column += 2) {
            const int palette = AttributePalette(copy_.Store().Attributes, column, row);
            const Point corner{column * kNameCell, row * kNameCell};
            FillRect(picture_, corner,
                     {corner.x + kAttributeCell - 1, corner.y + kAttributeCell - 1},
                     SystemColour(copy_.Store().BkgPalette[static_cast<size_t>(palette) * 4 + 1]));
        }
    }
}

void Composer::DrawBackground() {
    // Through a layer, so that a tile takes away what an earlier one left in its cell.
    if (!copy_.FillColor) layer_.Fill(backdrop_);
    Surface& target = copy_.FillColor ? picture_ : layer_;
    for (const TileItem& item : copy_.Store().BkgTileList)
        if (OnScreen(item.X, item.Y)) DrawTile(target, item.Tile, item.X, item.Y);
    if (!copy_.FillColor) CopyLayer();
}

void Composer::DrawTile(Surface& target, uint8_t tile, int column, int row) {
    const int palette = AttributePalette(copy_.Store().Attributes, column, row);
    Copy(target, {column * kNameCell, row * kNameCell}, tiles_.BkgTile(tile, palette),
         {.scale = kScreenScale});
}

// A space leaves what lies below; any other character covers its whole cell. Characters that the
// map has no entry for, 256 and above, can't be in a menu and are left out.
void Composer::DrawText(std::u16string_view text, int32_t column, int64_t row) {
    for (size_t i = 0; i < text.size(); ++i) {
        const int64_t place = int64_t{column} + static_cast<int64_t>(i);
        if (text[i] == u' ' || text[i] >= kCharMapSize || !OnScreen(place, row)) continue;
        DrawTile(picture_, copy_.Store().CharMapData[text[i]], static_cast<int>(place),
                 static_cast<int>(row));
    }
}

void Composer::DrawTexts() {
    for (const TextItem& item : copy_.Store().CustomText)
        DrawText(item.Text, item.X, item.Y);
    if (copy_.PlacedText)
        DrawText(copy_.PlacedText->Text, copy_.PlacedText->X, copy_.PlacedText->Y);
}

void Composer::DrawList() {
    for (size_t line = 0; line < copy_.ItemTextList.size() && line < kScreenRows; ++line)
        DrawText(copy_.ItemTextList[line], copy_.document.ItemPos.X,
                 int64_t{copy_.document.ItemPos.Y} + static_cast<int64_t>(line));
}

void Composer::DrawSprites(bool behindBackground) {
    for (const TileItem& sprite : copy_.Store().SpriteTileList) {
        const bool behind = (sprite.Flags & TileItem::kBehindBackground) != 0;
        if (behind == behindBackground) DrawSprite(picture_, sprite, Cover::kTransparent);
    }
}

void Composer::DrawSprite(Surface& target, const TileItem& sprite, Cover cover) {
    // Two rows below the console's last line still show, so that a sprite can be caught there.
    constexpr int32_t kLastShownY = 241;
    if (sprite.Y < 1 || sprite.Y > kLastShownY || sprite.X < 0 || sprite.X > 255) return;
    if (copy_.Store().BigSprite) {
        DrawTallSprite(target, sprite, cover);
    } else {
        // The console shows a sprite one line below its Y byte.
        DrawSpriteTile(target, sprite, tiles_.SpriteTile(sprite.Tile, sprite.Palette & 3),
                       sprite.Y * kScreenScale + kScreenScale, cover);
    }
}

void Composer::DrawTallSprite(Surface& target, const TileItem& sprite, Cover cover) {
    // The tile's low bit names the table. Even tiles come from the background table, which the tile
    // image holds in the background's colours.
    const bool spriteTable = (sprite.Tile & 1) != 0;
    const auto half = [&](unsigned which) {
        const auto tile = static_cast<uint8_t>((sprite.Tile & 0xFEu) | which);
        const int palette = sprite.Palette & 3;
        return spriteTable ? tiles_.SpriteTile(tile, palette) : tiles_.BkgTile(tile, palette);
    };
    // The opaque copy stands a line higher than the transparent one; users' designs are placed by
    // that.
    const int top = sprite.Y * kScreenScale + (cover == Cover::kTransparent ? kScreenScale : 0);
    const unsigned upper = (sprite.Flags & TileItem::kFlipVertically) != 0 ? 1 : 0;
    DrawSpriteTile(target, sprite, half(upper), top, cover);
    DrawSpriteTile(target, sprite, half(1 - upper), top + kNameCell, cover);
}

void Composer::DrawSpriteTile(Surface& target, const TileItem& sprite, const SourceRect& tile,
                              int y, Cover cover) {
    CopyOptions options{.scale = kScreenScale,
                        .mirrorX = (sprite.Flags & TileItem::kFlipHorizontally) != 0,
                        .mirrorY = (sprite.Flags & TileItem::kFlipVertically) != 0};
    if (cover == Cover::kTransparent) {
        const size_t first = static_cast<size_t>(sprite.Palette & 3) * 4;
        options.transparent = SystemColour(copy_.Store().SpritePalette[first]);
    }
    Copy(target, {sprite.X * kScreenScale, y}, tile, options);
}

void Composer::DrawCursor() {
    if (copy_.document.BigCursor) {
        DrawLargeCursor();
        return;
    }
    const TileItem& cursor = copy_.Store().ArrowTile;
    DrawSprite(picture_, cursor, Cover::kTransparent);
    if (copy_.MarkCursor) {
        Frame(int64_t{cursor.X} * 2, int64_t{cursor.Y} * 2, 16, copy_.Store().BigSprite ? 32 : 16,
              kCursorMark);
    }
}

void Composer::DrawLargeCursor() {
    layer_.Fill(backdrop_);
    const size_t count = std::min<size_t>(4, copy_.Store().ArrowTileList.size());
    for (size_t i = 0; i < count; ++i)
        DrawSprite(layer_, copy_.Store().ArrowTileList[i], Cover::kOpaque);
    CopyLayer();
    if (copy_.MarkCursor && count != 0) {
        const TileItem& anchor = copy_.Store().ArrowTileList[0];
        Frame(int64_t{anchor.X} * 2, int64_t{anchor.Y} * 2, 32, copy_.Store().BigSprite ? 64 : 32,
              kCursorMark);
    }
}

void Composer::DrawMarks(const std::optional<RubberBand>& band) {
    if (copy_.DrawLine) DrawScreenGrid();
    if (copy_.markPlaces) {
        DrawCellFrame(picture_, PointOf(copy_.AttrBytePos), 4 * kNameCell, kRed);
        DrawCellFrame(picture_, PointOf(copy_.AttrCellPos), 2 * kNameCell, kRed);
        DrawCellFrame(picture_, PointOf(copy_.NameCellPos), kNameCell, kRed);
    }
    MarkSelection();
    MarkSelectedCursor();
    if (band) DrawRubberBand(picture_, *band);
}

void Composer::DrawScreenGrid() {
    const Point last{kNameTableWidth - 1, kNameTableHeight - 1};
    DrawGrid(picture_, {0, 0}, last, kGrey, kScreenColumns, kScreenRows, Stroke::kDotted);
    // Many televisions hide the first and the last row of tiles.
    const int firstSafe = kNameCell;
    const int lastSafe = kNameTableHeight - kNameCell;
    DrawLine(picture_, {0, firstSafe}, {last.x, firstSafe}, kWhite, Stroke::kDotted);
    DrawLine(picture_, {0, lastSafe}, {last.x, lastSafe}, kWhite, Stroke::kDotted);
    constexpr Point kMiddle{kNameTableWidth / 2, kNameTableHeight / 2};
    DrawLine(picture_, {kMiddle.x, firstSafe}, {kMiddle.x, lastSafe}, kGreen);
    DrawLine(picture_, {0, kMiddle.y}, {last.x, kMiddle.y}, kGreen);
}

void Composer::MarkSelection() {
    const int spriteHeight = copy_.Store().BigSprite ? 32 : 17;
    for (const TileItem& sprite : copy_.Store().SpriteTileList) {
        if (!sprite.IsSelected()) continue;
        Frame(int64_t{sprite.X} * 2, int64_t{sprite.Y} * 2 + 1, 16, spriteHeight, kCyan);
    }
    for (const TileItem& tile : copy_.Store().BkgTileList) {
        if (!tile.IsSelected()) continue;
        Frame(int64_t{tile.X} * kNameCell, int64_t{tile.Y} * kNameCell, kNameCell, kNameCell,
              kYellow);
    }
}

void Composer::MarkSelectedCursor() {
    const TileItem& cursor = copy_.Store().ArrowTile;
    if (cursor.IsSelected() && cursor.Y > 0) {
        Frame(int64_t{cursor.X} * 2 - 1, int64_t{cursor.Y} * 2 - 1, 17,
              copy_.Store().BigSprite ? 33 : 16, kSelectedCursor);
    }
    for (const TileItem& part : copy_.Store().ArrowTileList) {
        if (!part.IsSelected()) continue;
        Frame(int64_t{part.X} * 2, int64_t{part.Y} * 2, 16, copy_.Store().BigSprite ? 32 : 16,
              kSelectedCursor);
    }
}

// A frame whose far corner lies `width` and `height` pixels from the near one. Positions come from
// files and may be anywhere; a frame that isn't near the picture is left out.
void Composer::Frame(int64_t left, int64_t top, int64_t width, int64_t height, Colour colour) {
    if (left < -kNameTableWidth || left > kNameTableWidth || top < -kNameTableHeight ||
        top > kNameTableHeight) {
        return;
    }
    DrawFrame(picture_, {static_cast<int>(left), static_cast<int>(top)},
              {static_cast<int>(left + width), static_cast<int>(top + height)}, colour);
}

}  // namespace

void NameTablePicture::Compose(const WorkingCopy& copy, const TileImage& tiles,
                               const std::optional<RubberBand>& band) {
    Composer composer(copy, tiles, picture_, layer_);
    composer.DrawScreen();
    composer.DrawMarks(band);
}

}  // namespace bw
