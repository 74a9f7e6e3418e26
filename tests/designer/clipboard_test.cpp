// Copy, cut and paste.

#include "design_items.h"
#include "designer/clipboard/clip_bytes.h"
#include "designer/clipboard/clip_picture.h"
#include "designer/history/edit_session.h"
#include "designer/model/chunk_file.h"
#include "designer/model/system_palette.h"
#include "designer/tools/selection_tools.h"

namespace bw {
namespace {

using testing::ElementsAre;

// Some of each kind selected, some not, and some of what a copy leaves out.
WorkingCopy Furnished() {
    WorkingCopy copy;
    DesignStore& store = copy.Store();
    for (size_t i = 0; i < kChrDataSize; ++i)
        store.ChrData[i] = static_cast<uint8_t>(i / kTileBytes);
    store.Attributes.fill(0xE4);
    store.BkgTileSelected[0x21] = store.BkgTileSelected[0x32] = 1;
    store.SpriteTileSelected[0x40] = 2;
    store.BkgTileList = {{0, 4, 4, 1, 9}, {0, 4, 4, 1, 1}, {0, 5, 4, 1, 2}, {0, 4, 5, 1, 3},
                         {0, 5, 5, 1, 4}, {0, 6, 4, 1, 5}, {0, 7, 7, 0, 6}, {0, 99, 4, 1, 7}};
    store.SpriteTileList = {{0, 40, 50, 1, 8, 2, 1}, {0, 10, 10, 0, 9}, {0, 256, 9, 1}};
    return copy;
}

std::vector<int> Marked(const std::array<uint8_t, 256>& marks) {
    std::vector<int> marked;
    for (size_t tile = 0; tile < marks.size(); ++tile)
        if (marks[tile] != 0) marked.push_back(static_cast<int>(tile));
    return marked;
}

TEST(Clipboard, TakesWhatIsSelectedAndSeen) {
    WorkingCopy copy = Furnished();
    const DesignClip clip = ClipOfSelection(copy);
    EXPECT_EQ(CountsOf(clip), (ClipCounts{3, 5, 1}));
    EXPECT_THAT(clip.items, ElementsAre(Item(4, 4, 1), Item(5, 4, 2), Item(4, 5, 3), Item(5, 5, 4),
                                        Item(6, 4, 5)));
    EXPECT_EQ(clip.items[4].Palette, 1) << "the sub-palette of its place";

    // With nothing selected it is the tile in use, of tall sprites the pair.
    DeselectAll(copy);
    copy.BkgTilePos = copy.SpTilePos = {5, 2};
    copy.Store().BigSprite = 1;
    const ClipTiles background = ClipOfSelection(copy).bkgTiles;
    EXPECT_TRUE(background.size() == 1 && background.contains(0x25));
    copy.SpritePaletteActive = true;
    const ClipTiles sprites = ClipOfSelection(copy).spriteTiles;
    EXPECT_TRUE(sprites.size() == 2 && sprites.contains(0x24) && sprites.contains(0x25));
}

TEST(Clipboard, PutsTilesFromTheCurrentOneOn) {
    WorkingCopy copy = Furnished();
    DesignStore& store = copy.Store();
    DesignClip clip = ClipOfSelection(copy);
    copy.SpritePaletteActive = true;
    copy.BkgTilePos = {15, 14};  // the second one has no room
    copy.SpTilePos = {7, 0};
    const Pasted pasted = PasteClip(copy, clip);
    EXPECT_EQ(pasted.placed, (ClipCounts{2, 5, 1}));
    EXPECT_EQ(pasted.lost, (ClipCounts{1, 0, 0}));
    EXPECT_THAT(Marked(store.BkgTileSelected), ElementsAre(0xEF));
    EXPECT_THAT(Marked(store.SpriteTileSelected), ElementsAre(7));
    EXPECT_THAT(BytesOf(store, kBkg, {0xEF, 0}), ElementsAre(0x21, 0));
    EXPECT_THAT(BytesOf(store, kSp, {7, 6}), ElementsAre(0x40, 6));

    // Those of one table go to the table in use; pairs of tall sprites stay pairs.
    clip = {.bkgTiles = clip.bkgTiles};
    copy.BkgTilePos = {0, 0};
    PasteClip(copy, clip);
    EXPECT_THAT(Marked(store.SpriteTileSelected), ElementsAre(7, 0x18));
    EXPECT_THAT(Marked(store.BkgTileSelected), ElementsAre());
    store.BigSprite = 1;
    clip.bkgTiles.erase(0x21);
    PasteClip(copy, clip);
    EXPECT_THAT(Marked(store.SpriteTileSelected), ElementsAre(6));
}

TEST(Clipboard, PutsPiecesOfTheScreenAtTheCurrentPlace) {
    WorkingCopy copy = Furnished();
    DesignStore& store = copy.Store();
    const DesignClip clip = ClipOfSelection(copy);
    copy.NameCellPos = {30, 28};
    store.BkgTileList.clear();
    const Pasted pasted = PasteClip(copy, clip);
    EXPECT_EQ(pasted.lost.items, 1u) << "one is right of the screen";
    EXPECT_THAT(store.BkgTileList,
                ElementsAre(Item(30, 28, 1), Item(31, 28, 2), Item(30, 29, 3), Item(31, 29, 4)));
    // The cell that is covered whole is coloured; what is pasted is the selection.
    EXPECT_EQ(store.Attributes[63], 0xE0) << "was 1 there";
    EXPECT_EQ(store.BkgTileList[3].Palette, 0);
    EXPECT_EQ(std::ranges::count(store.Attributes, 0xE4), 63);
    EXPECT_EQ(ClipOfSelection(copy).items.size(), 4u);
    // The sprite goes along with the tiles, off the screen here.
    EXPECT_EQ(pasted.lost.sprites, 1u);

    // From an odd place no cell is covered by one sub-palette; the current place may lie below.
    copy.NameCellPos = {3, 31};
    store.Attributes.fill(0);
    EXPECT_EQ(PasteClip(copy, clip).placed.items, 3u);
    EXPECT_EQ(std::ranges::count(store.Attributes, 0), 64);
}

TEST(Clipboard, PutsSpritesBesideOthers) {
    WorkingCopy copy;
    std::vector<TileItem>& sprites = copy.Store().SpriteTileList;
    const DesignClip clip{.sprites = {{.X = 90, .Y = 90}, {.X = 98, .Y = 94}}};
    const auto paste = [&](Pos cell) {
        copy.NameCellPos = cell;
        const Pasted pasted = PasteClip(copy, clip);
        return std::pair{pasted.lost.sprites, Pos{sprites.back().X, sprites.back().Y}};
    };
    // The line below its Y byte is the cell's first.
    EXPECT_EQ(paste({2, 3}), (std::pair{size_t{0}, Pos{24, 27}}));
    EXPECT_EQ(paste({2, 3}), (std::pair{size_t{0}, Pos{28, 31}}));
    EXPECT_EQ(paste({0, 0}).second, (Pos{8, 5})) << "the topmost line is none of a sprite";
    EXPECT_EQ(paste({30, 29}).second, (Pos{248, 235}));
    EXPECT_EQ(paste({30, 29}).second, (Pos{248, 235})) << "no place is left";
    sprites.resize(254);
    EXPECT_EQ(paste({9, 9}), (std::pair{size_t{1}, Pos{72, 71}}));
}

TEST(Clipboard, ReachesAnotherSessionByteForByte) {
    const std::vector<uint8_t> bytes = StoredClip(ClipOfSelection(Furnished()));
    EditSession to;
    const auto clip = ReadClip(bytes);
    ASSERT_TRUE(clip.has_value());
    EXPECT_EQ(*clip, ClipOfSelection(Furnished()));
    to.Run([&](WorkingCopy& copy) {
        copy.NameCellPos = {4, 4};
        copy.BkgTilePos = {1, 2};
        copy.SpTilePos = {0, 4};
        return PasteClip(copy, *clip).stale;
    });
    EXPECT_EQ(StoredClip(ClipOfSelection(to.Copy())), bytes)
        << "the same places, the same sub-palettes";
}

TEST(Clipboard, RefusesWhatIsNoClip) {
    const std::vector<uint8_t> good = StoredClip(ClipOfSelection(Furnished()));
    const auto with = [&](size_t at, int byte) {
        std::vector<uint8_t> bytes = good;
        bytes[at] = static_cast<uint8_t>(byte);
        return ReadClip(bytes);
    };
    EXPECT_FALSE(with(0, 7)) << "the mark";
    EXPECT_FALSE(with(8, 2)) << "a later version";
    EXPECT_FALSE(with(28, 18)) << "a size that leads elsewhere";
    EXPECT_FALSE(ReadClip({}) || ReadClip(std::span(good).first(good.size() - 1)));
    std::vector<uint8_t> bytes = good;
    AppendChunk(bytes, 77, std::vector<uint8_t>(5));
    EXPECT_TRUE(ReadClip(bytes)) << "of another type";
    AppendChunk(bytes, 40, std::vector<uint8_t>(16));
    EXPECT_FALSE(ReadClip(bytes)) << "a tile without its number";
    bytes = good;
    while (bytes.size() < 100'000)
        bytes.insert(bytes.end(), good.begin() + 16, good.end());
    EXPECT_FALSE(ReadClip(bytes)) << "more than fits a screen";
}

TEST(Clipboard, IsAPictureForOtherPrograms) {
    WorkingCopy copy = Furnished();
    DesignStore& store = copy.Store();
    store.SpritePalette[0] = 0x0F;
    FillTile(store, kBkg, 5, 0xFF);  // colour 3
    const DesignClip clip = ClipOfSelection(copy);
    const Surface screen = ClipPicture(clip, copy);
    EXPECT_TRUE(screen.Width() == 24 && screen.Height() == 27) << "tiles and the sprite";
    EXPECT_EQ(screen.At({20, 4}), SystemColour(store.BkgPalette[1 * 4 + 3]));
    EXPECT_EQ(screen.At({20, 12}), SystemColour(0x0F)) << "no tile";
    const Surface tiles =
        ClipPicture({.bkgTiles = clip.bkgTiles, .spriteTiles = clip.spriteTiles}, copy);
    EXPECT_TRUE(tiles.Width() == 16 && tiles.Height() == 24);
}

}  // namespace
}  // namespace bw
