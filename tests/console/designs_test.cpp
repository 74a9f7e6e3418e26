// Designs on the console, pixel for pixel: our two samples, and two made here of what the samples
// don't have.
#include <algorithm>
#include <set>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "design_picture.h"
#include "designer/files/design_file.h"
#include "designer/model/system_palette.h"
#include "designer/pictures/name_table_picture.h"
#include "designer/tools/text_tools.h"
#include "menu_cart.h"
#include "samples.h"
#include "support/text.h"

namespace bw::console {
namespace {

constexpr size_t kStripFrames = 64;  // as many as the sprites have places in their rotation

struct DesignCase {
    std::string label;
    std::string sample = "";  // empty for a design made here
    BoardType board = BoardType::kCoolboy;
    uint32_t pageSize = 10;
    bool insertRow = false;
    bool tall = false;         // of a design made here: 8 by 16 sprites,
    bool largeCursor = false;  // and four of them for the cursor
};

std::vector<DesignCase> Cases() {
    using enum BoardType;
    return {{.label = "night_sea", .sample = "night_sea"},
            {.label = "night_sea_girl",
             .sample = "night_sea",
             .board = kCoolgirl,
             .pageSize = 5,
             .insertRow = true},
            {.label = "loom", .sample = "loom", .insertRow = true},
            {.label = "loom_girl", .sample = "loom", .board = kCoolgirl, .pageSize = 20},
            {.label = "tall_small", .pageSize = 5, .tall = true},
            {.label = "low_large",
             .board = kMindkids,
             .pageSize = 15,
             .insertRow = false,
             .largeCursor = true}};
}

uint8_t Noise(size_t number) {
    return static_cast<uint8_t>((static_cast<uint32_t>(number) * 2654435761u) >> 24);
}

void MakeSprites(const DesignCase& test, DesignStore& store) {
    store.BigSprite = test.tall ? 1 : 0;
    for (size_t i = 0; i < 32; ++i) {
        TileItem item;
        // Ten on a line and partly over each other, then all over the screen and past its edges.
        item.X = static_cast<int32_t>(i < 10 ? 20 + 6 * i : i * 37 % 256);
        item.Y = static_cast<int32_t>(i < 10 ? 180 : i * 29 % 240);
        item.Tile = Noise(i);
        item.Palette = static_cast<uint8_t>(i / 8 % 4);
        item.Flags = static_cast<uint8_t>(i % 8);
        store.SpriteTileList.push_back(item);
    }
    store.ArrowTile = {.X = 30, .Y = 49, .Tile = 0x35, .Palette = 3, .Flags = 3};
    for (size_t i = 0; i < 4; ++i) {
        store.ArrowTileList.push_back({.X = static_cast<int32_t>(24 + 8 * (i % 2)),
                                       .Y = static_cast<int32_t>(40 + 8 * (i / 2)),
                                       .Tile = static_cast<uint8_t>(0x61 + i),
                                       .Palette = static_cast<uint8_t>(i),
                                       .Flags = static_cast<uint8_t>(2 * i)});
    }
}

// Nothing in it is regular, so that no part can stand in for another.
DesignDocument MakeDesign(const DesignCase& test) {
    DesignDocument design;
    DesignStore& store = design.store;
    for (size_t i = 0; i < kChrDataSize; ++i) {
        store.ChrData[i] = Noise(i);
    }
    for (size_t i = 0; i < 256; ++i) {
        store.CharMapData[i] = static_cast<uint8_t>(i * 3 + 7);
    }
    for (size_t i = 0; i < kAttributeSize; ++i) {
        store.Attributes[i] = Noise(i + 100);
    }
    for (size_t i = 0; i < kPaletteSize; ++i) {  // 13 in a column of the colours is black or none
        store.BkgPalette[i] = static_cast<uint8_t>(i % 4 * 16 + i * 5 % 13);
        store.SpritePalette[i] = static_cast<uint8_t>((i + 3) % 4 * 16 + i * 7 % 13);
    }
    for (int32_t cell = 0; cell < kScreenColumns * kScreenRows; ++cell) {
        store.BkgTileList.push_back({.X = cell % kScreenColumns,
                                     .Y = cell / kScreenColumns,
                                     .Tile = Noise(static_cast<size_t>(cell) + 1000)});
    }
    store.BkgTileList.push_back({.X = 3, .Y = 3, .Tile = 0x77});  // over an earlier one
    store.CustomText = {{.X = -2, .Y = 1, .Text = u"CUT OFF"},
                        {.X = 28, .Y = 28, .Text = u"RIGHT"}};
    store.CaptionText = u"A B";
    design.CaptionPos = {5, 2};
    design.PageNumberPos = {24, 27};
    design.ItemPos = {6, 6};
    design.BigCursor = test.largeCursor ? 1 : 0;
    MakeSprites(test, store);
    return design;
}

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

bool Covers(const DesignDocument& design, const Sprite& sprite, size_t line) {
    return !SpritesOnLine(design, {&sprite, 1}, line).empty();
}

// The line with the most sprites of the design's list.
size_t CrowdedLine(const DesignDocument& design) {
    const std::vector<Sprite> sprites = DesignSprites(design, 0, 0);
    std::array<long, kPictureHeight> counts{};
    for (size_t line = 0; line < kPictureHeight; ++line) {
        counts[line] = std::ranges::count_if(
            sprites, [&](const Sprite& sprite) { return Covers(design, sprite, line); });
    }
    return static_cast<size_t>(std::ranges::max_element(counts) - counts.begin());
}

// Empty if the pictures are the same.
std::string Difference(std::string_view shown, std::string_view expected) {
    if (shown.size() != expected.size()) return fmt::format("{} pixels", shown.size());
    size_t count = 0;
    std::string first;
    for (size_t i = 0; i < shown.size(); ++i) {
        if (shown[i] == expected[i]) continue;
        if (count++ == 0) {
            first = fmt::format("({}, {}) has {:02X} instead of {:02X}", i % kPictureWidth,
                                i / kPictureWidth, shown[i], expected[i]);
        }
    }
    return count == 0 ? "" : fmt::format("{} pixels differ; {}", count, first);
}

class Designs : public testing::TestWithParam<DesignCase> {
  protected:
    void SetUp() override {
        const DesignCase& test = GetParam();
        plan.board = test.board;
        plan.names = Names(test.pageSize * 2 + 3);
        plan.settings.PageSize = test.pageSize;
        plan.settings.NameInsertRow = test.insertRow;
        plan.settings.PageNumber = true;
        plan.settings.PageTurningSpeed = 4;
        ASSERT_NO_FATAL_FAILURE(LoadDesignUnderTest());
        const Cart cart = BuildCart(plan, folder.Path(), test.label);
        ASSERT_EQ(cart.problem, "");
        moves = std::string(test.pageSize, 'D') + "RLUU";
        crowded = CrowdedLine(design);
        result = RunOnConsole({.rom = cart.rom,
                               .script = Script(),
                               .label = test.label,
                               .wantedFiles = {"pictures", "strips"}});
        ASSERT_TRUE(result.Ok()) << result.problem;
    }

