// The screen as the designer's window shows it and as the console does: our samples, and designs
// made by the window's mouse. All pixels of the window's picture but those under a mark of the
// designer, such as the frames around the current places.
#include <QAbstractButton>
#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <algorithm>
#include <array>
#include <cstdlib>

#include <gmock/gmock.h>

#include "builder/design_check/console_sprites.h"
#include "console/menu_walk.h"
#include "console_picture.h"
#include "designer/pictures/name_table_picture.h"
#include "designer/window/design_ids.h"
#include "designer_window/designer_bench.h"
#include "samples.h"

namespace bw::console {
namespace {

using enum Control;

// Of the window's pixels; the others lie under a mark, or flicker.
constexpr size_t kEnough = size_t{kNameTableWidth} * kNameTableHeight / 100 * 99;

struct Painter : DesignerBench {
    Painter()
        : DesignerBench(
              {u"Amber", u"Basalt", u"Cobalt", u"Dolomite", u"Emerald", u"Flint", u"Garnet"}) {}

    Point In(Control view, Pos cell) const {
        const Point corner = layout.Corner(view, cell);
        return {corner.x + 7, corner.y + 7};
    }
    void Drag(const std::vector<Point>& path, Qt::KeyboardModifiers keys = {}) {
        Mouse(QEvent::MouseButtonPress, path.front(), Qt::LeftButton, Qt::LeftButton, keys, Now());
        for (const Point at : path)
            Mouse(QEvent::MouseMove, at, Qt::NoButton, Qt::LeftButton, keys, Now());
        Mouse(QEvent::MouseButtonRelease, path.back(), Qt::LeftButton, {}, keys, Now());
    }
    void Click(Control view, Pos cell) { Drag({In(view, cell)}); }
    // From a pattern table onto the screen.
    void Lay(Control table, Pos tile, Pos cell, Point beside = {}) {
        const Point to = In(kNameTable, cell);
        Drag({In(table, tile), {to.x + beside.x, to.y + beside.y}});
    }
    uint64_t Now() { return time += 100; }  // milliseconds

