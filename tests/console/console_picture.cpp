#include "console_picture.h"

#include <gtest/gtest.h>

#include "designer/model/system_palette.h"
#include "designer/pictures/name_table_picture.h"
#include "designer/tools/selection_tools.h"

namespace bw::console {
namespace {

constexpr int kWidth = 256;  // pixels of the console
constexpr int kHeight = 240;

}  // namespace

ScriptRun PictureRun(const std::filesystem::path& rom, const std::string& label) {
    return {.rom = rom,
            .script = MenuScript(R"lua(
                boot() shot("first_page")
                local picture = io.open("picture", "wb")
                for y = 0, 239 do
                    for x = 0, 255 do
                        local _, _, _, colour = emu.getscreenpixel(x, y, true)
                        picture:write(string.char(colour))
                    end
                end
                picture:close()
            )lua"),
            .label = label,
            .wantedFiles = {"picture"}};
}

size_t ExpectPicture(const ScriptResult& shown, const PixelColour& drawn) {
    const std::string& picture = shown.files.at("picture");
    size_t compared = 0;
    EXPECT_EQ(picture.size(), size_t{kWidth} * kHeight);
    for (int at = 0; at < 4 * static_cast<int>(picture.size()); ++at) {
        const Point place{at % kNameTableWidth, at / kNameTableWidth};
        const auto colour = drawn(place);
        if (!colour) continue;
        const auto pixel = static_cast<size_t>(place.y / 2 * kWidth + place.x / 2);
        const auto number = static_cast<uint8_t>(picture[pixel]);
        EXPECT_EQ(*colour, SystemColour(number))
            << place.x / 2 << ", " << place.y / 2 << ": the console shows $" << std::hex
            << int{number};
        if (*colour != SystemColour(number)) break;
        ++compared;
    }
    return compared;
}

Surface DrawnScreen(WorkingCopy copy, Marks marks) {
    DesignStore& store = copy.Store();
    if (marks == Marks::kWithout) {
        copy.markPlaces = copy.MarkCursor = copy.DrawLine = false;
        DeselectAll(copy);
        --store.ArrowTile.Y;
        for (TileItem& part : store.ArrowTileList)
            part.Y += store.BigSprite != 0 ? 1 : 0;
    }
    TileImage tiles;
    tiles.Redraw(store.ChrData, store.BkgPalette, store.SpritePalette, {}, {});
    NameTablePicture picture;
    picture.Compose(copy, tiles, {});
    return picture.Picture();
}

}  // namespace bw::console