    void LoadDesignUnderTest() {
        std::filesystem::path file = SampleDesign(GetParam().sample);
        if (GetParam().sample.empty()) {
            file = folder.Path() / "made.fcm";
            ASSERT_EQ(SaveDesign(file, MakeDesign(GetParam()), Language::kEnglish), std::nullopt);
        }
        ASSERT_EQ(UseDesign(plan, file, design), "");
        model.emplace(DesignLook(design), plan.settings, plan.names, DesignBackground(design), true,
                      design.store.CharMapData);
    }

    // A picture after each move; then as many frames as the rotation of the sprites has, of the
    // lines where they crowd.
    std::string Script() const {
        return MenuScript(fmt::format(R"lua(
            local function pixels(file, first, last)
                local colours = {{}}
                for y = first, last do
                    for x = 0, 255 do
                        local _, _, _, colour = emu.getscreenpixel(x, y, true)
                        colours[#colours + 1] = string.char(colour)
                    end
                end
                file:write(table.concat(colours))
            end
            local pictures, strips = io.open("pictures", "wb"), io.open("strips", "wb")
            local function look(key)
                pixels(pictures, 0, 239)
                put("oam " .. key, hex(oam()))
            end
            boot() shot("{0}")
            look(0)
            local buttons = {{U = "up", D = "down", L = "left", R = "right"}}
            local moves = "{1}"
            for i = 1, #moves do
                move(buttons[moves:sub(i, i)])
                look(i)
            end
            pictures:close()
            for n = 0, {2} do
                frames(1)
                pixels(strips, {3}, {3})
                put("strip oam " .. n, hex(oam()))
            end
            strips:close()
        )lua",
                                      GetParam().label, moves, kStripFrames - 1, crowded));
    }

    void ExpectTheDesignersPicture();
    void ExpectEveryPixel();
    void ExpectEverySpriteInItsTurn();

    // The 64 sprites as they lie in the console, if they are the design's in their order.
    std::optional<std::vector<Sprite>> Rotated(const std::string& key) const {
        const std::string page = FromHex(result.At(key));
        const size_t row = model->Selected() - model->PageFirst();
        if (page.size() != kSprites * 4) return std::nullopt;
        const auto expected = DesignSprites(design, row, GetParam().insertRow ? 16 : 8);
        for (size_t first = 0; first < kSprites; ++first) {
            if (SpritesFrom(page, first) == expected) return SpritesFrom(page, 0);
        }
        return std::nullopt;
    }

