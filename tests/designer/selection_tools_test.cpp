#include "designer/tools/selection_tools.h"

#include <limits>

#include "design_items.h"
#include "designer/history/edit_session.h"

namespace bw {
namespace {

using testing::ElementsAre;

TileItem Selected(int32_t x, int32_t y) {
    return {.X = x, .Y = y, .Selected = 1};
}

TEST(SelectionTools, DeleteIsOneStepOverListsAndTables) {
    EditSession session;
    session.RunWithoutStep([](WorkingCopy& copy) {
        copy.Store().BkgTileList = {Selected(1, 1), {.X = 2}};
        copy.Store().SpriteTileSelected[9] = 1;
        FillTile(copy.Store(), kSp, 9, 0x77);
    });
    const DesignStore& store = session.Copy().Store();
    EXPECT_TRUE(CanDeleteSelection(session.Copy()));
    session.Run(DeleteSelection);
    EXPECT_THAT(store.BkgTileList, ElementsAre(At(2, 0)));
    EXPECT_THAT(BytesOf(store, kSp, {9}), ElementsAre(0));
    EXPECT_EQ(session.Steps().Count(), 2u);
    EXPECT_FALSE(CanDeleteSelection(session.Copy()));
}

TEST(SelectionTools, ArrowsMoveTheSelectionAsOne) {
    constexpr int32_t kMost = std::numeric_limits<int32_t>::max();
    constexpr int32_t kLeast = std::numeric_limits<int32_t>::min();
    const struct {
        std::vector<Pos> tiles, sprites;
        Point steps;
        ArrowStep step;
        std::vector<Pos> then;  // tiles, sprites
    } cases[] = {
        {{}, {{10, 20}}, {1, -1}, ArrowStep::kPixel, {{11, 19}}},
        {{}, {{10, 20}}, {1, -1}, ArrowStep::kCell, {{18, 12}}},
        {{{3, 4}}, {}, {-1, 1}, ArrowStep::kPixel, {{2, 5}}},
        {{{3, 4}}, {{10, 20}}, {-1, 1}, ArrowStep::kPixel, {{2, 5}, {2, 28}}},
        // The first at an edge stops all; by whole steps.
        {{{3, 4}}, {{7, 20}}, {-1, 1}, ArrowStep::kPixel, {{3, 5}, {7, 28}}},
        {{{31, 29}}, {{10, 20}}, {1, 1}, ArrowStep::kPixel, {{31, 29}, {10, 20}}},
        {{}, {{250, 237}, {3, 3}}, {9, 9}, ArrowStep::kPixel, {{255, 238}, {8, 4}}},
        {{}, {{3, 3}}, {kLeast, kLeast}, ArrowStep::kPixel, {{0, 1}}},
        // What lies outside goes along and stays a number.
        {{{kMost, kLeast}}, {{5, 50}}, {2, -2}, ArrowStep::kPixel, {{kMost, kLeast}, {21, 34}}},
    };
    for (const auto& c : cases) {
        WorkingCopy copy;
        for (const Pos at : c.tiles)
            copy.Store().BkgTileList.push_back(Selected(at.X, at.Y));
        for (const Pos at : c.sprites)
            copy.Store().SpriteTileList.push_back(Selected(at.X, at.Y));
        copy.Store().SpriteTileList.push_back({.X = 77, .Y = 77});
        EXPECT_TRUE(CanMoveSelection(copy));
        MoveSelection(copy, c.steps, c.step);
        std::vector<Pos> then;
        for (const auto* list : {&copy.Store().BkgTileList, &copy.Store().SpriteTileList})
            for (const TileItem& item : *list)
                if (item.IsSelected()) then.push_back({item.X, item.Y});
        EXPECT_EQ(then, c.then) << &c - cases;
        EXPECT_THAT(copy.Store().SpriteTileList.back(), At(77, 77));
    }
}

TEST(SelectionTools, ArrowsMoveTheCursorInUse) {
    WorkingCopy copy;
    DesignStore& store = copy.Store();
    store.ArrowTile = Selected(60, 2);
    store.ArrowTileList.assign(4, {.X = 52, .Y = 60});
    MoveSelection(copy, {1, -5}, ArrowStep::kPixel);
    EXPECT_THAT(store.ArrowTile, At(61, 1)) << "stays on the screen";
    EXPECT_THAT(store.ArrowTileList, ElementsAre(At(53, 1), At(61, 1), At(53, 9), At(61, 9)));
    copy.document.BigCursor = 1;
    EXPECT_FALSE(CanMoveSelection(copy));
    store.ArrowTileList[3].Selected = 1;
    MoveSelection(copy, {1, 1}, ArrowStep::kCell);
    EXPECT_THAT(store.ArrowTileList, ElementsAre(At(61, 9), At(69, 9), At(61, 17), At(69, 17)));
    EXPECT_THAT(store.ArrowTile, At(69, 13));
    copy.NameCellPos = {31, 31};
    MoveNameCell(copy, {1, -1});
    EXPECT_EQ(copy.NameCellPos, (Pos{31, 29})) << "back from below the screen";
}

}  // namespace
}  // namespace bw
