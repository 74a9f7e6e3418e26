// Any bytes as the values of the settings that the designer opens with, all at once. An input is a
// run of values: two bytes, the lower nine bits of which are the length (511: up to the input's
// end) and the rest the name, then the value. The designer opens, commands run, it closes, and
// another one opens on what it has left.

#include <array>

#include "designer/history/designer_settings.h"
#include "designer/history/work_state.h"
#include "designer/pictures/designer_views.h"
#include "designer/tools/list_tools.h"
#include "designer/tools/map_tools.h"
#include "designer/tools/pointer_edits.h"
#include "designer/tools/text_tools.h"
#include "designer/tools/tile_tools.h"
#include "fuzz.h"

namespace {

constexpr auto kNames = std::to_array<std::string_view>(
    {"LastWorkState",    "HistoryDataList",   "HistoryDataIndex", "BkgPalettePos",
     "SpPalettePos",     "CaptionPos",        "PageNumberPos",    "ItemPos",
     "CaptionPpuAddr",   "PageNumberPpuAddr", "ItemPpuAddr",      "BkgTileList",
     "SpriteTileList",   "ArrowTile",         "ArrowTileList",    "CustomText",
     "BigCursor",        "BigSprite",         "Attributes",       "BkgPalette",
     "SpritePalette",    "CharMapData",       "ChrData",          "CaptionText",
     "CustomTextEdit",   "Show_Bg_Tile",      "Show_Sp_Tile",     "Show_List",
     "Show_Custom_Text", "Show_Caption",      "Show_Cursor",      "FillColor",
     "DrawLine",         "DragText"});

std::unique_ptr<bw::SettingsStore> Settings(std::span<const uint8_t> bytes) {
    auto settings = bw::MakeMemoryStore();
    while (bytes.size() >= 2) {
        const unsigned word = bytes[0] | bytes[1] << 8;
        const std::string_view name = kNames[(word >> 9) % kNames.size()];
        bytes = bytes.subspan(2);
        const size_t size =
            (word & 511) == 511 ? bytes.size() : std::min<size_t>(word & 511, bytes.size());
        const auto value = bytes.first(size);
        if (name == "CaptionText" || name == "CustomTextEdit") {
            std::u16string text(size / 2, u' ');
            for (size_t i = 0; i < text.size(); ++i)
                text[i] = static_cast<char16_t>(value[2 * i] | value[2 * i + 1] << 8);
            settings->RegWriteString(bw::kDesignKey, name, text);
        } else {
            settings->RegWriteBinary(bw::kDesignKey, name, value);
        }
        bytes = bytes.subspan(size);
    }
    return settings;
}

void Open(bw::EditSession& session, const bw::SettingsStore& settings) {
    session.RunWithoutStep([&](bw::WorkingCopy& copy) {
        Expect(bw::LoadDesignData(copy.Store(), settings, std::vector<uint8_t>(8192, 7)));
        bw::SetItems(copy, {u"ONE", u"TWO"}, 10, false);
    });
    bw::OpenDesigner(session, settings);
}

void Edit(bw::EditSession& session) {
    session.Undo();
    session.Run([](bw::WorkingCopy& copy) {
        return bw::SelectAllItems(copy, bw::PatternTable::kSprites) |
               bw::MoveItems(copy, bw::PatternTable::kSprites, 8, 1) |
               bw::PlaceTile(copy, bw::PatternTable::kBackground) |
               bw::PickBkgEntry(copy, copy.BkgPalettePos.X) |
               bw::PickSpriteEntry(copy, copy.SpPalettePos.X) |
               bw::PickColour(copy, copy.SystemPalettePos) |
               bw::SetSpriteFlag(copy, bw::TileItem::kFlipVertically, true) |
               bw::QuickReplaceTile(copy, bw::PatternTable::kBackground) |
               bw::PaintPixel(copy, bw::PatternTable::kSprites, copy.SpPixelPos);
    });
    session.Run([](bw::WorkingCopy& copy) {
        return bw::MapUsedCharacters(copy) | bw::ClearUnusedBkgTiles(copy) |
               bw::OrganiseSpriteTiles(copy) | bw::SplitTallSprites(copy) |
               bw::AddText(copy, u"TEXT");
    });
    session.Redo();
    session.GoTo(0);
    session.GoTo(session.Steps().Count() - 1);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const auto settings = Settings({data, size});
    bw::EditSession session;
    Open(session, *settings);
    if (size % 8 == 0) {  // it costs more than all the rest
        bw::DesignerViews().Update(session.Copy(), bw::Views::All(), {});
    }
    Edit(session);
    Expect(bw::CloseDesigner(session, *settings));

    bw::EditSession next;
    Open(next, *settings);
    Expect(next.Steps().Count() == session.Steps().Count());
    Expect(next.Steps().Index() == session.Steps().Index());
    Expect(next.Steps().Present() == session.Steps().Present());
    return 0;
}
