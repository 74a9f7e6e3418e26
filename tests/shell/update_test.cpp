// Newer versions and notices in the main window: what shows when, what is replaced, what is told.
#include <QMenu>
#include <QPlainTextEdit>
#include <QUrl>

#include "shell/dialogs/update_dialog.h"
#include "shell/main_window.h"
#include "update/update_host.h"

namespace bw {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class Updates : public MainWindow {
  protected:
    Updates() {
        Store("Remember", 1);
        deployment.host = "https://host.invalid";
        source.update = R"({"version":"1.0.0.1","url":"https://host.invalid/p/new",
                            "update_describe":{"en-us":"<b>All</b> new","zh-cn":"新"}})";
        std::filesystem::create_directory(file.parent_path());
        test::WriteText(file, "old");
        program.emplace(file);
        startProgram = [&](const ProgramFile& one) { return started = one.Path(), true; };
        openAddress = [this](const QUrl& address) { opened = address.toString().toStdString(); };
        watch.start(5);
        QObject::connect(&watch, &QTimer::timeout, &watch, [this] {
            auto* offer = dynamic_cast<CUpdateDialog*>(QApplication::activeModalWidget());
            if (offer == nullptr || offer == last.data()) return;
            last = offer;
            ++offers;
            answer(*offer);
        });
    }
    static bool Until(const std::function<bool()>& done) { return QTest::qWaitFor(done, 10'000); }
    bool Offered(int count) {
        return Until([=, this] { return offers == count && !last; });
    }
    void Tick(UpdateTimer timer) {
        auto& one = ChildOf<QTimer>(*window, "timer_" + std::to_string(static_cast<int>(timer)));
        if (one.isActive()) QMetaObject::invokeMethod(&one, "timeout");
    }
    bool News(const char* words) const {
        const QString told = ChildOf<QLabel>(*window, "status_told").text();
        return told.contains(QString::fromUtf8(words));
    }
    static void Take(CUpdateDialog& offer) { ControlOf<QPushButton>(offer, kEndOk).click(); }

    std::filesystem::path file = folder / "program" / "bankweaver", started;
    std::string opened;
    int offers = 0;
    // What the user does with an offer.
    std::function<void(CUpdateDialog&)> answer = [](CUpdateDialog& offer) { offer.close(); };
    QPointer<CUpdateDialog> last;
    QTimer watch;
};

TEST_F(Updates, NothingIsAskedWhereNoHostIsNamedOrTheUserDoesNotWantIt) {
    const std::string named = std::exchange(deployment.host, "");
    Start();
    for (const int id : {kCommandCheckUpdate, kCommandUpdateChecks}) {
        EXPECT_FALSE(Entry(id).isEnabled() || Entry(id).isChecked());
        EXPECT_TRUE(Entry(id).toolTip().contains(QStringLiteral("without an address")));
    }
    Send(kCommandCheckUpdate);
    EXPECT_EQ(Stored("CheckUpdates"), 0xDEADu) << "it may be meant for another copy";
    deployment.host = named;
    Store("CheckUpdates", 0);
    Start();
    QTest::qWait(50);
    EXPECT_EQ(source.asked, 0);
    Send(kCommandCheckUpdate);
    EXPECT_TRUE(Offered(1));
    Send(kCommandUpdateChecks);
    EXPECT_TRUE(Offered(2));
    Send(kCommandUpdateChecks);
    const int asked = source.asked;
    Tick(UpdateTimer::kCheck);
    Tick(UpdateTimer::kNotice);
    EXPECT_EQ(source.asked, asked);
}

TEST_F(Updates, AnOfferWaitsUntilNothingIsUnderWay) {
    const std::u16string name = std::u16string(40, u'a') + u"!";
    Start(Images(1));
    ReplaceAll({u"A", name, false, false});
    ASSERT_TRUE(Offered(1) && Until([&] { return !Busy() && List() == ToUtf8(name); }));
    const FindRecord endless{u"^(a+)+$", u"", true, false};
    QMenu menu;
    const QPoint corner(3, window->height() - 3);
    Table().setCurrentIndex(Table().model()->index(0, 1));
    const std::pair<std::function<void()>, std::function<void()>> hindrances[] = {
        {[&] { QTest::mousePress(window->windowHandle(), Qt::LeftButton, {}, corner); },
         [&] { QTest::mouseRelease(window->windowHandle(), Qt::LeftButton, {}, corner); }},
        {[&] { menu.popup({}); }, [&] { menu.close(); }},
        {[&] { QTest::keyClick(&Table(), Qt::Key_F2); }, [&] { window->Send(kMessageEndEdit); }},
        {[&] { ReplaceAll(endless); }, [&] { Send(kCommandStopTask); }},
    };
    for (const auto& [begin, end] : hindrances) {
        const int before = offers;
        begin();
        window->Send(kMessageUpdateOffer);
        QTest::qWait(300);
        EXPECT_EQ(offers, before);
        end();
        EXPECT_TRUE(Offered(before + 1));
    }
}

TEST_F(Updates, AnOfferClosesOtherDialogsAndTheirWorkIsKept) {
    std::vector<uint8_t> attributes(64, 0x1B);
    store->RegWriteBinary(kDesignKey, "Attributes", attributes);
    Store("CheckUpdates", 0);
    Start();
    bool closed = false;
    answer = [&](CUpdateDialog& offer) {
        for (const QDialog* other : window->findChildren<QDialog*>())
            EXPECT_EQ(other->isVisible(), other == &offer);
        EXPECT_TRUE(std::exchange(closed, false)) << "the loops of the others have ended";
        offer.close();
    };
    for (const int command : {kCommandAbout, kCommandMenuDesign}) {
        Send(kCommandFindReplace);
        WhenModal([&](QWidget& other) {
            if (command == kCommandMenuDesign) ControlOf<QAbstractButton>(other, 1105).click();
            window->Send(kMessageUpdateOffer);
        });
        Send(command);
        closed = true;
        EXPECT_TRUE(Offered(command == kCommandAbout ? 1 : 2));
    }
    size_t size = attributes.size();
    EXPECT_TRUE(store->RegReadBinary(kDesignKey, "Attributes", attributes.data(), size));
    EXPECT_EQ(attributes[5], 0);
}

TEST_F(Updates, TheOfferSaysWhatThereIsInTheLanguageOfTheWindow) {
    const std::tuple<std::string, bool, bool, bool, const char*, const char*> cases[] = {
        {"1.0.0.0", false, false, true, "", "Update"},
        {"1.0.0.0", true, false, true, "", "Update"},
        {"1.0.0.1", true, false, false, "no newer", "Update"},
        {"1.0.1.0", true, true, false, "no newer", "Update"},
        {"1.0.0.0", true, true, true, "was replaced", "Open in the browser"}};
    int count = 0;
    for (const auto& [running, asked, changed, enabled, note, name] : cases) {
        SCOPED_TRACE(offers);
        Store("CheckUpdates", asked ? 0 : 8);
        deployment.version = running;
        program.emplace(file);
        test::WriteText(folder / "other", "other");
        if (changed) std::filesystem::rename(folder / "other", file);
        answer = [&](CUpdateDialog& offer) {
            auto& button = ControlOf<QPushButton>(offer, kEndOk);
            const auto& text = ControlOf<QPlainTextEdit>(offer, 1031);
            EXPECT_EQ(offer.windowTitle().toStdString(),
                      "Current version: " + running + " Latest version: 1.0.0.1");
            EXPECT_EQ(text.toPlainText(), QStringLiteral("<b>All</b> new"));
            EXPECT_EQ(button.text().toStdString(), name);
            EXPECT_THAT(ControlOf<QLabel>(offer, 1032).text().toStdString(), HasSubstr(note));
            EXPECT_EQ(button.isEnabled(), enabled);
            EXPECT_EQ(button.isDefault(), asked && enabled);
            if (!asked) QTest::keyClick(&offer, Qt::Key_Return);
            EXPECT_TRUE(offer.IsOpen()) << "a key that was meant for something else";
            window->Send(kMessageUpdateOffer);  // open already
            Send(kCommandChinese);
            RunEvents();
            EXPECT_EQ(text.toPlainText(), QStringLiteral("新"));
            Send(kCommandEnglish);
            if (changed) button.click();
            offer.close();
        };
        Start();
        if (asked) Send(kCommandCheckUpdate);
        EXPECT_TRUE(Offered(++count));
    }
    EXPECT_EQ(opened, "https://host.invalid/p/new");
}

TEST_F(Updates, TheBrowserGetsPagesOfTheWebAlone) {
    for (const std::string url : {"file:///etc/passwd", "javascript:alert(1)", "", "https:///x",
                                  "ftp://host.invalid/x", "https://", "HTTP://host.invalid/x"}) {
        UpdateOffer offer{.record = {.version = std::u16string(70'000, u'9'), .url = url}};
        offer.newer = offer.asked = true;
        offer.replaceable = {UpdateOutcome::Kind::kNotOurs};
        offer.openAddress = openAddress;
        CUpdateDialog dialog(offer, Language::kEnglish);
        dialog.ShowModeless();
        EXPECT_LT(dialog.windowTitle().size(), 100);
        Take(dialog);
        EXPECT_EQ(opened, url.starts_with("HTTP") ? "http://host.invalid/x" : "") << url;
    }
}

TEST_F(Updates, WhatIsFetchedTakesTheProgramsPlaceWhenTheWindowCloses) {
    answer = [&](CUpdateDialog& offer) {
        source.hangs = true;
        Take(offer);
    };
    Start(Images(2));
    ASSERT_TRUE(Until([&] { return window->windowTitle() == QStringLiteral("Updating 12.500%"); }));
    Send(kCommandChinese);
    RunEvents();
    EXPECT_EQ(window->windowTitle(), QStringLiteral("正在更新 12.500%"));
    source.hangs = false;
    ASSERT_TRUE(Until([&] { return Exited(); }));
    EXPECT_EQ(test::ReadText(started), "new");
    EXPECT_EQ(test::ReadText(file.string() + ".bak"), "old");
    deployment.host = "";
    Start();
    EXPECT_EQ(List(), "AB");
    EXPECT_TRUE(Until([&] { return !std::filesystem::exists(file.string() + ".bak"); }));
}

TEST_F(Updates, WhatCannotBeInstalledIsToldAndTheWindowStays) {
    answer = Take;
    Store("CheckUpdates", 0);
    const auto told = [&] {
        Start(Images(1));
        dialogs.told.clear();
        Send(kCommandCheckUpdate);
        EXPECT_TRUE(Until([&] { return !dialogs.told.empty(); }));
        return dialogs.told.back();
    };
    source.outcome = {UpdateOutcome::Kind::kOtherKey};
    EXPECT_THAT(told(), HasSubstr("Error: The new version is signed"));
    EXPECT_TRUE(News("signed with a key"));
    source.outcome = {};
    listKept = [] { return false; };  // asks, and the answer is to go on
    dialogs.answers = {kEndCancel};
    told();
    EXPECT_TRUE(News("had to stay"));
    listKept = nullptr;
    std::filesystem::create_directory(file.string() + ".bak");  // in the old one's way
    EXPECT_THAT(told(), HasSubstr("Error: Nothing was installed."));
    EXPECT_TRUE(started.empty() && !Exited() && test::ReadText(file) == "old");
    const std::filesystem::path fetched = program->DownloadTarget(u"1.0.0.1");
    EXPECT_TRUE(std::filesystem::exists(fetched));
    window->StoreAll();
    EXPECT_FALSE(std::filesystem::exists(fetched)) << "an end by a signal leaves nothing";
}

TEST_F(Updates, AnExitDoesNotWaitForTheNetwork) {
    source.hangs = true;
    Start();
    ASSERT_TRUE(Until([&] { return source.asked == 1; }));
    const auto begin = std::chrono::steady_clock::now();
    Close(kCloseByExit);
    window.reset();
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
    RecordProperty("seconds", std::to_string(time.count()));
    EXPECT_LT(time.count(), 5);
    source.hangs = false;
    source.update.reset();
    Start();
    Send(kCommandCheckUpdate);
    EXPECT_TRUE(Until([&] { return News("no answer"); }));
}

TEST_F(Updates, ANoticeShowsOnceAndOnlyInAFreeWindow) {
    source.update = "{}";
    source.notice = R"({"for_users_type":1,"notify_id":7,"notify_message":{"en-us":"<i>x</i>"}})";
    WhenModal([&](QWidget& about) {
        Until([&] { return source.asked == 2; });
        QTest::qWait(50);
        about.close();
    });
    Start();
    Send(kCommandAbout);
    EXPECT_EQ(dialogs.told.size(), 0u);
    Close(kCloseByFrame);                                       // into the tray
    dialogs.meanwhile = [&] { window->Send(kMessageNotice); };  // while it shows
    Tick(UpdateTimer::kNotice);
    EXPECT_TRUE(Until([&] { return Stored("LastNotifyId") == 7; }));
    Tick(UpdateTimer::kNotice);
    Start();  // another copy
    EXPECT_TRUE(Until([&] { return source.asked == 6; }));
    QTest::qWait(50);
    EXPECT_THAT(dialogs.told, ElementsAre("Notify message: <i>x</i>"));
}

}  // namespace
}  // namespace bw
