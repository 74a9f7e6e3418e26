// Long runs of events as no user makes them.

#include <algorithm>
#include <array>
#include <functional>
#include <random>

#include <gtest/gtest.h>

#include "designer/clipboard/design_clip.h"
#include "designer/gestures/pointer_text.h"
#include "designer/pictures/designer_views.h"
#include "designer/tools/attribute_tools.h"
#include "designer/tools/list_tools.h"
#include "designer/tools/map_tools.h"
#include "designer/tools/selection_tools.h"
#include "designer/tools/text_tools.h"
#include "designer/tools/tile_tools.h"
#include "gesture_bench.h"

namespace bw {
namespace {

using Command = std::function<Views(WorkingCopy&)>;

// Every command, some of them in several forms.
std::vector<Command> EveryCommand() {
    std::vector<Command> commands;
    for (int tool = 0; tool <= static_cast<int>(TileTool::kPixelsDown); ++tool)
        commands.push_back(
            [tool](WorkingCopy& c) { return ApplyTileTool(c, static_cast<TileTool>(tool)); });
    for (const PatternTable table : {PatternTable::kBackground, PatternTable::kSprites}) {
        const auto with = [&](auto command) {
            commands.push_back([=](WorkingCopy& c) { return command(c, table); });
        };
        with(CopySelectedTiles);
        with(ResetPatternTable);
        with(SelectAllItems);
        with(InvertItemSelection);
        with(ClearItems);
        with(CopyFont);
        with(ResetPalette);
        with([](WorkingCopy& c, PatternTable t) { return MoveItems(c, t, 1, -8); });
        with([](WorkingCopy& c, PatternTable t) { return PaintPixel(c, t, {3, 5}); });
    }
    for (int to = 0; to < 4; ++to)
        commands.push_back(
            [to](WorkingCopy& c) { return ShiftAttributes(c, static_cast<Direction>(to)); });
    for (Views (*command)(WorkingCopy&) :
         {SwapPatternTables, BlankSelectedTiles, RemoveSelectedItems, SwapSpriteTables,
          SwapAllSpriteTables, SplitTallSprites, MakeSpritesOfTiles, MapAllCharacters,
          MapUsedCharacters, ClearUnusedBkgTiles, ClearUnusedSpriteTiles, OrganiseBkgTiles,
          OrganiseSpriteTiles, ResetCharMap, ClearTexts, ResetTexts, ResetAttributes, ResetDesign,
          DeleteSelection}) {
        commands.emplace_back(command);
    }
    commands.push_back([](WorkingCopy& c) { return AddText(c, u"MORE"); });
    commands.push_back([](WorkingCopy& c) { return MoveNameCell(c, {3, -2}); });
    commands.push_back([](WorkingCopy& c) { return PasteClip(c, ClipOfSelection(c)).stale; });
    for (const ArrowStep step : {ArrowStep::kPixel, ArrowStep::kCell})
        commands.push_back([=](WorkingCopy& c) { return MoveSelection(c, {-1, 1}, step); });
    commands.push_back([](WorkingCopy& c) { return SetBigSprite(c, c.Store().BigSprite == 0); });
    commands.push_back([](WorkingCopy& c) { return SetBigCursor(c, c.document.BigCursor == 0); });
    commands.push_back([](WorkingCopy& c) { return SetSpriteFlag(c, 1, true); });
    return commands;
}

// The first view that differs, or nothing.
std::optional<View> Difference(const DesignerViews& a, const DesignerViews& b) {
    for (uint32_t bit = 1; bit < static_cast<uint32_t>(View::kCheckBoxes); bit <<= 1) {
        const auto view = static_cast<View>(bit);
        if (!std::ranges::equal(a.Of(view).Pixels(), b.Of(view).Pixels())) return view;
    }
    return std::nullopt;
}

class Walk : public GestureBench {
  public:
    explicit Walk(uint32_t seed) : random_(seed) {
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
        copy.ItemTextList = {u"ONE", u"", u"TWO"};
        copy.ShowPageNumber = copy.DragText = true;
        // As undo gives it: the current palette entry follows the attributes.
        ApplyWorkState(State(), copy);
    }

    Views Event() {
        last_ = AnyPoint();
        time += std::chrono::milliseconds(Below(30));
        const Keys keys{Below(4) == 0, Below(4) == 0};
        const int kind = Below(17);
        if (kind % 4 == 0) {
            // What is said beforehand changes nothing.
            const WorkState before = State();
            PointerText(copy, layout, mouse, GestureBench::Event(last_, keys), Language::kEnglish);
            EXPECT_EQ(State(), before);
        }
        if (kind == 16) return mouse.RightPress(GestureBench::Event(last_, keys));
        if (kind == 0) return mouse.DoubleClick(GestureBench::Event(last_, keys));
        if (kind == 1) return mouse.MiddlePress();
        if (kind == 2) return Below(3) == 0 ? mouse.ShiftKeyDown() : mouse.ShiftKeyUp();
        if (kind == 3) return Below(2) == 0 ? Switch() : RunCommand();
        if (kind < 7) return Press(last_, keys);
        if (kind < 10) return Release(last_, keys);
        if (kind > 11) return Move(last_, keys);
        Views stale = Press(last_, keys);
        last_ = AnyPoint();
        stale |= Move(last_, keys);
        return stale | Release(last_, keys);
    }

