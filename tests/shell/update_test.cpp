// Newer versions and notices in the main window: what shows when, what is replaced, what is told.
#include <QMenu>
#include <QPlainTextEdit>
#include <QUrl>

#include "shell/dialogs/update_dialog.h"
#include "shell/fake_updates.h"
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
        deployment = {.host = "https://host.invalid", .version = "1.0.0.0"};
        updates = &source;
        std::filesystem::create_directory(file.parent_path());
        test::WriteText(file, "old");
        program.emplace(file);
        startProgram = [this](const ProgramFile& one) {
            started = test::ReadText(one.Path());
            return true;
        };
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
    ~Updates() override { window.reset(); }
    void Offer(const std::string& version, const std::string& more = "") {
        source.update = R"({"version":")" + version + R"(","url":"https://host.invalid/p/new")" +
                        more + R"(,"update_describe":{"en-us":"<b>All</b> new","zh-cn":"新"}})";
    }
    void Notice(const std::string& more) {
        source.notice = R"({"for_users_type":1,"notify_id":7,)" + more +
                        R"("notify_message":{"en-us":"http://x.invalid <i>now</i>"}})";
    }
    static bool Until(const std::function<bool()>& done) { return QTest::qWaitFor(done, 10'000); }
    void Tick(UpdateTimer timer) {
        auto& one = ChildOf<QTimer>(*window, "timer_" + std::to_string(static_cast<int>(timer)));
        if (one.isActive()) QMetaObject::invokeMethod(&one, "timeout");
    }
    std::string News() const {
        return ChildOf<QLabel>(*window, "status_told").text().toStdString();
    }

    FakeUpdates source;
    std::filesystem::path file = folder / "program" / "bankweaver";
    std::filesystem::path fetched = folder / "program" / "Bankweaver_1.0.0.1.exe";
    std::string started, opened;
    int offers = 0;
    // What the user does with an offer.
    std::function<void(CUpdateDialog&)> answer = [](CUpdateDialog& offer) { offer.close(); };
    const std::function<void(CUpdateDialog&)> ok = [](CUpdateDialog& offer) {
        ControlOf<QPushButton>(offer, kEndOk).click();
    };
    QPointer<CUpdateDialog> last;
    QTimer watch;
};

TEST_F(Updates, NothingIsAskedWhereNoHostIsNamedOrTheUserDoesNotWantIt) {
    Offer("1.0.0.1");
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
    for (const int id : {kCommandCheckUpdate, kCommandUpdateChecks}) {
        Send(id);
        EXPECT_TRUE(Until([&, before = offers] { return offers > before; })) << id;
    }
    Send(kCommandUpdateChecks);
    const int asked = source.asked;
    for (const UpdateTimer timer : {UpdateTimer::kCheck, UpdateTimer::kNotice})
        Tick(timer);
    EXPECT_EQ(source.asked, asked);
}

TEST_F(Updates, AnOfferWaitsUntilNothingIsUnderWay) {
    const std::u16string name = std::u16string(40, u'a') + u"!";
    Start(Images(1));
    ReplaceAll({u"A", name, false, false});
    ASSERT_TRUE(Until([&] { return !Busy() && List() == ToUtf8(name); }));
    const FindRecord endless{u"^(a+)+$", u"", true, false};
    QMenu menu;
    const QPoint corner(3, window->height() - 3);
    const std::pair<std::function<void()>, std::function<void()>> hindrances[] = {
        {[&] { QTest::mousePress(window->windowHandle(), Qt::LeftButton, {}, corner); },
         [&] { QTest::mouseRelease(window->windowHandle(), Qt::LeftButton, {}, corner); }},
        {[&] { menu.popup({}); }, [&] { menu.close(); }},
        {[&] {
             Table().setCurrentIndex(Table().model()->index(0, 1));
             QTest::keyClick(&Table(), Qt::Key_F2);
         },
         [&] { window->Send(kMessageEndEdit); }},
        {[&] { ReplaceAll(endless); }, [&] { Send(kCommandStopTask); }},
    };
    for (const auto& [begin, end] : hindrances) {
        const int before = offers;
        begin();
        window->Send(kMessageUpdateOffer);
        QTest::qWait(300);
        EXPECT_EQ(offers, before);
        end();
        EXPECT_TRUE(Until([&] { return offers == before + 1; })) << before;
    }
}

TEST_F(Updates, AnOfferClosesOtherDialogsAndTheirWorkIsKept) {
    std::vector<uint8_t> attributes(64, 0x1B);
    store->RegWriteBinary(kDesignKey, "Attributes", attributes);
    Start();
    bool closed = false;
    answer = [&](CUpdateDialog& offer) {
        for (const QDialog* other : window->findChildren<QDialog*>())
            EXPECT_EQ(other->isVisible(), other == &offer);
        EXPECT_TRUE(closed) << "the loops of the others have ended";
        offer.close();
    };
    for (const int command : {kCommandAbout, kCommandMenuDesign}) {
        Send(kCommandFindReplace);
        WhenModal([&](QWidget& other) {
            if (command == kCommandMenuDesign) ControlOf<QAbstractButton>(other, 1105).click();
            window->Send(kMessageUpdateOffer);
        });
        closed = false;
        Send(command);
        closed = true;
        EXPECT_TRUE(Until([&] { return offers == (command == kCommandAbout ? 1 : 2) && !last; }));
    }
    size_t size = attributes.size();
    EXPECT_TRUE(store->RegReadBinary(kDesignKey, "Attributes", attributes.data(), size));
    EXPECT_EQ(attributes[5], 0);
}

TEST_F(Updates, TheOfferSaysWhatThereIsInTheLanguageOfTheWindow) {
    struct Case {
        std::string version;
        bool asked, changed, enabled;
        const char* note;
        std::string button;
    };
    const Case cases[] = {{"1.0.0.1", false, false, true, "", "Update"},
                          {"1.0.0.1", true, false, true, "", "Update"},
                          {"1.0.0.0", true, false, false, "no newer", "Update"},
                          {"0.9.9.9", true, true, false, "no newer", "Update"},
                          {"1.0.0.1", true, true, true, "was replaced", "Open in the browser"}};
    for (const Case& one : cases) {
        SCOPED_TRACE(&one - cases);
        Offer(one.version, one.changed ? R"(,"force_update":true)" : "");
        Store("CheckUpdates", one.asked ? 0 : 8);
        program.emplace(file);
        if (one.changed) {
            test::WriteText(folder / "another", "another");
            std::filesystem::rename(folder / "another", file);
        }
        answer = [&](CUpdateDialog& offer) {
            auto& button = ControlOf<QPushButton>(offer, kEndOk);
            const auto& text = ControlOf<QPlainTextEdit>(offer, 1031);
            EXPECT_EQ(offer.windowTitle().toStdString(),
                      "Current version: 1.0.0.0 Latest version: " + one.version);
            EXPECT_EQ(text.toPlainText(), QStringLiteral("<b>All</b> new"));
            EXPECT_EQ(button.text().toStdString(), one.button);
            EXPECT_THAT(ControlOf<QLabel>(offer, 1032).text().toStdString(), HasSubstr(one.note));
            EXPECT_EQ(button.isEnabled(), one.enabled);
            EXPECT_EQ(button.isDefault(), one.asked && one.enabled);
            if (!one.asked) QTest::keyClick(&offer, Qt::Key_Return);
            EXPECT_TRUE(offer.IsOpen()) << "a key that was meant for something else";
            window->Send(kMessageUpdateOffer);  // open already
            for (const auto& [language, shown] :
                 {std::pair{kCommandChinese, "新"}, {kCommandEnglish, "<b>All</b> new"}}) {
                Send(language);
                RunEvents();
                EXPECT_EQ(text.toPlainText(), QString::fromUtf8(shown));
            }
            if (one.changed) button.click();
            offer.close();
        };
        Start();
        if (one.asked) Send(kCommandCheckUpdate);
        EXPECT_TRUE(Until([&] { return offers == &one - cases + 1 && !last; }));
    }
    EXPECT_EQ(opened, "https://host.invalid/p/new");
}

TEST_F(Updates, TheBrowserGetsPagesOfTheWebAlone) {
    for (const std::string url : {"file:///etc/passwd", "javascript:alert(1)", "", "https:///x",
                                  "ftp://host.invalid/x", "https://", "HTTP://host.invalid/x"}) {
        CUpdateDialog offer({.record = {.version = std::u16string(70'000, u'9'), .url = url},
                             .running = u"1\n2",
                             .newer = true,
                             .replaceable = {UpdateOutcome::Kind::kNotOurs},
                             .asked = true,
                             .openAddress = openAddress},
                            Language::kEnglish);
        offer.ShowModeless();
        EXPECT_LT(offer.windowTitle().size(), 100);
        offer.Send(kMessageCommand, kEndOk);
        EXPECT_EQ(opened, url.starts_with("HTTP") ? "http://host.invalid/x" : "") << url;
    }
}

TEST_F(Updates, WhatIsFetchedTakesTheProgramsPlaceWhenTheWindowCloses) {
    Offer("1.0.0.1");
    answer = [&](CUpdateDialog& offer) {
        source.hangs = true;
        ok(offer);
    };
    Start(Images(2));
    ASSERT_TRUE(Until([&] { return window->windowTitle() == QStringLiteral("Updating 12.500%"); }));
    Send(kCommandChinese);
    RunEvents();
    EXPECT_EQ(window->windowTitle(), QStringLiteral("正在更新 12.500%"));
    source.hangs = false;
    ASSERT_TRUE(Until([&] { return Exited(); }));
    EXPECT_EQ(started, "new");
    EXPECT_EQ(test::ReadText(file.string() + ".bak"), "old");
    deployment.host = "";
    Start();
    EXPECT_EQ(List(), "AB");
    EXPECT_TRUE(Until([&] { return !std::filesystem::exists(file.string() + ".bak"); }));
}

TEST_F(Updates, WhatCannotBeInstalledIsToldAndTheWindowStays) {
    Offer("1.0.0.1");
    answer = ok;
    const auto told = [&] {
        dialogs.told.clear();
        Start(Images(1));
        EXPECT_TRUE(Until([&] { return !dialogs.told.empty(); }));
        return dialogs.told.back();
    };
    source.outcome = {UpdateOutcome::Kind::kOtherKey};
    EXPECT_THAT(told(), HasSubstr("Error: The new version is signed"));
    EXPECT_THAT(News(), HasSubstr("signed with a key"));
    source.outcome = {};
    listKept = [] { return false; };  // asks, and the answer is to go on
    dialogs.answers = {kEndCancel};
    told();
    EXPECT_THAT(News(), HasSubstr("had to stay"));
    listKept = nullptr;
    std::filesystem::create_directory(file.string() + ".bak");  // in the old one's way
    EXPECT_THAT(told(), HasSubstr("Error: Nothing was installed."));
    EXPECT_TRUE(!Exited() && started.empty());
    EXPECT_EQ(test::ReadText(file), "old");
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
    EXPECT_TRUE(Exited() && time.count() < 1);
    source.hangs = false;
    source.silent = true;
    Start();
    Send(kCommandCheckUpdate);
    EXPECT_TRUE(Until([&] { return News().find("no answer") != std::string::npos; }));
}

TEST_F(Updates, ANoticeShowsOnceAndOnlyInAFreeWindow) {
    Notice("");
    Store("CheckUpdates", 0);
    Start();
    QTimer::singleShot(0, window.get(), [&] { Send(kCommandUpdateChecks); });
    WhenModal([&](QWidget& about) {
        Until([&] { return source.asked == 2; });
        QTest::qWait(50);
        about.close();
    });
    Send(kCommandAbout);
    EXPECT_EQ(dialogs.told.size(), 0u);
    Close(kCloseByFrame);                                       // into the tray
    dialogs.meanwhile = [&] { window->Send(kMessageNotice); };  // while it shows
    Tick(UpdateTimer::kNotice);
    EXPECT_TRUE(Until([&] { return Stored("LastNotifyId") == 7; }));
    Tick(UpdateTimer::kNotice);
    CMainDialog second({.store = *store,
                        .base = folder.Path(),
                        .dialogs = &dialogs,
                        .deployment = deployment,
                        .updates = updates,
                        .program = program});
    second.Start({});
    QTest::qWait(100);
    EXPECT_THAT(dialogs.told, ElementsAre("Notify message: http://x.invalid <i>now</i>"));
    Notice(R"("restart_show":true,)");
    Start();
    EXPECT_TRUE(Until([&] { return dialogs.told.size() == 2; }));
}

}  // namespace
}  // namespace bw