    DesignerLayout layout;
    uint64_t time = 0;
};

void Load(Painter& painter, const std::string& sample) {
    painter.dialogs.files = {FileChoice{SampleDesign(sample), 0}};
    painter.Press(kDesignDesignLoad);
    ASSERT_TRUE(QTest::qWaitFor([&] { return painter.session.Steps().Count() != 0; }));
}

// A frame of tiles around a painted one, other colours, texts at other places.
void LayTiles(Painter& painter) {
    painter.Click(kBkgTileList, {3, 9});
    painter.Click(kBkgPalette, {6, 0});
    painter.Drag({painter.In(kBkgTileEditor, {0, 0}), painter.In(kBkgTileEditor, {3, 3}),
                  painter.In(kBkgTileEditor, {4, 7}), painter.In(kBkgTileEditor, {7, 2})});
    painter.Press(kDesignQuickAction);
    painter.Click(kNameTable, {4, 20});
    for (int i = 0; i < 12; ++i)
        painter.Click(kBkgTileList, {3 + i % 3 * 5, i % 3 == 0 ? 9 : 1});
    painter.Press(kDesignQuickAction);
    painter.Click(kBkgPalette, {13, 0});
    painter.Click(kSystemPalette, {10, 2});
    painter.Drag({painter.In(kNameTable, {4, 20}), painter.In(kNameTable, {9, 21})},
                 Qt::ControlModifier);
    painter.Press(kDesignDragText);
    painter.Drag(
        {painter.In(kNameTable, painter.Copy().document.ItemPos), painter.In(kNameTable, {17, 9})});
    painter.Drag({painter.In(kNameTable, painter.Copy().document.CaptionPos),
                  painter.In(kNameTable, {3, 5})});
    painter.Drag({painter.In(kNameTable, {0, 0}), painter.In(kNameTable, {15, 9})});
}

// Sprites in several colours and the large cursor.
void LaySprites(Painter& painter) {
    for (int i = 0; i < 6; ++i) {
        painter.Click(kSpritePalette, {i * 5 % 16 / 4 * 4 + 1, 0});
        painter.Lay(kSpriteTileList, {10 + i, 1}, {3 + 4 * i, 16 + i}, {2 * i, 6});
    }
    painter.Press(kDesignBigCursor);
    painter.Press(kDesignDragText);
    painter.Drag({painter.In(kNameTable, {0, 0}), painter.In(kNameTable, {5, 6})});
    painter.Click(kSpritePalette, {3, 0});
    painter.Click(kSystemPalette, {1, 1});
}

// Tall sprites, a text and the page number.
void LayTall(Painter& painter) {
    painter.Press(kDesignBigSprite);
    for (int i = 0; i < 4; ++i)
        painter.Lay(kSpriteTileList, {1 + 2 * i, 3}, {2 + 5 * i, 18}, {4 * i, 4 * i});
    painter.frame->EditOf(kDesignText).setText(QStringLiteral("TALL AND SMALL"));
    painter.Press(kDesignAddText);
    painter.Press(kDesignDragText);
    painter.Drag({painter.In(kNameTable, {6, 0}), painter.In(kNameTable, {15, 23})});
    painter.Drag({painter.In(kNameTable, painter.Copy().document.PageNumberPos),
                  painter.In(kNameTable, {25, 12})});
    painter.Drag({painter.In(kNameTable, {0, 1}), painter.In(kNameTable, {6, 5})});
}

// On a line with more sprites than the console shows, others are left out in each frame: there the
// pixels that belong to sprites can't be compared with one frame.
class Flicker {
  public:
    explicit Flicker(WorkingCopy copy) : screen_(DrawnScreen(copy)), bare_(screen_) {
        std::vector<ConsoleSprite> sprites = ShownSprites(copy.document);
        std::ranges::move(CursorSprites(copy.document, 0), std::back_inserter(sprites));
        for (const ConsoleSprite& sprite : sprites)
            for (int line = sprite.top; line < std::min(sprite.End(), kScreenHeight); ++line)
                ++onLine_[static_cast<size_t>(line)];
        copy.Show_Sp_Tile = copy.Show_Cursor = false;
        bare_ = DrawnScreen(copy);
    }
    bool Holds(Point at) const {
        return onLine_[static_cast<size_t>(at.y / kScreenScale)] > kMostOnLine &&
               screen_.At(at) != bare_.At(at);
    }

