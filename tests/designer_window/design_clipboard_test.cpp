#include "designer/window/design_clipboard.h"

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QWidget>
#include <cstdlib>
#include <memory>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/text.h"

namespace bw {
namespace {

// A session without a window.
class Host : public DesignHost {
  public:
    const EditSession& Session() const override { return session; }
    const GestureMachine& Gestures() const override { return mouse; }
    void Run(Command command) override { session.Run(command); }
    void RunWithoutStep(Command command) override { session.RunWithoutStep(command); }
    void GoToStep(size_t) override {}
    void WhenIdle(std::function<void()> work) override { work(); }
    void Reveal(Control, const Rect&) override {}
    void Tell(std::u16string_view line) override { told = ToUtf8(line); }
    UserDialogs& Dialogs() override { std::abort(); }
    SettingsStore& Store() override { std::abort(); }
    BackgroundTasks& Tasks() override { std::abort(); }
    Language CurrentLanguage() const override { return Language::kEnglish; }
    QWidget& Window() override { return window; }

    WorkingCopy& Copy() {
        return *session.RunWithoutStep([](WorkingCopy& copy) { return &copy; });
    }

    EditSession session;
    DesignerLayout layout;
    GestureMachine mouse{session, layout};
    QWidget window;
    std::string told;
};

void Select(WorkingCopy& copy) {
    copy.Store().BkgTileSelected[0x21] = 1;
    copy.Store().ChrData[0x21 * kTileBytes] = 0xFF;
    copy.Store().SpriteTileList = {{.X = 40, .Y = 50, .Selected = 1}, {.X = 48, .Y = 50}};
}

// What a paste gives to the import of pictures; nothing: it wasn't asked.
QImage Paste(DesignHost& host) {
    QImage given;
    PasteSelection(host, [&](QImage image) { given = std::move(image); });
    return given;
}

TEST(DesignClipboard, CutsInOneSessionAndPastesInAnother) {
    Host from;
    Select(from.Copy());
    const DesignClip clip = ClipOfSelection(from.Copy());
    CutSelection(from);
    EXPECT_EQ(from.told, "Cut: 1 tile(s), 1 sprite(s).");
    EXPECT_EQ(QApplication::clipboard()->image().size(), QSize(8, 8)) << "of the screen";

    Host to;
    to.Copy().BkgTilePos = {15, 15};
    to.Copy().NameCellPos = {31, 29};
    EXPECT_TRUE(Paste(to).isNull());
    EXPECT_EQ(to.told, "Pasted: 1 tile(s), 1 sprite(s).");
    EXPECT_EQ(CountsOf(ClipOfSelection(to.Copy())), CountsOf(clip));
    EXPECT_EQ(to.session.Steps().Count(), 2u);
    to.Copy().Store().SpriteTileList.resize(255);
    QApplication::clipboard()->setMimeData(MakeClipData(clip, from.Copy()));
    Paste(to);
    EXPECT_EQ(to.told, "Pasted: 1 tile(s). No room was left for 1 sprite(s).");
}

TEST(DesignClipboard, TakesPicturesAndSaysWhatElseItWants) {
    Host host;
    QImage image(3, 2, QImage::Format_RGB32);
    image.fill(Qt::red);
    QApplication::clipboard()->setImage(image);
    EXPECT_EQ(Paste(host).size(), QSize(3, 2));
    QApplication::clipboard()->setText(QStringLiteral("tiles"));
    EXPECT_TRUE(Paste(host).isNull());
    EXPECT_THAT(host.told, testing::StartsWith("The clipboard holds nothing to paste here"));
    // A damaged clip beside a picture: the picture counts.
    auto* data = new QMimeData;
    data->setData(QLatin1String(kClipMime), QByteArray(40, 'x'));
    data->setImageData(image);
    QApplication::clipboard()->setMimeData(data);
    EXPECT_FALSE(Paste(host).isNull());
    EXPECT_EQ(host.session.Steps().Count(), 0u);
}

TEST(DesignClipboard, KeysMoveAndDelete) {
    Host host;
    Select(host.Copy());
    MoveByArrow(host, {1, 0}, false);
    MoveByArrow(host, {0, -1}, true);
    const TileItem& sprite = host.Copy().Store().SpriteTileList[0];
    EXPECT_TRUE(sprite.X == 41 && sprite.Y == 42);
    DeleteSelected(host);
    MoveByArrow(host, {1, 0}, false);
    EXPECT_EQ(host.Copy().NameCellPos, (Pos{1, 0}));
    EXPECT_EQ(host.session.Steps().Count(), 4u) << "the current place is no step";
    CutSelection(host);
    EXPECT_EQ(host.told, "Copied: 1 tile(s).") << "the tile in use stays";
}

}  // namespace
}  // namespace bw
