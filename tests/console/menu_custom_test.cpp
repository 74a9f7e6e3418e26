// The screen of the user's own design: its tiles, colours, picture, character map, places, sprites
// and cursors.
#include <algorithm>
#include <set>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "design_picture.h"
#include "designer/files/design_file.h"
#include "menu_cart.h"
#include "menu_model.h"
#include "rom/crc32.h"

namespace bw::console {
namespace {

constexpr uint16_t kCaptionPlace = 0x2045;
constexpr uint16_t kPagePlace = 0x2352;
constexpr uint8_t kCrowdedLine = 100;  // Y of a row of ten sprites

struct CustomCase {
    std::string label;
    BoardType board;
    RomFormat format;
    size_t sprites;                  // on the screen
    size_t above;                    // with a Y of 0, which the list counts and doesn't hold
    std::vector<uint8_t> bigCursor;  // tiles; empty for the small cursor
    bool bigSprites;
    bool insertRow;
    std::u16string caption;
    uint16_t itemPlace = 0x2067;
};

const std::vector<CustomCase>& Cases() {
    using enum BoardType;
    constexpr RomFormat nes = RomFormat::kNes20;
    constexpr RomFormat unf = RomFormat::kUnif;
    static const std::vector<CustomCase> cases{
        {"small", kCoolboy, nes, 12, 3, {}, false, false, u"MY 23 GAMES"},
        {"big", kMindkids, unf, 12, 0, {2, 3, 18, 19}, true, true, u"BEST OF A B C"},
        {"big_gap",
         kCoolgirl,
         unf,
         5,
         0,
         {2, 0, 18, 19},
         false,
         false,
         u"X",
         0x20C0},  // the third row begins at an address whose low byte is 0
        {"small_63", kCoolgirl, nes, 63, 0, {}, false, true, u"GAMES"},
        {"small_64", kCoolboy, unf, 64, 0, {}, false, false, u"GAMES"},
        {"big_200", kCoolboy, nes, 200, 0, {2, 3, 18, 19}, false, false, u"GAMES"},
        {"no_sprites", kMindkids, nes, 0, 0, {}, true, false, u""}};
    return cases;
}

uint8_t BackgroundTile(size_t cell) {
    return static_cast<uint8_t>(cell * 7 + cell / 32 * 13);
}

TileItem MakeSprite(size_t number, bool above) {
    TileItem item;
    item.X = static_cast<int32_t>(number * 23 % 256);
    item.Y = above ? 0 : number < 10 ? kCrowdedLine : static_cast<int32_t>(20 + number % 200);
    item.Tile = static_cast<uint8_t>(0x40 + number % 64);
    item.Palette = static_cast<uint8_t>(number % 4);
    item.Flags = static_cast<uint8_t>(number / 4 % 8);
    return item;
}

struct Design {
    CartPlan plan;
    std::string tiles;
    MenuModel::Screen background{};
    MenuModel::CharMap map{};
    std::vector<Sprite> sprites;  // the menu's 64, cursor at the first row
    size_t cursorAt = 0;
    size_t cursorSize = 1;
    MenuLook look;
};

Pos PlaceOf(uint16_t address) {
    return {.X = address % 32, .Y = (address - 0x2000) / 32};
}

void DrawScreen(Design& design, DesignDocument& document, const CustomCase& test) {
    DesignStore& store = document.store;
    for (size_t cell = 0; cell < MenuModel::kScreenSize; ++cell) {
        TileItem item;
        item.X = static_cast<int32_t>(cell % 32);
        item.Y = static_cast<int32_t>(cell / 32);
        item.Tile = design.background[cell] = BackgroundTile(cell);
        store.BkgTileList.push_back(item);
    }
    for (size_t i = 0; i < 256; ++i) {
        store.CharMapData[i] = design.map[i] = static_cast<uint8_t>(i ^ 0x80);
        design.tiles += std::string(32, static_cast<char>(i * 5 + 1));
    }
    // The first letter stands left of the screen, and the blank lets the picture show.
    store.CustomText.push_back({.Index = 0, .X = -1, .Y = 1, .Text = u"XA B"});
    design.background[32] = design.map['A'];
    design.background[34] = design.map['B'];
    for (size_t i = 0; i < store.Attributes.size(); ++i) {
        store.Attributes[i] = static_cast<uint8_t>(i * 3);
    }
    for (size_t i = 0; i < kPaletteSize; ++i) {
        store.BkgPalette[i] = static_cast<uint8_t>(i % 4 == 0 ? 0x0F : 0x10 + i);
        store.SpritePalette[i] = static_cast<uint8_t>(i % 4 == 0 ? 0x0F : 0x20 + i);
    }
    std::ranges::copy(design.tiles, store.ChrData.begin());
    store.CaptionText = test.caption;
    document.ItemPos = PlaceOf(test.itemPlace);
    document.CaptionPos = PlaceOf(kCaptionPlace);
    document.PageNumberPos = PlaceOf(kPagePlace);
    design.look = {.item = test.itemPlace,
                   .title = kCaptionPlace,
                   .page = kPagePlace,
                   .centrePage = false,
                   .titleText = std::string(test.caption.begin(), test.caption.end())};
}

void PlaceSprites(Design& design, DesignDocument& document, const CustomCase& test) {
    DesignStore& store = document.store;
    for (size_t i = 0; i < test.above + test.sprites; ++i) {
        store.SpriteTileList.push_back(MakeSprite(i, i < test.above));
        if (i >= test.above) {
            design.sprites.push_back(
                ShownSprite(store.SpriteTileList.back(), store.SpriteTileList.back().Y));
        }
    }
    design.sprites.resize(design.sprites.size() + test.above, kHiddenSprite);
    const size_t room = kSprites - (test.bigCursor.empty() ? 1 : 4);
    design.sprites.resize(std::min(design.sprites.size(), room));
    design.cursorAt = design.sprites.size();

    document.BigCursor = test.bigCursor.empty() ? 0 : 1;
    store.BigSprite = test.bigSprites ? 1 : 0;
    TileItem arrow;
    arrow.X = 40;
    arrow.Y = 25;
    arrow.Tile = 0x91;
    arrow.Palette = 3;
    arrow.Flags = TileItem::kFlipVertically | TileItem::kFlipHorizontally;
    store.ArrowTile = arrow;
    if (test.bigCursor.empty()) design.sprites.push_back(ShownSprite(arrow, arrow.Y - 1));
    const auto used = static_cast<size_t>(
        std::ranges::count_if(test.bigCursor, [](uint8_t tile) { return tile != 0; }));
    for (size_t i = 0; i < test.bigCursor.size(); ++i) {
        arrow.Tile = test.bigCursor[i];
        arrow.X = static_cast<int32_t>(30 + i % 2 * 8);
        arrow.Y = static_cast<int32_t>(20 + i / 2 * (test.bigSprites ? 16 : 8));
        store.ArrowTileList.push_back(arrow);
        if (i < used)
            design.sprites.push_back(ShownSprite(arrow, arrow.Tile == 0 ? 0xF8 : arrow.Y));
    }
    design.cursorSize = design.sprites.size() - design.cursorAt;
    design.sprites.resize(kSprites, kHiddenSprite);
}

Design MakeDesign(const CustomCase& test) {
    Design design;
    design.plan = {.board = test.board, .format = test.format, .names = CountedNames(23)};
    design.plan.names[2] = u"A B  C";  // blanks let the picture show
    design.plan.settings.CustomEnable = true;
    design.plan.settings.PageNumber = true;
    design.plan.settings.NameInsertRow = test.insertRow;
    design.plan.settings.PageTurningSpeed = 3;
    DesignDocument drawn;
    DrawScreen(design, drawn, test);
    PlaceSprites(design, drawn, test);
    // The whole way of a user's design: saved, loaded, handed to the build.
    DesignDocument loaded;
    EXPECT_EQ(ReadDesign(WriteDesign(drawn), loaded, Language::kEnglish), std::nullopt);
    EXPECT_TRUE(StoreDesign(loaded, *design.plan.store));
    design.plan.design = loaded.store;
    return design;
}

class MenuCustom : public testing::TestWithParam<CustomCase> {
  protected:
    static constexpr size_t kFrames = 70;

