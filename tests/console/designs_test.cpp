// Screens of a user's own design on the console: its tables, its sprites and cursors, and after
// each move the picture, which is the one that the designer draws. Our two samples, and designs
// made here of what the samples don't have.
#include <set>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "designer/files/design_file.h"
#include "designer/model/system_palette.h"
#include "designer/pictures/name_table_picture.h"
#include "designer/tools/text_tools.h"
#include "menu_model.h"
#include "rom/crc32.h"
#include "samples.h"
#include "support/text.h"

namespace bw::console {
namespace {

using Sprite = std::array<uint8_t, 4>;  // Y, tile, attribute, X
constexpr size_t kSprites = 64;
constexpr Sprite kHiddenSprite{0xF8, 0, 0, 0xF8};
constexpr size_t kMostOnLine = 8;
constexpr size_t kWidth = 256;  // pixels
constexpr size_t kHeight = 240;
constexpr size_t kStep = 3;  // every third pixel of every third line is looked at
const std::string kMoves = "UDRRDDLUA";

struct DesignCase {
    std::string label;
    BoardType board = BoardType::kCoolboy;
    RomFormat format = RomFormat::kNes20;
    uint32_t pageSize = 10;
    bool insertRow = false;
    std::string sample = "";  // without one the design is made here:
    size_t sprites = 0;       // on the screen
    size_t above = 0;         // with a Y of 0, which the menu counts and its list doesn't hold
    std::vector<uint8_t> largeCursor = {};  // tiles; empty for the small cursor
    bool tall = false;                      // 8 by 16 sprites
    std::u16string caption = u"GAMES";
    Pos items = {7, 3};
};

const std::vector<DesignCase>& Cases() {
    using enum BoardType;
    constexpr RomFormat nes = RomFormat::kNes20;
    constexpr RomFormat unf = RomFormat::kUnif;
    static const std::vector<DesignCase> cases{
        {"night_sea", kCoolboy, nes, 10, false, "night_sea"},
        {"night_sea_girl", kCoolgirl, unf, 5, true, "night_sea"},
        {"loom", kCoolboy, nes, 10, true, "loom"},
        {"loom_girl", kCoolgirl, nes, 20, false, "loom"},
        {"small", kCoolboy, nes, 5, false, "", 32, 3, {}, true, u"MY 23 GAMES"},
        {"large", kMindkids, unf, 10, true, "", 12, 0, {2, 3, 18, 19}, true, u"BEST OF A B C"},
        // The third row of names begins at an address whose low byte is 0.
        {"gap", kCoolgirl, unf, 10, false, "", 5, 0, {2, 0, 18, 19}, false, u"X", {0, 6}},
        {"small_63", kCoolgirl, nes, 10, true, "", 63},
        {"small_64", kCoolboy, unf, 10, false, "", 64},
        {"large_200", kMindkids, nes, 15, false, "", 200, 0, {2, 3, 18, 19}},
        {"no_sprites", kMindkids, nes, 10, false, "", 0, 0, {}, true, u""}};
    return cases;
}

uint8_t Noise(size_t number) {
    return static_cast<uint8_t>((static_cast<uint32_t>(number) * 2654435761u) >> 24);
}

TileItem MakeSprite(size_t x, size_t y, uint8_t tile, size_t look) {
    return {.X = static_cast<int32_t>(x),
            .Y = static_cast<int32_t>(y),
            .Tile = tile,
            .Palette = static_cast<uint8_t>(look % 4),
            .Flags = static_cast<uint8_t>(look / 4 % 8)};
}

// Nothing in it is regular, so that no part can stand in for another.
DesignDocument MakeDesign(const DesignCase& test) {
    DesignDocument design;
    DesignStore& store = design.store;
    for (size_t i = 0; i < kChrDataSize; ++i)
        store.ChrData[i] = Noise(i);
    for (size_t i = 0; i < kCharMapSize; ++i)
        store.CharMapData[i] = static_cast<uint8_t>(i * 3 + 7);
    for (size_t i = 0; i < kAttributeSize; ++i)
        store.Attributes[i] = Noise(i + 100);
    for (size_t i = 0; i < kPaletteSize; ++i) {  // all different, but for the backdrop
        store.BkgPalette[i] = static_cast<uint8_t>(i % 4 == 0 ? 0x0F : i % 4 * 16 - 15 + i / 4);
        store.SpritePalette[i] = static_cast<uint8_t>(i % 4 == 0 ? 0x0F : i % 4 * 16 - 10 + i / 4);
    }
    for (int32_t cell = 0; cell < kScreenColumns * kScreenRows; ++cell) {
        const uint8_t tile = Noise(static_cast<size_t>(cell) + 1000);
        store.BkgTileList.push_back(
            {.X = cell % kScreenColumns, .Y = cell / kScreenColumns, .Tile = tile});
    }
    store.BkgTileList.push_back({.X = 3, .Y = 3, .Tile = 0x77});  // over an earlier one
    store.CustomText = {{.X = -2, .Y = 1, .Text = u"CU OFF"}, {.X = 28, .Y = 28, .Text = u"RIGHT"}};
    store.CaptionText = test.caption;
    design.CaptionPos = {5, 2};
    design.PageNumberPos = {18, 26};
    design.ItemPos = test.items;
    design.BigCursor = test.largeCursor.empty() ? 0 : 1;
    store.BigSprite = test.tall ? 1 : 0;
    for (size_t i = 0; i < test.above; ++i)
        store.SpriteTileList.push_back(MakeSprite(i, 0, 1, 0));
    for (size_t i = 0; i < test.sprites; ++i) {  // ten on a line, the others all over the screen
        store.SpriteTileList.push_back(i < 10
                                           ? MakeSprite(20 + 6 * i, 180, Noise(i), i)
                                           : MakeSprite(i * 37 % 256, 20 + i % 200, Noise(i), i));
    }
    store.ArrowTile = MakeSprite(40, 25, 0x91, 15);
    for (size_t i = 0; i < test.largeCursor.size(); ++i) {
        store.ArrowTileList.push_back(MakeSprite(30 + i % 2 * 8, 20 + i / 2 * (test.tall ? 16 : 8),
                                                 test.largeCursor[i], 9 * i));
    }
    return design;
}

// With blanks, which let the picture show.
std::vector<std::u16string> Names(size_t count) {
    std::vector<std::u16string> names;
    for (size_t i = 1; i <= count; ++i) {
        std::string name =
            fmt::format("{} {}", i, std::string(i * 7 % 17, static_cast<char>('A' + i % 26)));
        if (i % 4 == 0) name.insert(name.size() / 2, "  ");
        names.push_back(ToWide(name));
    }
    return names;
}

Sprite Shown(const TileItem& item, int32_t y) {
    const unsigned flags = item.Flags;
    return {
        static_cast<uint8_t>(y), item.Tile,
        static_cast<uint8_t>((flags & 1) << 7 | (flags & 2) << 5 | (flags & 4) << 3 | item.Palette),
        static_cast<uint8_t>(item.X)};
}

// The design's sprites that stand on the screen.
std::vector<Sprite> ListedSprites(const DesignStore& store) {
    std::vector<Sprite> sprites;
    for (const TileItem& item : store.SpriteTileList)
        if (item.Y != 0) sprites.push_back(Shown(item, item.Y));
    return sprites;
}

// The cursor, so many pixels below its place at the first name.
std::vector<Sprite> CursorSprites(const DesignDocument& design, int32_t down) {
    const DesignStore& store = design.store;
    if (design.BigCursor == 0) return {Shown(store.ArrowTile, store.ArrowTile.Y - 1 + down)};
    const auto parts = std::span(store.ArrowTileList).first(4);
    std::vector<Sprite> sprites;
    for (const TileItem& item : parts)
        sprites.push_back(Shown(item, item.Tile == 0 ? 0xF8 : item.Y + down));
    // As many as there are tiles, wherever the gap is.
    sprites.resize(4 - static_cast<size_t>(std::ranges::count(parts, 0, &TileItem::Tile)));
    return sprites;
}

// The menu's 64 sprites before it rotates them.
std::vector<Sprite> MenuSprites(const DesignDocument& design, int32_t down) {
    std::vector<Sprite> sprites = ListedSprites(design.store);
    sprites.resize(
        std::min(design.store.SpriteTileList.size(), kSprites - (design.BigCursor == 0 ? 1 : 4)),
        kHiddenSprite);
    for (const Sprite& part : CursorSprites(design, down))
        sprites.push_back(part);
    sprites.resize(kSprites, kHiddenSprite);
    return sprites;
}

// At which place of the console's 64 sprites the first of `expected` lies; 64 if they are others.
size_t Rotation(const std::string& page, const std::vector<Sprite>& expected) {
    std::string twice;
    for (int i = 0; i < 2; ++i)
        for (const Sprite& sprite : expected)
            twice.append(sprite.begin(), sprite.end());
    for (size_t first = 0; page.size() == kSprites * 4 && first < kSprites; ++first)
        if (twice.substr((kSprites - first) * 4, page.size()) == page) return first;
    return kSprites;
}

class Designs : public testing::TestWithParam<DesignCase> {
  protected:
    void SetUp() override {
        const DesignCase& test = GetParam();
        plan = {.board = test.board, .format = test.format, .names = Names(test.pageSize * 2 + 3)};
        plan.settings.PageSize = test.pageSize;
        plan.settings.NameInsertRow = test.insertRow;
        plan.settings.PageNumber = true;
        plan.settings.PageTurningSpeed = 4;
        // The whole way of a user's design: saved, loaded, handed to the build.
        std::filesystem::path file = SampleDesign(test.sample);
        if (test.sample.empty()) {
            file = folder / "made.fcm";
            ASSERT_EQ(SaveDesign(file, MakeDesign(test), Language::kEnglish), std::nullopt);
        }
        copy.document = UseDesign(plan, file);
        copy.markPlaces = copy.Show_Cursor = false;
        copy.ShowPageNumber = true;
        SetItems(copy, plan.names, static_cast<int32_t>(test.pageSize), test.insertRow);
    }

