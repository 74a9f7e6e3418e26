// Long runs of events as no user makes them.

#include <algorithm>
#include <array>
#include <random>

#include <gtest/gtest.h>

#include "designer/commands.h"
#include "designer/pictures/designer_views.h"
#include "gesture_bench.h"

namespace bw {
namespace {

// The first view that differs, or nothing.
std::optional<View> Difference(const DesignerViews& a, const DesignerViews& b) {
    for (uint32_t bit = 1; bit < static_cast<uint32_t>(View::kCheckBoxes); bit <<= 1) {
        const auto view = static_cast<View>(bit);
        if (!std::ranges::equal(a.Of(view).Pixels(), b.Of(view).Pixels())) return view;
    }
    return std::nullopt;
}

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
        // As undo gives it: the current palette entry follows the attributes.
        ApplyWorkState(bench_.State(), copy);
    }

    int Below(std::ptrdiff_t limit) {
        return static_cast<int>(random_() % static_cast<unsigned>(limit));
    }

    Point AnyPoint() {
        switch (Below(8)) {
            case 0:
                return {Below(1200) - 50, Below(1000) - 50};
            case 1:
                return {static_cast<int>(random_()), static_cast<int>(random_())};
            case 2:
            case 3:
                return {static_cast<int16_t>(last_.x) + Below(40) - 20,
                        static_cast<int16_t>(last_.y) + Below(40) - 20};
            default: {
                // Most often where things can be dragged from and to.
                constexpr std::array<Control, 3> kBusy = {
                    Control::kNameTable, Control::kBkgTileList, Control::kSpriteTileList};
                const auto control = Below(2) == 0 ? static_cast<Control>(Below(kControlCount))
                                                   : kBusy[static_cast<size_t>(Below(3))];
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
                return Below(2) == 0 ? Switch() : RunCommand();
            case 4:
            case 5:
            case 6:
                return bench_.Press(last_, keys);
            case 7:
            case 8:
            case 9:
                return bench_.Release(last_, keys);
            case 10:
            case 11:
                return Drag(keys);
            default:
                return bench_.Move(last_, keys);
        }
    }

    Views Drag(Keys keys) {
        Views stale = bench_.Press(last_, keys);
        last_ = AnyPoint();
        stale |= bench_.Move(last_, keys);
        return stale | bench_.Release(last_, keys);
    }

    Views RunCommand() {
        if (bench_.mouse.Captured()) return {};
        if (Below(8) == 0) return Below(2) == 0 ? bench_.session.Undo() : bench_.session.Redo();
        const Command& command = commands_[static_cast<size_t>(Below(std::ssize(commands_)))];
        return bench_.session.Run([&](WorkingCopy& copy) {
            DesignStore& store = copy.Store();
            Views stale = command(copy);
            // Some make two items of each.
            if (store.SpriteTileList.size() > 100)
                stale |= ClearItems(copy, PatternTable::kSprites);
            if (store.CustomText.size() > 100) stale |= ClearTexts(copy);
            return stale;
        });
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
    const std::vector<Command> commands_ = EveryCommand();
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
    const auto redraw = [&](DesignerViews& views, Views stale) {
        views.Update(walk.bench_.Copy(), stale, walk.bench_.mouse.Bands());
    };
    DesignerViews shown;
    redraw(shown, Views::All());
    for (int i = 0; i < 1000; ++i) {
        redraw(shown, walk.Event());
        DesignerViews fresh;
        redraw(fresh, Views::All());
        ASSERT_EQ(Difference(shown, fresh), std::nullopt) << "event " << i;
    }
}

}  // namespace
}  // namespace bw
