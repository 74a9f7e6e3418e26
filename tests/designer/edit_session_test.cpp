#include "designer/history/edit_session.h"

#include <gtest/gtest.h>

#include "designer/history/work_state.h"
#include "designer/model/chunk_file.h"
#include "designer/model/stored_numbers.h"
#include "designer/tools/text_tools.h"

namespace bw {
namespace {

// Every field of a state away from its default.
WorkingCopy FullCopy() {
    WorkingCopy copy;
    DesignStore& store = copy.Store();
    for (size_t i = 0; i < kChrDataSize; ++i)
        store.ChrData[i] = static_cast<uint8_t>(i * 7 + i / 256);
    store.DefaultChrData = store.ChrData;
    store.Attributes.fill(0x1B);
    store.BkgPalette.fill(0x2A);
    store.SpritePalette.fill(0x15);
    SetDefaultCharMap(store);
    store.BkgTileSelected[9] = store.SpriteTileSelected[200] = 1;
    store.BkgTileList = {{4, 1, 2, 0, 3}, {9, 0, 0, 1}};
    store.SpriteTileList = {{2, 100, 90, 0, 7, 2, 5}};
    store.ArrowTile = {8, 30, 40, 0, 31};
    store.ArrowTileList.assign(4, {6, 50, 60, 0, 2});
    store.CustomText = {{3, -1, 9, u"TEXT"}};
    store.CaptionText = u"CAPTION";
    store.BigSprite = copy.document.BigCursor = 1;
    int32_t x = 0;
    for (Pos* pos : {&copy.document.CaptionPos, &copy.document.PageNumberPos,
                     &copy.document.ItemPos, &copy.AttrBytePos, &copy.AttrCellPos, &copy.BkgTilePos,
                     &copy.BkgPixelPos, &copy.SpTilePos, &copy.SpPixelPos, &copy.NameCellPos})
        *pos = {++x % 8, 7 - x % 8};
    copy.SpPalettePos.X = 6;
    copy.MapSourcePos.X = 63;
    copy.MapTargetPos.X = 62;
    SynchroniseCursors(copy);
    return copy;
}

TEST(WorkState, HoldsEverythingAndReadsBackTheSame) {
    const WorkState state = BuildWorkState(FullCopy());
    EXPECT_TRUE(Read32(state, 0) == 16 && Read32(state, 4) == 2 && Read32(state, 8) == 1);
    EXPECT_EQ(Read32(state, 12), state.size() - 16);
    std::vector<uint32_t> types;
    for (const ChunkView& chunk : ReadChunks(std::span(state).subspan(16)).chunks)
        types.push_back(chunk.type);
    EXPECT_EQ(types, (std::vector<uint32_t>{12, 12, 13, 1,  2,  3,  9,  8,  10, 11, 14, 15,
                                            15, 15, 15, 4,  6,  17, 18, 19, 20, 21, 22, 23,
                                            24, 25, 26, 27, 28, 29, 30, 32, 31, 33, 34}));
    WorkingCopy other;
    ASSERT_TRUE(ApplyWorkState(state, other));
    EXPECT_EQ(BuildWorkState(other), state);
    EXPECT_EQ(other.Store().BkgTileList[1].Index, 1u) << "numbered anew";
    EXPECT_EQ(other.Store().ArrowTileList[0].Index, 6u) << "as it stands";
    EXPECT_EQ(other.nextBkgIndex, 2u);

    WorkingCopy renumbered = FullCopy();
    renumbered.Store().SpriteTileList[0].Index = 77;
    EXPECT_EQ(BuildWorkState(renumbered), state) << "no difference";
    renumbered.NameCellPos = {0, 0};
    EXPECT_NE(BuildWorkState(renumbered), state) << "places are part of it";
}

TEST(WorkState, DamagedOnesChangeNothingButForeignOnesEmptyTheLists) {
    const WorkState state = BuildWorkState(FullCopy());
    std::vector<WorkState> damages(3, state);
    damages[0][12] ^= 0x80;
    damages[1][16 + 12] ^= 0x80;
    damages[2][3 * 36 + 16 + 12] ^= 0x80;
    for (size_t size : {size_t{15}, size_t{16}, size_t{60}, state.size() - 1})
        damages.emplace_back(state.begin(), state.begin() + static_cast<std::ptrdiff_t>(size));
    for (const WorkState& damaged : damages) {
        WorkingCopy copy = FullCopy();
        EXPECT_FALSE(ApplyWorkState(damaged, copy)) << &damaged - damages.data();
        EXPECT_EQ(BuildWorkState(copy), state);
    }
    for (const WorkState& foreign : {WorkState(), WorkState(40, 7)}) {
        WorkingCopy copy = FullCopy();
        EXPECT_FALSE(ApplyWorkState(foreign, copy));
        WorkingCopy emptied = FullCopy();
        DesignStore& store = emptied.Store();
        store.BkgTileList = store.SpriteTileList = store.ArrowTileList = {};
        store.CustomText = {};
        EXPECT_EQ(BuildWorkState(copy), BuildWorkState(emptied));
    }
}

TEST(WorkState, PlacesStayOnTheirFieldsAndTheCursorIsRebuilt) {
    WorkingCopy copy = FullCopy();
    copy.Store().ArrowTileList.clear();
    copy.BkgTilePos = {-1, 99};
    copy.SpPalettePos = {16, 3};
    copy.AttrBytePos = {1000, 1000};
    copy.MapSourcePos = {-5, 0};
    ASSERT_TRUE(ApplyWorkState(BuildWorkState(copy), copy));
    EXPECT_TRUE(copy.BkgTilePos == (Pos{0, 15}) && copy.SpPalettePos == (Pos{15, 0}) &&
                copy.AttrBytePos == (Pos{7, 7}) && copy.MapSourcePos == Pos());
    EXPECT_EQ(copy.Store().ArrowTileList.size(), 4u);
}

TEST(EditSession, StepsLeftEarlyLeaveNothing) {
    EditSession session(FullCopy());
    session.Run(ResetDesign);
    session.Undo();
    session.RunWithoutStep([](WorkingCopy& copy) { copy.PlacedText.emplace().X = 3; });
    const WorkState before = BuildWorkState(session.Copy());
    const auto change = [](WorkingCopy& copy) -> Views {
        ResetTexts(copy);
        copy.BkgPalettePos.X = 3;
        copy.nextBkgIndex = 99;
        copy.Show_List = false;
        copy.ItemTextList = {u"ITEM"};
        copy.PlacedText.reset();
        throw 1;
    };
    EXPECT_THROW(session.Run(change), int);
    EXPECT_EQ(BuildWorkState(session.Copy()), before);
    const WorkingCopy& copy = session.Copy();
    EXPECT_EQ(copy.nextBkgIndex, 2u) << "not in a state";
    EXPECT_TRUE(copy.Show_List && copy.ItemTextList.empty() && copy.PlacedText->X == 3);
    EXPECT_TRUE(session.Steps().Count() == 2 && session.Steps().CanRedo());
    session.Run(ClearTexts);
    session.Undo();
    EXPECT_EQ(BuildWorkState(session.Copy()), before) << "the next step begins there";
}

}  // namespace
}  // namespace bw
