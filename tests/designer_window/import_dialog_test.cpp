// The dialog between a picture and the screen: the newest options win, and what it shows is what is
// put in.
#include "designer/window/import_dialog.h"

#include <gmock/gmock.h>

#include "common/temporary_folder.h"
#include "designer/files/surface_png.h"
#include "shell/framework/messages.h"
#include "shell/qt_testing.h"
#include "shell/scripted_dialogs.h"
#include "support/files.h"

namespace bw {
namespace {

constexpr int kNumbers = 41404, kKeepPalettes = 41405, kKeepTiles = 41406, kColumn = 41409;

class Host : public DesignHost {
  public:
    EditSession session;
    ScriptedDialogs dialogs;

    const EditSession& Session() const override { return session; }
    void Run(Command command) override { session.Run(command); }
    void WhenIdle(std::function<void()> work) override { work(); }
    UserDialogs& Dialogs() override { return dialogs; }
    BackgroundTasks& Tasks() override { return tasks_; }
    Language CurrentLanguage() const override { return Language::kEnglish; }
    QWidget& Window() override { return window_; }

    const GestureMachine& Gestures() const override { NotAsked(); }
    void RunWithoutStep(Command) override { NotAsked(); }
    void GoToStep(size_t) override { NotAsked(); }
    void Reveal(Control, const Rect&) override { NotAsked(); }
    void Tell(std::u16string_view) override { NotAsked(); }
    SettingsStore& Store() override { NotAsked(); }

  private:
    [[noreturn]] static void NotAsked() { throw std::logic_error("nothing that an import needs"); }

    QWidget window_;
    UiQueue queue_;
    BackgroundTasks tasks_{queue_};
};

Picture Stripes() {
    Picture picture{.width = 64, .height = 48, .pixels = {}};
    for (uint32_t pixel = 0; pixel < 64 * 48; ++pixel)
        picture.pixels.push_back(pixel % 64 * 0x040201 + pixel / 64 * 0x000400);
    return picture;
}

QString Numbers(QWidget& window) {
    return ControlOf<QLabel>(window, kNumbers).text();
}

// Opens the dialog, lets `act` have its way and then ends it by the button.
std::optional<ImportResult> Ask(int button, const std::function<void(QWidget&)>& act,
                                Picture picture = Stripes()) {
    const WorkingCopy empty;
    CImportDialog dialog(std::move(picture), empty, {2, 4}, Language::kEnglish);
    WhenModal([&](QWidget& window) {
        act(window);
        auto& pressed = ControlOf<QPushButton>(window, button);
        EXPECT_TRUE(QTest::qWaitFor([&] { return pressed.isEnabled(); }, 20'000));
        if (button == kEndOk) {
            pressed.click();
        } else {
            QTest::keyClick(&window, Qt::Key_Escape);
        }
    });
    return dialog.Ask();
}

TEST(ImportDialog, GivesTheResultOfTheNewestOptions) {
    const auto result = Ask(kEndOk, [](QWidget& window) {
        EXPECT_FALSE(ControlOf<QPushButton>(window, kEndOk).isEnabled());
        ControlOf<QCheckBox>(window, kKeepPalettes).click();
        ControlOf<QCheckBox>(window, kKeepTiles).click();
        ControlOf<QSpinBox>(window, kColumn).setValue(30);
        ControlOf<QCheckBox>(window, kKeepTiles).click();
    });
    const std::atomic<bool> stop = false;
    const WorkingCopy empty;
    const auto expected =
        ImportPicture(empty, Stripes(), {.at = {30, 4}, .keepPalettes = true}, stop);
    ASSERT_TRUE(result.has_value());
    EXPECT_TRUE(result->cut && result->drawn == expected->drawn);
    EXPECT_FALSE(result->palette.has_value());
    EXPECT_EQ(result->meanError, expected->meanError);
    EXPECT_FALSE(Ask(kEndCancel, [](QWidget&) {}).has_value()) << "Escape, while it computes";
}

TEST(ImportDialog, FollowsTheLanguageAndShowsNumbersAndPictures) {
    Ask(kEndOk, [](QWidget& window) {
        ASSERT_TRUE(QTest::qWaitFor(
            [&] { return Numbers(window).contains(QLatin1String("mean error")); }, 20'000));
        EXPECT_THAT(Numbers(window).toStdString(), testing::HasSubstr("square(s)"));
        for (const int view : {41412, 41413, 41414})
            EXPECT_FALSE(ControlOf(window, view).accessibleName().isEmpty());
        dynamic_cast<CDialogBase&>(window).PostLanguage(Language::kChinese);
        RunEvents();
        EXPECT_TRUE(Numbers(window).contains(u'图')) << Numbers(window).toStdString();
        if (const auto folder = qEnvironmentVariable("BANKWEAVER_SCREENSHOTS"); !folder.isEmpty())
            window.grab().save(folder + QLatin1String("/import_dialog.png"));
    });
}

TEST(ImportDialog, PutsAFileIntoTheDesignAsOneStep) {
    const TemporaryFolder folder;
    Surface picture(20, 20, 0x3CBEFF);
    picture.At({7, 7}) = 0xFFFFFF;
    ASSERT_TRUE(WriteFile(folder / "good.png", SurfacePng(picture)));
    ASSERT_TRUE(WriteFile(folder / "bad.png", std::string_view("no picture")));
    Host host;
    const auto finished = [&] { return !host.Tasks().AnyRunning(); };
    for (const char* name : {"bad.png", "none.png"}) {
        ImportPicture(host, folder / name, {});
        EXPECT_TRUE(QTest::qWaitFor(finished, 20'000));
    }
    EXPECT_THAT(host.dialogs.told, testing::ElementsAre(testing::HasSubstr("bad.png: no PNG"),
                                                        testing::HasSubstr("none.png: No such")));
    WhenModal([](QWidget& window) {
        auto& putIn = ControlOf<QPushButton>(window, kEndOk);
        EXPECT_TRUE(QTest::qWaitFor([&] { return putIn.isEnabled(); }, 20'000));
        putIn.click();
    });
    ImportPicture(host, folder / "good.png", {-3, 400});
    EXPECT_TRUE(QTest::qWaitFor([&] { return host.session.Steps().CanUndo(); }, 20'000));
    EXPECT_THAT(host.session.Copy().Store().BkgTileList, testing::SizeIs(3));
    host.session.Undo();
    EXPECT_THAT(host.session.Copy().Store().BkgTileList, testing::IsEmpty());
}

TEST(ImportDialog, TakesThePixelsOfImages) {
    QImage image(2, 1, QImage::Format_ARGB32);
    image.setPixel(0, 0, 0xFF102030);
    image.setPixel(1, 0, 0x10FFFFFF);
    EXPECT_THAT(PictureOf(image).pixels, testing::ElementsAre(0x102030u, 0x1FFFFFFu));
    EXPECT_TRUE(PictureOf(QImage()).pixels.empty());
}

}  // namespace
}  // namespace bw