    ScriptResult Run() const {
        return RunOnConsole({.rom = BuildCart(plan, folder.Path(), GetParam().label).rom,
                             .script = MenuScript("local MOVES = '" + kMoves + "'" + R"lua(
            local pictures = io.open("pictures", "wb")
            boot() shot("design")
            put("tiles", crc(ppu_bytes(0, 0x2000)))
            put("palette", hex(palette()))
            put("attributes", hex(ppu_bytes(0x23C0, 64)))
            put("control", peek(FC_PPU_CTRL))
            walk(MOVES, function(n)
                put("sprites " .. n, hex(oam()))
                for y = 0, 239, 3 do
                    for x = 0, 255, 3 do
                        local _, _, _, colour = emu.getscreenpixel(x, y, true)
                        pictures:write(string.char(colour))
                    end
                end
            end)
            pictures:close()
            for n = 0, 63 do frames(1) put("turn " .. n, hex(oam())) end
        )lua"),
                             .label = GetParam().label,
                             .wantedFiles = {"pictures"}});
    }

    // How many sprites cover each pixel, as far as the designer can't know what shows: that on a
    // line with too many some drop out, where the cursor stands, and which of two lies in front. It
    // also lets sprites stand before and behind texts as the console doesn't, so that in designs
    // that put them there at random no sprite counts.
    std::vector<int> Covering(int32_t down) const {
        const size_t height = copy.Store().BigSprite != 0 ? 16 : 8;
        std::vector<int> covering(kWidth * kHeight);
        std::array<size_t, 2 * kHeight> onLine{};
        const auto each = [&](const Sprite& sprite, auto act) {
            for (size_t y = sprite[0] + 1u; y < sprite[0] + 1u + height; ++y)
                act(y);
        };
        const auto cover = [&](const Sprite& sprite, bool unclear) {
            each(sprite, [&](size_t y) {
                for (size_t x = sprite[3]; y < kHeight && x < sprite[3] + 8u && x < kWidth; ++x)
                    covering[y * kWidth + x] += unclear || onLine[y] > kMostOnLine ? 2 : 1;
            });
        };
        for (const Sprite& sprite : MenuSprites(copy.document, down))
            each(sprite, [&](size_t y) { ++onLine[y]; });
        for (const Sprite& sprite : ListedSprites(copy.Store()))
            cover(sprite, GetParam().sample.empty());
        for (const Sprite& sprite : CursorSprites(copy.document, down))
            cover(sprite, true);
        return covering;
    }

