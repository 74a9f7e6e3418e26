// The dialog between a picture and the screen: the newest options win, and what it shows is what is
// put in.
#include "designer/window/import_dialog.h"

#include <gmock/gmock.h>

#include "shell/framework/messages.h"
#include "shell/qt_testing.h"

namespace bw {
namespace {

constexpr int kNumbers = 41404, kKeepPalettes = 41405, kKeepTiles = 41406, kColumn = 41409;

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
    CImportDialog dialog(std::move(picture), {}, {2, 4}, Language::kEnglish);
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
    const auto expected =
        ImportPicture(WorkingCopy(), Stripes(), {.at = {30, 4}, .keepPalettes = true}, stop);
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

TEST(ImportDialog, TakesThePixelsOfImages) {
    QImage image(2, 1, QImage::Format_ARGB32);
    image.setPixel(0, 0, 0xFF102030);
    image.setPixel(1, 0, 0x10FFFFFF);
    EXPECT_THAT(PictureOf(image).pixels, testing::ElementsAre(0x102030u, 0x1FFFFFFu));
    EXPECT_TRUE(PictureOf(QImage()).pixels.empty());
}

}  // namespace
}  // namespace bw
