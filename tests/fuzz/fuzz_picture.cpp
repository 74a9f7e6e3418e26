// Any bytes as a picture for a screen: refused, or put into a design that can be stored then.
#include "designer/files/design_file.h"
#include "designer/import/picture_import.h"
#include "fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    bw::Picture picture;
    // As small as that, each run takes milliseconds.
    const auto problem = bw::DecodeAnyPng({data, size}, 64, picture);
    if (problem) {
        Expect(picture.pixels.empty());
        return 0;
    }
    Expect(picture.width <= 64 && picture.height <= 64 &&
           picture.pixels.size() == size_t{picture.width} * picture.height);
    bw::WorkingCopy copy;
    const std::atomic<bool> stop = false;
    const auto column = static_cast<int32_t>(size % bw::kScreenColumns);
    const auto row = static_cast<int32_t>(size % bw::kScreenRows);
    const auto result = bw::ImportPicture(copy, picture, {.at = {column, row}}, stop);
    Expect(result.has_value());
    bw::ApplyImport(copy, *result);
    Expect(copy.nextBkgIndex == copy.Store().BkgTileList.size());
    for (const bw::TileItem& item : copy.Store().BkgTileList)
        Expect(result->area.Holds(item.X, item.Y));
    return 0;
}
