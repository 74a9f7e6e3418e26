// Any bytes as a clip, the first of them saying where it is pasted: what is taken is stored again
// to the same end, and pasted it stays within the limits of a design.

#include <algorithm>

#include "designer/clipboard/clip_bytes.h"
#include "designer/clipboard/clip_picture.h"
#include "designer/tools/selection_tools.h"
#include "fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0) return 0;
    const auto clip = bw::ReadClip({data + 1, size - 1});
    if (!clip) return 0;
    Expect(bw::ReadClip(bw::StoredClip(*clip)) == clip);

    bw::WorkingCopy copy;
    bw::DesignStore& store = copy.Store();
    store.SpriteTileList.resize(data[0]);
    store.ArrowTileList.resize(4);
    store.BigSprite = data[0] & 1;
    copy.SpritePaletteActive = (data[0] & 2) != 0;
    copy.NameCellPos = {data[0] % 32, data[0] / 8};
    copy.BkgTilePos = copy.SpTilePos = {data[0] / 16, data[0] % 16};
    const bw::Pasted pasted = bw::PasteClip(copy, *clip);
    Expect(pasted.placed.All() + pasted.lost.All() == bw::CountsOf(*clip).All());
    Expect(store.SpriteTileList.size() <= 255 && store.BkgTileList.size() == pasted.placed.items);
    for (const bw::TileItem& item : store.BkgTileList)
        Expect(item.X >= 0 && item.X < 32 && item.Y >= 0 && item.Y < 30);
    bw::MoveSelection(copy, {data[0] - 128, 127 - data[0]}, bw::ArrowStep::kPixel);
    const bw::DesignClip again = bw::ClipOfSelection(copy);
    const bw::Surface picture = bw::ClipPicture(again, copy);
    Expect(picture.Width() <= 256 && picture.Height() <= 256 && !picture.Pixels().empty());
    return 0;
}