    void SetUp() override {
        design = MakeDesign(GetParam());
        const Cart cart = BuildCart(design.plan, folder.Path(), GetParam().label);
        ASSERT_EQ(cart.problem, "");
        result = RunOnConsole({.rom = cart.rom,
                               .script = MenuScript(R"lua(
            boot() shot("custom")
            put("tiles", crc(ppu_bytes(0, 0x2000)))
            put("colours", hex(palette()))
            put("attributes", hex(ppu_bytes(0x23C0, 64)))
            put("control", peek(FC_PPU_CTRL))
            for n = 0, 69 do frames(1) put("oam " .. n, hex(oam())) end
            walk("RRDDLU")
            put("moved oam", hex(oam()))
        )lua"),
                               .label = GetParam().label});
        ASSERT_TRUE(result.Ok()) << result.problem;
    }

    TemporaryFolder folder;
    Design design;
    ConsoleResult result;
};

TEST_P(MenuCustom, ShowsTheDesign) {
    const DesignStore& store = design.plan.design;
    const auto hex = [](auto... parts) {
        std::string text;
        const auto add = [&](const auto& bytes) {
            for (const uint8_t byte : bytes) {
                char digits[3];
                std::snprintf(digits, sizeof digits, "%02X", static_cast<unsigned>(byte));
                text += digits;
            }
        };
        (add(parts), ...);
        return text;
    };
    EXPECT_EQ(result.At("tiles"),
              std::to_string(Crc32({reinterpret_cast<const uint8_t*>(design.tiles.data()), 8192})));
    EXPECT_EQ(result.At("colours"), hex(store.BkgPalette, store.SpritePalette));
    EXPECT_EQ(result.At("attributes"), hex(store.Attributes));
    EXPECT_EQ(result.Number("control"), GetParam().bigSprites ? 0xA8 : 0x88);

    MenuModel model(design.look, design.plan.settings, design.plan.names, design.background, true,
                    design.map);
    const std::string moves = "RRDDLU";
    for (size_t step = 0; step <= moves.size(); ++step) {
        if (step > 0) model.Move(moves[step - 1]);
        const std::string state = result.At("state " + std::to_string(step));
        EXPECT_EQ(FromHex(std::string_view(state).substr(state.rfind(' ') + 1)),
                  std::string(model.Tiles().begin(), model.Tiles().end()))
            << "after the moves " << moves.substr(0, step);
    }
    // The cursor went with the selection; its hidden part stayed hidden.
    const size_t row = model.Selected() - model.PageFirst();
    std::vector<Sprite> expected = design.sprites;
    for (size_t i = 0; i < design.cursorSize; ++i) {
        Sprite& part = expected[design.cursorAt + i];
        if (part[1] == 0) continue;
        part[0] = static_cast<uint8_t>(part[0] + row * (GetParam().insertRow ? 16 : 8));
    }
    std::vector<Sprite> shown = SpritesFrom(FromHex(result.At("moved oam")), 0);
    std::ranges::sort(shown);
    std::ranges::sort(expected);
    EXPECT_EQ(shown, expected);
}

// Each frame holds all sprites, 49 places further on, so that none of a crowded line stays unseen.
TEST_P(MenuCustom, SpritesTakeTurns) {
    size_t first = kSprites;
    std::set<uint8_t> seen;
    for (size_t frame = 0; frame < kFrames; ++frame) {
        const std::string page = FromHex(result.At("oam " + std::to_string(frame)));
        ASSERT_EQ(page.size(), 256u);
        if (frame == 0) {
            for (size_t at = 0; at < kSprites && first == kSprites; ++at) {
                if (SpritesFrom(page, at) == design.sprites) first = at;
            }
            ASSERT_LT(first, kSprites) << "the first frame holds other sprites";
        } else {
            first = (first + 49) % kSprites;
        }
        ASSERT_EQ(SpritesFrom(page, first), design.sprites) << "frame " << frame;
        size_t onLine = 0;
        for (const Sprite& sprite : SpritesFrom(page, 0)) {
            if (sprite[0] == kCrowdedLine && ++onLine <= 8) seen.insert(sprite[3]);
        }
    }
    std::set<uint8_t> all;
    for (const Sprite& sprite : design.sprites) {
        if (sprite[0] == kCrowdedLine) all.insert(sprite[3]);
    }
    EXPECT_EQ(seen, all);
}

INSTANTIATE_TEST_SUITE_P(Designs, MenuCustom, testing::ValuesIn(Cases()),
                         [](const auto& param) { return param.param.label; });

}  // namespace
}  // namespace bw::console
