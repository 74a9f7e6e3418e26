#include "designer/clipboard/clip_picture.h"

#include <algorithm>
#include <vector>

#include "designer/model/system_palette.h"
#include "designer/pictures/name_table_picture.h"
#include "designer/pictures/tile_image.h"
#include "designer/tools/pointer_edits.h"

namespace bw {
namespace {

// Corners in console pixels, the far one excluded.
struct Box {
    Point near{1 << 16, 1 << 16};
    Point far{0, 0};

    void Add(Point at, int width, int height) {
        near = {std::min(near.x, at.x), std::min(near.y, at.y)};
        far = {std::max(far.x, at.x + width), std::max(far.y, at.y + height)};
    }
    int Width() const { return far.x - near.x; }
    int Height() const { return far.y - near.y; }
};

TileImage ImageOf(const DesignStore& store) {
    TileImage image;
    image.Redraw(store.ChrData, store.BkgPalette, store.SpritePalette, {}, {});
    return image;
}

// Nothing but the clip on it.
WorkingCopy ScreenOf(const DesignClip& clip, const WorkingCopy& copy) {
    WorkingCopy shown = copy;
    shown.Store().BkgTileList = clip.items;
    shown.Store().SpriteTileList = clip.sprites;
    shown.Store().ArrowTile = {};
    shown.Store().ArrowTileList.clear();
    shown.Store().CustomText.clear();
    shown.PlacedText.reset();
    shown.Show_Bg_Tile = shown.Show_Sp_Tile = true;
    for (const auto layer :
         {&WorkingCopy::Show_List, &WorkingCopy::Show_Caption, &WorkingCopy::Show_Cursor,
          &WorkingCopy::ShowPageNumber, &WorkingCopy::FillColor, &WorkingCopy::DrawLine,
          &WorkingCopy::markPlaces}) {
        shown.*layer = false;
    }
    return shown;
}

Box BoxOf(const DesignClip& clip, bool tall) {
    Box box;
    for (const TileItem& item : clip.items)
        box.Add({item.X * kTilePixels, item.Y * kTilePixels}, kTilePixels, kTilePixels);
    for (const TileItem& sprite : clip.sprites)
        box.Add({sprite.X, sprite.Y + 1}, kTilePixels, tall ? 2 * kTilePixels : kTilePixels);
    box.far = {std::min(box.far.x, kNameTableWidth / kScreenScale),
               std::min(box.far.y, kNameTableHeight / kScreenScale)};
    return box;
}

Surface PieceOfScreen(const DesignClip& clip, const WorkingCopy& copy) {
    NameTablePicture screen;
    screen.Compose(ScreenOf(clip, copy), ImageOf(copy.Store()), {});
    const Box box = BoxOf(clip, copy.Store().BigSprite != 0);
    Surface piece(box.Width(), box.Height());
    for (int y = 0; y < piece.Height(); ++y)
        for (int x = 0; x < piece.Width(); ++x)
            piece.At({x, y}) = screen.Picture().At(
                {(box.near.x + x) * kScreenScale, (box.near.y + y) * kScreenScale});
    return piece;
}

Surface PieceOfTable(const ClipTiles& tiles, PatternTable table, const WorkingCopy& copy) {
    const TileImage image = ImageOf(copy.Store());
    const int palette = CurrentPalette(copy, table);
    const auto corner = [](uint8_t tile) {
        const Pos place = TilePlace(tile);
        return Point{place.X * kTilePixels, place.Y * kTilePixels};
    };
    Box box;
    for (const auto& [tile, pixels] : tiles)
        box.Add(corner(tile), kTilePixels, kTilePixels);
    Surface piece(box.Width(), box.Height(), SystemColour(copy.Store().SpritePalette[0]));
    for (const auto& [tile, pixels] : tiles) {
        const Point at = corner(tile);
        Copy(piece, {at.x - box.near.x, at.y - box.near.y},
             table == PatternTable::kBackground ? image.BkgTile(tile, palette)
                                                : image.SpriteTile(tile, palette));
    }
    return piece;
}

}  // namespace

Surface ClipPicture(const DesignClip& clip, const WorkingCopy& copy) {
    if (!clip.items.empty() || !clip.sprites.empty()) return PieceOfScreen(clip, copy);
    std::vector<Surface> pieces;
    if (!clip.bkgTiles.empty()) {
        pieces.push_back(PieceOfTable(clip.bkgTiles, PatternTable::kBackground, copy));
    }
    if (!clip.spriteTiles.empty()) {
        pieces.push_back(PieceOfTable(clip.spriteTiles, PatternTable::kSprites, copy));
    }
    Box box;
    for (const Surface& piece : pieces)
        box.Add({0, box.far.y}, piece.Width(), piece.Height());
    Surface picture(box.far.x, box.far.y, SystemColour(copy.Store().SpritePalette[0]));
    int top = 0;
    for (const Surface& piece : pieces) {
        Copy(picture, {0, top}, {piece, {0, 0}, piece.Width(), piece.Height()});
        top += piece.Height();
    }
    return picture;
}

}  // namespace bw