  private:
    static constexpr int kMostOnLine = 8;
    Surface screen_, bare_;
    std::array<int, kScreenHeight> onLine_{};
};

struct WindowCase {
    std::string label;
    BoardType board;
    void (*make)(Painter&);
};

class DesignerWindow : public testing::TestWithParam<WindowCase> {};

TEST_P(DesignerWindow, ShowsWhatTheConsoleShows) {
    const WindowCase& test = GetParam();
    Painter painter;
    ASSERT_NO_FATAL_FAILURE(test.make(painter));
    RunEvents();
    const WorkingCopy shown = painter.Copy();
    const QImage window =
        painter.frame->Of(kNameTable).grab().toImage().convertToFormat(QImage::Format_RGB32);
    if (const char* pictures = std::getenv("BANKWEAVER_SCREENSHOTS"))
        window.save(
            QString::fromStdString(std::string(pictures) + "/" + test.label + "-window.png"));
    ASSERT_EQ(window.size(), QSize(kNameTableWidth, kNameTableHeight));
    painter.dialog->Send(kMessageClose);

    const TemporaryFolder folder;
    CartPlan plan{.board = test.board, .names = painter.names};
    plan.settings.PageSize = 5;
    plan.settings.PageNumber = plan.settings.CustomEnable = true;
    plan.design = painter.Copy().Store();
    plan.store = {std::shared_ptr<void>(), painter.store.get()};
    const ScriptResult console =
        RunOnConsole(PictureRun(BuildCart(plan, folder.Path(), test.label).rom, test.label));

    const Surface screen = DrawnScreen(shown);
    const Surface marked = DrawnScreen(shown, Marks::kWithMarks);
    const Flicker flicker(shown);
    const auto drawn = [&](Point at) {
        return flicker.Holds(at) ? std::nullopt : std::optional(screen.At(at));
    };
    EXPECT_GT(ExpectPicture(console, drawn), kEnough);
    const auto inWindow = [&](Point at) -> std::optional<Colour> {
        if (flicker.Holds(at) || screen.At(at) != marked.At(at)) return std::nullopt;
        return window.pixel(at.x, at.y) & 0xFFFFFF;
    };
    EXPECT_GT(ExpectPicture(console, inWindow), kEnough);
}

// What a console of its own shows of the real cart with an item selected.
QImage RealMenu(const Painter& painter, const std::filesystem::path& folder, uint32_t item) {
    CartPlan plan{.names = painter.names};
    plan.settings = LoadBuildSettings(*painter.store);
    plan.settings.CustomEnable = true;
    DesignDocument handedOn = painter.Copy().document;
    handedOn.store.CaptionText = painter.Copy().captionBox;
    StoreDesign(handedOn, *plan.store);
    plan.design = handedOn.store;
    const auto emulator = FindEmulator();
    auto console = emulator->Start({.rom = BuildCart(plan, folder, "real").rom});
    if (!console || !RunToMenu(**console) || !GoToItem(**console, item, plan.settings.PageSize))
        throw ConsoleFailure("the real menu doesn't start");
    const auto run = (*console)->Run({.picture = true});
    const auto* pixels = reinterpret_cast<const uchar*>(run->picture.pixels.data());
    return QImage(pixels, 256, 240, QImage::Format_RGB32).copy();
}

TEST(DesignerPreview, ShowsTheMenuOfTheRealCartAtTheGameThatWasChosen) {
    const auto emulator = FindEmulator();
    ASSERT_TRUE(emulator) << "the tests need the package " << kEmulatorPackage;
    const TemporaryFolder folder;
    Painter painter;
    auto& screen = ChildOf<QWidget>(*painter.dialog, "preview_screen");
    const auto& words = ChildOf<QLabel>(*painter.dialog, "preview_words");
    const auto shows = [&](uint32_t item) {
        const QImage real = RealMenu(painter, folder.Path(), item);
        return QTest::qWaitFor(
            [&] {
                const QImage shown = screen.grab().toImage().convertToFormat(QImage::Format_RGB32);
                return shown.copy((shown.width() - 256) / 2, 2, 256, 240) == real;
            },
            10000);
    };
    EXPECT_TRUE(shows(0)) << words.text().toStdString();
    QWidget& before = painter.frame->Of(kNameTable);
    before.setFocus();
    QTest::mouseClick(&screen, Qt::LeftButton);
    QTest::keyClick(&screen, Qt::Key_Down, {}, 50);
    QTest::keyClick(&screen, Qt::Key_Down, {}, 50);
    EXPECT_TRUE(shows(2)) << words.text().toStdString();
    EXPECT_EQ(painter.session.Steps().Count(), 0u) << "the arrows aren't the design's";
    LayTiles(painter);
    EXPECT_TRUE(shows(2)) << words.text().toStdString();
    QTest::keyClick(&screen, Qt::Key_Return);
    EXPECT_THAT(words.text().toStdString(), testing::HasSubstr("This preview holds no games"));
    QTest::keyClick(&screen, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(painter.session.Steps().CanRedo()) << "undo is the design's";
    EXPECT_TRUE(shows(2)) << words.text().toStdString();
    QTest::keyClick(&screen, Qt::Key_Escape);
    EXPECT_FALSE(screen.hasFocus());
    EXPECT_TRUE(painter.dialog->isVisible());
}

INSTANTIATE_TEST_SUITE_P(Console, DesignerWindow,
                         testing::Values(WindowCase{"night_sea", BoardType::kCoolboy,
                                                    [](Painter& p) { Load(p, "night_sea"); }},
                                         WindowCase{"loom", BoardType::kCoolgirl,
                                                    [](Painter& p) { Load(p, "loom"); }},
                                         WindowCase{"tiles", BoardType::kMindkids, LayTiles},
                                         WindowCase{"sprites", BoardType::kCoolboy, LaySprites},
                                         WindowCase{"tall", BoardType::kCoolgirl, LayTall}),
                         [](const auto& param) { return param.param.label; });

}  // namespace
}  // namespace bw::console
