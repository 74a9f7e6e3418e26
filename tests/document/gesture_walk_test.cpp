// Long runs of events as no user makes them.

#include <algorithm>
#include <array>
#include <random>

#include <gtest/gtest.h>

#include "designer/document/name_table_picture.h"
#include "designer/document/small_views.h"
#include "gesture_bench.h"

namespace bw {
namespace {

// All that a window shows, redrawn as the views' names say.
struct Screens {
    TileImage tiles;
    NameTablePicture nameTable;
    std::vector<Surface> views = {MakePatternView(), MakePatternView(),   MakeTileEditor(),
                                  MakeTileEditor(),  MakeAttributeView(), MakePaletteView(),
                                  MakePaletteView(), MakeSystemPalette(), MakeStrip(),
                                  MakeStrip()};
    Surface font{kTablePixels, kTablePixels};

    void Redraw(GestureBench& bench, Views stale) {
        const WorkingCopy& copy = bench.Copy();
        const DesignStore& store = copy.Store();
        const auto bands = bench.mouse.Bands();
        const auto band = [&](RubberBand RubberBands::*which) {
            return bands ? std::optional((*bands).*which) : std::nullopt;
        };
        const auto all = [&](View view) {
            return SubPalettes{0, stale.Has(view) ? kSubPaletteCount : 0};
        };
        tiles.Redraw(store.ChrData, store.BkgPalette, store.SpritePalette, all(View::kBkgTiles),
                     all(View::kSpriteTiles));
        using enum PatternTable;
        if (stale.Has(View::kNameTable)) {
            nameTable.Compose(copy, tiles, band(&RubberBands::nameTable));
        }
        if (stale.Has(View::kBkgTileList)) {
            DrawPatternView(views[0], kBackground, copy, tiles, band(&RubberBands::bkgTiles));
        }
        if (stale.Has(View::kSpriteTileList)) {
            DrawPatternView(views[1], kSprites, copy, tiles, band(&RubberBands::spriteTiles));
        }
        if (stale.Has(View::kBkgTileEditor)) DrawTileEditor(views[2], kBackground, copy, tiles);
        if (stale.Has(View::kSpriteTileEditor)) DrawTileEditor(views[3], kSprites, copy, tiles);
        if (stale.Has(View::kAttribute)) DrawAttributeView(views[4], copy);
        if (stale.Has(View::kBkgPalette)) DrawPaletteView(views[5], kBackground, copy);
        if (stale.Has(View::kSpritePalette)) DrawPaletteView(views[6], kSprites, copy);
        if (stale.Has(View::kSystemPalette)) DrawSystemPalette(views[7], copy);
        if (stale.Has(View::kTargetStrip)) DrawTargetStrip(views[8], copy, font);
        // The strip goes with the screen: both show characters through the map.
        if (stale.Has(View::kSourceStrip) || stale.Has(View::kNameTable)) {
            DrawSourceStrip(views[9], copy, tiles);
        }
    }

    // The first view that differs, or -1.
    int Difference(const Screens& other) const {
        const auto same = [](const Surface& a, const Surface& b) {
            return std::ranges::equal(a.Pixels(), b.Pixels());
        };
        for (size_t i = 0; i < views.size(); ++i)
            if (!same(views[i], other.views[i])) return static_cast<int>(i);
        if (!same(nameTable.Picture(), other.nameTable.Picture())) return 10;
        return same(tiles.Picture(), other.tiles.Picture()) ? -1 : 11;
    }
};

class Walk {
  public:
    explicit Walk(uint32_t seed) : random_(seed) {
        DesignStore& store = bench_.Store();
        for (uint8_t& byte : store.ChrData)
            byte = static_cast<uint8_t>(Below(256));
        store.DefaultChrData = store.ChrData;
        SetDefaultCharMap(store);
        store.CaptionText = u"A CAPTION";
        store.ArrowTile = {.X = 60, .Y = 64, .Tile = 31};
        store.ArrowTileList.assign(4, {.X = 50, .Y = 60, .Tile = 2});
        for (int i = 0; i < 12; ++i) {
            store.BkgTileList.push_back({.X = Below(32), .Y = Below(30), .Tile = 7});
            store.SpriteTileList.push_back({.X = Below(256), .Y = 1 + Below(230), .Tile = 9});
            store.CustomText.push_back({.X = Below(40) - 4, .Y = Below(30), .Text = u"TEXT"});
        }
        WorkingCopy& copy = bench_.Copy();
        copy.ItemTextList = {u"ONE", u"", u"TWO"};
        copy.ShowPageNumber = copy.DragText = true;
        // As undo gives it: the palette entry in use follows the attributes.
        ApplyWorkState(bench_.State(), copy);
    }

    int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

    Point AnyPoint() {
        switch (Below(8)) {
            case 0:
                return {Below(1200) - 50, Below(1000) - 50};
            case 1:
                return {static_cast<int>(random_()), static_cast<int>(random_())};
            case 2:
                return last_;
            default: {
                const auto control = static_cast<Control>(Below(kControlCount));
                const Grid cells = CellsOf(control);
                return bench_.In(control, Below(cells.columns), Below(cells.rows),
                                 {Below(16), Below(16)});
            }
        }
    }