    TemporaryFolder folder;
    CartPlan plan;
    DesignDocument design;
    std::optional<MenuModel> model;
    std::string moves;
    size_t crowded = 0;
    ConsoleResult result;
};

// The designer shows what the console shows, in its own colours; but it has no limit of sprites on
// a line and lays later ones over earlier ones, so only pixels of at most one sprite count.
void Designs::ExpectTheDesignersPicture() {
    WorkingCopy copy;
    copy.document = design;
    copy.markPlaces = copy.Show_Cursor = false;
    copy.ShowPageNumber = true;
    SetItems(copy, plan.names, static_cast<int32_t>(plan.settings.PageSize),
             plan.settings.NameInsertRow);
    TileImage tiles;
    tiles.Redraw(design.store.ChrData, design.store.BkgPalette, design.store.SpritePalette, {}, {});
    NameTablePicture drawn;
    drawn.Compose(copy, tiles, {});
    const auto sprites = Rotated("oam 0");
    ASSERT_TRUE(sprites);
    std::set<Sprite> listed;
    for (const TileItem& item : design.store.SpriteTileList)
        listed.insert(ShownSprite(item, item.Y));
    size_t compared = 0;
    for (size_t y = 0; y < kPictureHeight; ++y) {
        std::vector<Sprite> crossing;
        std::ranges::copy_if(*sprites, std::back_inserter(crossing),
                             [&](const Sprite& sprite) { return Covers(design, sprite, y); });
        for (size_t x = 0; x < kPictureWidth; ++x) {
            const auto covers = [&](const Sprite& sprite) { return x - sprite[3] < kTilePixels; };
            const auto covering = std::ranges::count_if(crossing, covers);
            const auto first = std::ranges::find_if(crossing, covers);
            if (covering > 1 ||
                (covering == 1 && (crossing.size() > 8 || !listed.contains(*first))))
                continue;
            const auto shown =
                static_cast<uint8_t>(result.files.at("pictures")[y * kPictureWidth + x]);
            const Point place{static_cast<int>(2 * x), static_cast<int>(2 * y)};
            ASSERT_EQ(drawn.Picture().At(place), SystemColour(shown)) << x << ", " << y;
            ++compared;
        }
    }
    EXPECT_GT(compared, kPictureSize * 9 / 10);
}

// A picture after each move shows names, places, page number and cursor, and that no tile of the
// page before is left.
void Designs::ExpectEveryPixel() {
    const std::string& pictures = result.files.at("pictures");
    ASSERT_EQ(pictures.size(), (moves.size() + 1) * kPictureSize);
    for (size_t step = 0; step <= moves.size(); ++step) {
        if (step > 0) model->Move(moves[step - 1]);
        const auto sprites = Rotated(fmt::format("oam {}", step));
        ASSERT_TRUE(sprites) << "after " << moves.substr(0, step) << " the sprites are others";
        EXPECT_EQ(Difference(pictures.substr(step * kPictureSize, kPictureSize),
                             DrawDesign(design, model->Tiles(), *sprites)),
                  "")
            << "after the moves " << moves.substr(0, step);
    }
}

void Designs::ExpectEverySpriteInItsTurn() {
    std::set<Sprite> all;
    std::set<Sprite> seen;
    const std::string& strips = result.files.at("strips");
    ASSERT_EQ(strips.size(), kStripFrames * kPictureWidth);
    for (size_t frame = 0; frame < kStripFrames; ++frame) {
        const auto sprites = Rotated(fmt::format("strip oam {}", frame));
        ASSERT_TRUE(sprites) << "frame " << frame;
        const Picture expected = DrawDesign(design, model->Tiles(), *sprites);
        ASSERT_EQ(Difference(strips.substr(frame * kPictureWidth, kPictureWidth),
                             expected.substr(crowded * kPictureWidth, kPictureWidth)),
                  "")
            << "line " << crowded << ", frame " << frame;
        std::ranges::copy_if(*sprites, std::inserter(all, all.end()),
                             [&](const Sprite& sprite) { return Covers(design, sprite, crowded); });
        for (const size_t number : SpritesOnLine(design, *sprites, crowded)) {
            seen.insert((*sprites)[number]);
        }
    }
    EXPECT_GT(all.size(), 8u) << "line " << crowded;
    EXPECT_EQ(seen, all) << "line " << crowded;
}

TEST_P(Designs, ShowAsDrawn) {
    if (!GetParam().sample.empty()) {
        ASSERT_NO_FATAL_FAILURE(ExpectTheDesignersPicture());
    }
    ASSERT_NO_FATAL_FAILURE(ExpectEveryPixel());
    ASSERT_NO_FATAL_FAILURE(ExpectEverySpriteInItsTurn());
}

INSTANTIATE_TEST_SUITE_P(Console, Designs, testing::ValuesIn(Cases()),
                         [](const auto& param) { return param.param.label; });

}  // namespace
}  // namespace bw::console
