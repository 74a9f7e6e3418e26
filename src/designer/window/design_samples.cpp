#include "designer/window/design_samples.h"

#include "designer/files/design_parts.h"
#include "designer/pictures/name_table_picture.h"
#include "designer/pictures/tile_image.h"

extern "C" const unsigned char embedded_night_sea_begin[];
extern "C" const unsigned char embedded_night_sea_end[];
extern "C" const unsigned char embedded_loom_begin[];
extern "C" const unsigned char embedded_loom_end[];

namespace bw {

std::span<const DesignSample> DesignSamples() {
    static const DesignSample samples[] = {
        {TextId::kSampleNightSea,
         TextId::kSampleNightSeaHint,
         {embedded_night_sea_begin, embedded_night_sea_end}},
        {TextId::kSampleLoom, TextId::kSampleLoomHint, {embedded_loom_begin, embedded_loom_end}},
    };
    return samples;
}

Surface PictureOf(const DesignSample& sample, WorkingCopy copy, Language language) {
    LoadPart(DesignPart::kDesign, sample.bytes, Shift::kUp, copy, language);
    for (bool WorkingCopy::*shown :
         {&WorkingCopy::Show_Bg_Tile, &WorkingCopy::Show_Sp_Tile, &WorkingCopy::Show_List,
          &WorkingCopy::Show_Custom_Text, &WorkingCopy::Show_Caption, &WorkingCopy::Show_Cursor})
        copy.*shown = true;
    for (bool WorkingCopy::*mark : {&WorkingCopy::FillColor, &WorkingCopy::DrawLine,
                                    &WorkingCopy::MarkCursor, &WorkingCopy::markPlaces})
        copy.*mark = false;
    const DesignStore& store = copy.Store();
    TileImage tiles;
    tiles.Redraw(store.ChrData, store.BkgPalette, store.SpritePalette, {}, {});
    NameTablePicture screen;
    screen.Compose(copy, tiles, {});
    return screen.Picture();
}

}  // namespace bw