    Views Event() {
        last_ = AnyPoint();
        bench_.time += std::chrono::milliseconds(Below(30));
        const Keys keys{Below(4) == 0, Below(4) == 0};
        switch (Below(16)) {
            case 0:
                return bench_.mouse.DoubleClick(bench_.Event(last_, keys));
            case 1:
                return bench_.mouse.MiddlePress();
            case 2:
                return Below(3) == 0 ? bench_.mouse.ShiftKeyDown() : bench_.mouse.ShiftKeyUp();
            case 3:
                return Switch();
            case 4:
            case 5:
            case 6:
            case 7:
                return bench_.Press(last_, keys);
            case 8:
            case 9:
            case 10:
            case 11:
                return bench_.Release(last_, keys);
            default:
                return bench_.Move(last_, keys);
        }
    }

    // What the check boxes beside the views switch.
    Views Switch() {
        WorkingCopy& copy = bench_.Copy();
        const std::array<bool WorkingCopy::*, 10> switches = {
            &WorkingCopy::DragText,          &WorkingCopy::QuickReplaceFromBkg,
            &WorkingCopy::QuickReplaceToBkg, &WorkingCopy::QuickReplaceToSprites,
            &WorkingCopy::QuickAction,       &WorkingCopy::Show_Bg_Tile,
            &WorkingCopy::Show_Sp_Tile,      &WorkingCopy::Show_Cursor,
            &WorkingCopy::Show_Caption,      &WorkingCopy::Show_List};
        for (const auto which : switches)
            if (Below(3) == 0) copy.*which = Below(3) != 0;
        return Views::All();
    }

    void CheckInvariants() {
        const WorkingCopy& copy = bench_.Copy();
        const DesignStore& store = copy.Store();
        const auto on = [](Pos pos, int columns, int rows) {
            return pos.X >= 0 && pos.X < columns && pos.Y >= 0 && pos.Y < rows;
        };
        EXPECT_TRUE(on(copy.AttrBytePos, 8, 8) && on(copy.AttrCellPos, 16, 16) &&
                    on(copy.AttrQuadrantPos, 2, 2) && on(copy.BkgPalettePos, 16, 1) &&
                    on(copy.SpPalettePos, 16, 1) && on(copy.SystemPalettePos, 16, 4) &&
                    on(copy.BkgTilePos, 16, 16) && on(copy.SpTilePos, 16, 16) &&
                    on(copy.MapSourcePos, 64, 1) && on(copy.MapTargetPos, 64, 1) &&
                    on(copy.NameCellPos, 32, 32));
        const TileItem& cursor = store.ArrowTile;
        EXPECT_TRUE(cursor.X >= 0 && cursor.X < 256 && cursor.Y >= 1 && cursor.Y < 240);
        EXPECT_EQ(store.ArrowTileList.size(), 4u);
        EXPECT_TRUE(on(copy.document.CaptionPos, 32, 30) && on(copy.document.ItemPos, 32, 28) &&
                    on(copy.document.PageNumberPos, 30, 30));
        const bool dragging = bench_.mouse.Mode() == MouseMode::kDragBkgTile ||
                              bench_.mouse.Mode() == MouseMode::kDragSpriteTile;
        EXPECT_EQ(bench_.mouse.DraggedPicture().shown, dragging);
        EXPECT_EQ(copy.PlacedText.has_value(), bench_.mouse.Mode() == MouseMode::kDragText);
        if (bench_.mouse.Captured()) return;
        // Between gestures the history knows all that has happened.
        const WorkState state = bench_.State();
        const std::pair place{bench_.session.Steps().Count(), bench_.session.Steps().Index()};
        EXPECT_TRUE(lastState_.empty() || state == lastState_ || place != lastPlace_);
        lastState_ = state;
        lastPlace_ = place;
    }

    GestureBench bench_;

  private:
    std::mt19937 random_;
    Point last_;
    WorkState lastState_;
    std::pair<size_t, size_t> lastPlace_;
};

TEST(GestureWalk, KeepsItsBoundsAndLeadsBackToItsStart) {
    for (const uint32_t seed : {1u, 2u, 3u}) {
        Walk walk(seed);
        GestureBench& bench = walk.bench_;
        const WorkState start = bench.State();
        for (int i = 0; i < 4000 && !testing::Test::HasFailure(); ++i) {
            walk.Event();
            walk.CheckInvariants();
        }
        bench.mouse.ShiftKeyUp();
        bench.Release(kNowhere);
        const size_t steps = bench.session.Steps().Count();
        EXPECT_GT(steps, 500u);
        const WorkState last = bench.State();
        while (bench.session.Steps().CanUndo())
            bench.session.Undo();
        EXPECT_EQ(bench.State(), start) << seed;
        while (bench.session.Steps().CanRedo())
            bench.session.Redo();
        // The way an undo leaves it: with the palette entry that belongs to the attributes.
        WorkingCopy expected;
        ApplyWorkState(last, expected);
        EXPECT_EQ(bench.State(), BuildWorkState(expected)) << seed;
    }
}

TEST(GestureWalk, NamesEveryViewThatHasChanged) {
    Walk walk(4);
    Screens shown;
    shown.Redraw(walk.bench_, Views::All());
    for (int i = 0; i < 700; ++i) {
        shown.Redraw(walk.bench_, walk.Event());
        Screens fresh;
        fresh.Redraw(walk.bench_, Views::All());
        ASSERT_EQ(shown.Difference(fresh), -1) << "event " << i;
    }
}

}  // namespace
}  // namespace bw