    void CheckInvariants() {
        const auto on = [](Pos pos, int columns, int rows) {
            return pos.X >= 0 && pos.X < columns && pos.Y >= 0 && pos.Y < rows;
        };
        EXPECT_TRUE(on(copy.AttrBytePos, 8, 8) && on(copy.AttrCellPos, 16, 16) &&
                    on(copy.AttrQuadrantPos, 2, 2) && on(copy.BkgPalettePos, 16, 1) &&
                    on(copy.SpPalettePos, 16, 1) && on(copy.SystemPalettePos, 16, 4) &&
                    on(copy.BkgTilePos, 16, 16) && on(copy.SpTilePos, 16, 16) &&
                    on(copy.MapSourcePos, 64, 1) && on(copy.MapTargetPos, 64, 1) &&
                    on(copy.NameCellPos, 32, 32));
        EXPECT_EQ(store.ArrowTileList.size(), 4u);
        EXPECT_TRUE(on({store.ArrowTile.X, store.ArrowTile.Y - 1}, 256, 239) &&
                    on(copy.document.CaptionPos, 32, 30) && on(copy.document.ItemPos, 32, 28) &&
                    on(copy.document.PageNumberPos, 30, 30));
        EXPECT_EQ(Dragged().shown, mouse.Mode() == MouseMode::kDragBkgTile ||
                                       mouse.Mode() == MouseMode::kDragSpriteTile);
        EXPECT_EQ(copy.PlacedText.has_value(), mouse.Mode() == MouseMode::kDragText);
        if (mouse.Captured()) return;
        // Between gestures the history knows all that has happened.
        const WorkState state = State();
        const std::pair place{Steps(), session.Steps().Index()};
        EXPECT_TRUE(lastState_.empty() || state == lastState_ || place != lastPlace_);
        lastState_ = state;
        lastPlace_ = place;
    }

  private:
    int Below(std::ptrdiff_t limit) {
        return static_cast<int>(random_() % static_cast<unsigned>(limit));
    }

    Point AnyPoint() {
        const int kind = Below(8);
        if (kind == 0) return {Below(1200) - 50, Below(1000) - 50};
        if (kind == 1) return {static_cast<int>(random_()), static_cast<int>(random_())};
        if (kind < 4) {
            return {static_cast<int16_t>(last_.x) + Below(40) - 20,
                    static_cast<int16_t>(last_.y) + Below(40) - 20};
        }
        // Most often where things can be dragged from and to.
        constexpr std::array<Control, 3> kBusy = {Control::kNameTable, Control::kBkgTileList,
                                                  Control::kSpriteTileList};
        const auto control = Below(2) == 0 ? static_cast<Control>(Below(kControlCount))
                                           : kBusy[static_cast<size_t>(Below(3))];
        const Grid cells = CellsOf(control);
        return In(control, Below(cells.columns), Below(cells.rows), {Below(16), Below(16)});
    }

    Views RunCommand() {
        if (mouse.Captured()) return {};
        if (Below(8) == 0) return Below(2) == 0 ? session.Undo() : session.Redo();
        const Command& command = commands_[static_cast<size_t>(Below(std::ssize(commands_)))];
        return session.Run([&](WorkingCopy& edited) {
            Views stale = command(edited);
            // Some make two items of each.
            if (edited.Store().SpriteTileList.size() > 100) stale |= ClearItems(edited, kSp);
            if (edited.Store().CustomText.size() > 100) stale |= ClearTexts(edited);
            if (edited.Store().BkgTileList.size() > 500) stale |= ClearItems(edited, kBkg);
            return stale;
        });
    }

    // What the check boxes beside the views switch.
    Views Switch() {
        for (const auto which :
             {&WorkingCopy::DragText, &WorkingCopy::QuickReplaceFromBkg,
              &WorkingCopy::QuickReplaceToBkg, &WorkingCopy::QuickReplaceToSprites,
              &WorkingCopy::QuickAction, &WorkingCopy::Show_Bg_Tile, &WorkingCopy::Show_Sp_Tile,
              &WorkingCopy::Show_Cursor, &WorkingCopy::Show_Caption, &WorkingCopy::Show_List}) {
            if (Below(3) == 0) copy.*which = Below(3) != 0;
        }
        copy.tileShape = static_cast<TileShape>(Below(4));
        return Views::All();
    }

    std::mt19937 random_;
    const std::vector<Command> commands_ = EveryCommand();
    Point last_;
    WorkState lastState_;
    std::pair<size_t, size_t> lastPlace_;
};

TEST(GestureWalk, KeepsItsBoundsAndLeadsBackToItsStart) {
    for (const uint32_t seed : {1u, 2u, 3u}) {
        Walk walk(seed);
        const WorkState start = walk.State();
        for (int i = 0; i < 4000 && !testing::Test::HasFailure(); ++i) {
            walk.Event();
            walk.CheckInvariants();
        }
        walk.mouse.ShiftKeyUp();
        walk.Release(kNowhere);
        EXPECT_GT(walk.Steps(), 500u);
        const WorkState last = walk.State();
        while (walk.session.Steps().CanUndo())
            walk.session.Undo();
        EXPECT_EQ(walk.State(), start) << seed;
        while (walk.session.Steps().CanRedo())
            walk.session.Redo();
        // The way an undo leaves it: with the palette entry that belongs to the attributes.
        WorkingCopy expected;
        ApplyWorkState(last, expected);
        EXPECT_EQ(walk.State(), BuildWorkState(expected)) << seed;
    }
}

TEST(GestureWalk, NamesEveryViewThatHasChanged) {
    Walk walk(4);
    const auto redraw = [&](DesignerViews& views, Views stale) {
        views.Update(walk.copy, stale, walk.mouse.Bands());
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