    void ExpectPicture(std::string_view shown, const std::vector<int>& covering) const {
        TileImage tiles;
        tiles.Redraw(copy.Store().ChrData, copy.Store().BkgPalette, copy.Store().SpritePalette, {},
                     {});
        NameTablePicture drawn;
        drawn.Compose(copy, tiles, {});
        size_t compared = 0;
        size_t at = 0;
        for (size_t y = 0; y < kHeight; y += kStep) {
            for (size_t x = 0; x < kWidth; x += kStep, ++at) {
                if (covering[y * kWidth + x] > 1) continue;
                const Point place{static_cast<int>(2 * x), static_cast<int>(2 * y)};
                ASSERT_EQ(drawn.Picture().At(place), SystemColour(static_cast<uint8_t>(shown[at])))
                    << x << ", " << y;
                ++compared;
            }
        }
        EXPECT_GT(compared, shown.size() * 2 / 3);
    }

    TemporaryFolder folder;
    CartPlan plan;
    WorkingCopy copy;
};

TEST_P(Designs, ShowAsDrawn) {
    const ScriptResult result = Run();
    const DesignStore& store = copy.Store();
    EXPECT_EQ(result.At("tiles"), std::to_string(Crc32(store.ChrData)));
    EXPECT_EQ(result.At("palette"), ToHex(store.BkgPalette) + ToHex(store.SpritePalette));
    EXPECT_EQ(result.At("attributes"), ToHex(store.Attributes));
    EXPECT_EQ(result.Number("control"), store.BigSprite != 0 ? 0xA8 : 0x88);

    MenuModel model(plan.settings, plan.names);
    const std::string& pictures = result.files.at("pictures");
    const size_t size = pictures.size() / (kMoves.size() + 1);
    ASSERT_EQ(size, (kWidth + kStep - 1) / kStep * kHeight / kStep);
    int32_t down = 0;
    for (size_t step = 0; step <= kMoves.size(); ++step) {
        SCOPED_TRACE("after the moves " + kMoves.substr(0, step));
        if (step > 0) model.Move(kMoves[step - 1]);
        TurnPage(copy, PageTurn::kFirst);
        while (copy.PageFirstItem < static_cast<int32_t>(model.PageFirst()))
            TurnPage(copy, PageTurn::kNext);
        down = static_cast<int32_t>(model.Selected() - model.PageFirst()) *
               (GetParam().insertRow ? 16 : 8);
        ASSERT_NE(Rotation(FromHex(result.At(fmt::format("sprites {}", step))),
                           MenuSprites(copy.document, down)),
                  kSprites)
            << "the sprites are others";
        ASSERT_NO_FATAL_FAILURE(
            ExpectPicture(std::string_view(pictures).substr(step * size, size), Covering(down)));
    }

    // Each of the 64 comes first in its turn, so that none of a crowded line stays unseen.
    std::set<size_t> turns;
    for (size_t frame = 0; frame < kSprites; ++frame) {
        turns.insert(Rotation(FromHex(result.At(fmt::format("turn {}", frame))),
                              MenuSprites(copy.document, down)));
    }
    EXPECT_EQ(turns.size(), kSprites);
    EXPECT_FALSE(turns.contains(kSprites)) << "the sprites are others";
}

INSTANTIATE_TEST_SUITE_P(Console, Designs, testing::ValuesIn(Cases()),
                         [](const auto& param) { return param.param.label; });

}  // namespace
}  // namespace bw::console
