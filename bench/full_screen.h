// A design that fills the screen, for the benchmarks of the designer.
#pragma once

#include <random>
#include <string>
#include <vector>

#include "designer/model/working_copy.h"
#include "designer/tools/text_tools.h"
#include "designer/tools/tile_tools.h"

namespace bench {

// 960 tiles, 64 sprites, a page of 20 names, a text, grids.
inline bw::WorkingCopy FullScreen() {
    std::mt19937 random(44);
    const auto byte = [&] { return static_cast<uint8_t>(random()); };
    bw::WorkingCopy copy;
    bw::DesignStore& store = copy.Store();
    for (uint8_t& value : store.ChrData)
        value = byte();
    for (uint8_t& value : store.Attributes)
        value = byte();
    for (uint8_t& value : store.CharMapData)
        value = byte();
    for (int32_t cell = 0; cell < bw::kScreenColumns * bw::kScreenRows; ++cell)
        store.BkgTileList.push_back({.X = cell % 32, .Y = cell / 32, .Tile = byte()});
    for (int i = 0; i < 64; ++i) {
        store.SpriteTileList.push_back({.X = byte(),
                                        .Y = 1 + byte() % 230,
                                        .Tile = byte(),
                                        .Palette = static_cast<uint8_t>(i % 4),
                                        .Flags = static_cast<uint8_t>(i % 8)});
    }
    store.ArrowTileList.resize(4);
    store.CaptionText = u"64 IN 1";
    store.CustomText = {{.X = 2, .Y = 28, .Text = u"A SELECT  START PLAYS"}};
    bw::SetItems(copy, std::vector<std::u16string>(64, u"A NAME OF TWENTY CHARS"), 20, false);
    copy.ShowPageNumber = copy.DrawLine = true;
    return copy;
}

// 1,024 names and 20 texts.
inline void AddNamesAndTexts(bw::WorkingCopy& copy) {
    copy.document.ItemPos = {4, 6};
    bw::SetItems(copy, std::vector<std::u16string>(1024, u"A NAME OF TWENTY-SIX CHARS"), 20, false);
    for (int32_t row = 2; copy.Store().CustomText.size() < 20; ++row)
        copy.Store().CustomText.push_back({.X = 30 - row, .Y = row, .Text = u"SOME WORDS"});
}

// Much less to tell, as of a user's design: characters with tiles, short texts, sprites in rows.
inline void LessenFaults(bw::WorkingCopy& copy) {
    copy.Store().CustomText.clear();
    for (int32_t i = 0; i < 20; ++i)
        copy.Store().CustomText.push_back({.X = i % 10 * 3, .Y = 1 + i / 10, .Text = u"AB"});
    bw::SetDefaultCharMap(copy.Store());
    copy.Store().BkgPalette = bw::kDefaultBkgPalette;
    for (size_t i = 0; i < 64; ++i) {
        bw::TileItem& sprite = copy.Store().SpriteTileList[i];
        sprite.X = static_cast<int32_t>(i % 8 * 30);
        sprite.Y = static_cast<int32_t>(1 + i / 8 * 20);
    }
}

}  // namespace bench
