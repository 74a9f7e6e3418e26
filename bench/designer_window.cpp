// The designer's window over a full screen: 960 tiles, 64 sprites, 20 texts, 1,024 names; the panel
// is open with its problems and its steps.
//   from an event of the pointer to the end of the paint event that it causes, at the pace of a
//     hand;
//   what follows a change after that (the check for problems, the list of steps);
//   opening, until nothing is left to do, and closing with 10,000 steps of history;
//   the processor's time for a window in which nothing is done.
// Without a screen, and on the display that DISPLAY names.
//   bench_designer_window [events]
#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QEventLoop>
#include <QMouseEvent>
#include <QTimer>
#include <QWindow>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <numbers>

#include <sys/resource.h>

#include "child.h"
#include "common/temporary_folder.h"
#include "designer/history/designer_settings.h"
#include "designer/tools/pointer_edits.h"
#include "designer/window/design_dialog.h"
#include "designer/window/design_ids.h"
#include "designer/window/draw_control.h"
#include "full_screen.h"
#include "shell/framework/commands.h"
#include "shell/scripted_dialogs.h"

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr int kSteps = 10'000;
constexpr int kOpenings = 11;
constexpr milliseconds kPace{12};        // after each event
constexpr milliseconds kColourPace{25};  // a colour that comes sooner than 20 ms is passed over
constexpr QSize kSize(1500, 1100);       // that all of it shows
constexpr milliseconds kIdle{10'000};

// Notes when the pictures were last drawn and handed to the display, and how long each timer that
// follows a change took.
class Watch : public QApplication {
  public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override {
        const QEvent::Type type = event->type();
        const auto* timer = qobject_cast<QTimer*>(receiver);
        const bool follows = type == QEvent::Timer && timer != nullptr && timer->isSingleShot() &&
                             timer->interval() < 1000;
        const auto start = Clock::now();
        const bool done = QApplication::notify(receiver, event);
        if (type == QEvent::Paint && dynamic_cast<bw::CWindowDraw*>(receiver) != nullptr) {
            drawn_ = true;
        }
        if (drawn_ && (type == QEvent::UpdateRequest || type == QEvent::Expose)) {
            drawn_ = false;
            painted = Clock::now();
        }
        if (follows) {
            const double time =
                std::chrono::duration<double, std::milli>(Clock::now() - start).count();
            (timer->interval() == 0 ? checks : lists).push_back(time);
        }
        return done;
    }

    std::optional<Clock::time_point> painted;
    std::vector<double> checks;
    std::vector<double> lists;

  private:
    bool drawn_ = false;
};

void Report(const char* what, std::vector<double> times) {
    if (times.empty()) return;
    std::sort(times.begin(), times.end());
    std::printf("    %-34s median %7.3f ms   99 of 100 %7.3f ms   worst %7.3f ms   (%zu)\n", what,
                bench::Median(times), times[times.size() * 99 / 100], times.back(), times.size());
}

void RunFor(milliseconds time) {
    QEventLoop loop;
    QTimer::singleShot(time, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

void FinishEvents() {
    while (QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents)) {
    }
}

double ProcessorTime() {
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    const auto in = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
    };
    return in(used.ru_utime) + in(used.ru_stime);
}

class Window {
  public:
    Window(Watch& watch, bw::SettingsStore& store, const std::filesystem::path& history,
           const bw::WorkingCopy& screen)
        : watch_(watch), session_(screen) {
        opening_ = bench::Time([&] {
            dialog_ = std::make_unique<bw::CDesignDialog>(
                bw::DesignDialogServices{store, history, session_, dialogs_, lastTypes_},
                bw::Language::kEnglish);
            dialog_->ShowModeless();
            while (!watch_.painted)
                QApplication::processEvents(QEventLoop::WaitForMoreEvents);
            FinishEvents();
        });
        // A display without a screen offers less.
        dialog_->resize(kSize);
        FinishEvents();
    }

    double Opening() const { return opening_; }
    double Close() {
        return bench::Time([&] {
            dialog_->Send(bw::kMessageClose);
            while (dialog_->IsOpen())
                QApplication::processEvents(QEventLoop::WaitForMoreEvents);
            dialog_.reset();
            FinishEvents();
        });
    }
    size_t Steps() const { return session_.Steps().Count(); }
    bw::EditSession& Session() { return session_; }

    // `at` in drawn pixels of a view; milliseconds to the end of painting. An event that changes
    // nothing that shows counts its own time.
    double Pointer(QEvent::Type type, bw::Control view, QPoint at) {
        QWidget& target =
            *dialog_->findChild<QWidget*>(QStringLiteral("view_%1").arg(static_cast<int>(view)));
        const QPointF place = target.mapTo(dialog_.get(), QPointF(at));
        const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        const bool up = type == QEvent::MouseButtonRelease;
        QMouseEvent event(type, place, dialog_->mapToGlobal(place), button,
                          up ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
        watch_.painted.reset();
        const auto start = Clock::now();
        event.setTimestamp(static_cast<quint64>(
            std::chrono::duration_cast<milliseconds>(start.time_since_epoch()).count()));
        QApplication::sendEvent(dialog_->windowHandle(), &event);
        QCoreApplication::sendPostedEvents();
        const auto end = watch_.painted.value_or(Clock::now());
        RunFor(kPace);
        return std::chrono::duration<double, std::milli>(end - start).count();
    }

  private:
    Watch& watch_;
    bw::EditSession session_;
    bw::ScriptedDialogs dialogs_;
    bw::DesignFiles::LastTypes lastTypes_;
    std::unique_ptr<bw::CDesignDialog> dialog_;
    double opening_ = 0;
};

std::vector<double> DragSprite(Window& window, int events) {
    using bw::Control;
    const bw::TileItem sprite = window.Session().Copy().Store().SpriteTileList.back();
    const QPoint start(2 * sprite.X + 8, 2 * sprite.Y + 8);
    window.Pointer(QEvent::MouseButtonPress, Control::kNameTable, start);
    std::vector<double> times;
    for (int i = 0; i < events; ++i) {
        const double angle = 2 * std::numbers::pi * i / 100;
        const QPoint at(256 + static_cast<int>(std::lround(200 * std::cos(angle))),
                        240 + static_cast<int>(std::lround(200 * std::sin(angle))));
        times.push_back(window.Pointer(QEvent::MouseMove, Control::kNameTable, at));
    }
    window.Pointer(QEvent::MouseButtonRelease, Control::kNameTable, {256, 240});
    return times;
}

// A press on each pixel of the tile, which is a step each.
std::vector<double> PaintPixels(Window& window, int events) {
    using bw::Control;
    std::vector<double> times;
    for (int i = 0; i < events; ++i) {
        if (i % 64 == 0) {  // another colour for the whole tile
            const QPoint colour(i / 64 % 4 * 16 + 8, 8);
            window.Pointer(QEvent::MouseButtonPress, Control::kBkgPalette, colour);
            window.Pointer(QEvent::MouseButtonRelease, Control::kBkgPalette, colour);
        }
        const QPoint at(i % 8 * 16 + 8, i / 8 % 8 * 16 + 8);
        times.push_back(window.Pointer(QEvent::MouseButtonPress, Control::kBkgTileEditor, at));
        window.Pointer(QEvent::MouseButtonRelease, Control::kBkgTileEditor, at);
    }
    return times;
}

// The release takes the colour.
std::vector<double> ChooseColours(Window& window, int events) {
    using bw::Control;
    std::vector<double> times;
    for (int i = 0; i < events; ++i) {
        const QPoint at(i % 13 * 16 + 8, i / 13 % 4 * 16 + 8);
        window.Pointer(QEvent::MouseButtonPress, Control::kSystemPalette, at);
        RunFor(kColourPace);
        times.push_back(window.Pointer(QEvent::MouseButtonRelease, Control::kSystemPalette, at));
    }
    return times;
}

void MeasurePointer(Watch& watch, const bw::WorkingCopy& screen, int events, const char* what) {
    const TemporaryFolder folder;
    const auto store = bw::MakeSqliteStore(folder / "settings.sqlite3");
    {
        bw::EditSession session(screen);
        bw::CloseDesigner(session, *store, folder / "history");
    }
    watch.painted.reset();
    Window window(watch, *store, folder / "history", screen);
    window.Session().RunWithoutStep([](bw::WorkingCopy& copy) {
        copy.DragText = true;
        return bw::Views::All();
    });
    std::printf("  %s\n", what);
    using Gesture = std::vector<double> (*)(Window&, int);
    const std::pair<const char*, Gesture> gestures[] = {{"dragging a sprite", &DragSprite},
                                                        {"painting a pixel", &PaintPixels},
                                                        {"choosing a colour", &ChooseColours}};
    for (const auto& [name, gesture] : gestures) {
        RunFor(milliseconds(300));
        watch.checks.clear();
        watch.lists.clear();
        Report(name, gesture(window, events));
        Report("    the check after it", watch.checks);
        Report("    the list of steps after it", watch.lists);
    }
    RunFor(milliseconds(300));
    const double before = ProcessorTime();
    RunFor(kIdle);
    std::printf("    %-34s %.1f ms of the processor in %lld s\n", "idle", ProcessorTime() - before,
                static_cast<long long>(kIdle.count() / 1000));
    window.Close();
}

void MeasureOpening(Watch& watch, const bw::WorkingCopy& screen) {
    const TemporaryFolder folder;
    const auto store = bw::MakeSqliteStore(folder / "settings.sqlite3");
    {
        bw::EditSession session(screen);
        for (int step = 0; step < kSteps; ++step) {
            session.Run([&](bw::WorkingCopy& edited) {
                edited.BkgTilePos = {step % 16, step / 16 % 16};
                edited.BkgPalettePos.X = 1 + (step / 256 + step) % 3;
                return bw::PaintPixel(edited, bw::PatternTable::kBackground,
                                      {step / 4096 % 8, step / 512 % 8});
            });
        }
        bw::CloseDesigner(session, *store, folder / "history");
    }
    std::vector<double> opening;
    std::vector<double> closing;
    size_t steps = 0;
    for (int round = 0; round < kOpenings; ++round) {
        watch.painted.reset();
        Window window(watch, *store, folder / "history", screen);
        steps = window.Steps();
        RunFor(milliseconds(100));
        opening.push_back(window.Opening());
        closing.push_back(window.Close());
    }
    std::printf("  a history of %zu steps\n", steps);
    Report("opening", opening);
    Report("closing", closing);
}

int Measure(int count, char** words, int events) {
    Watch watch(count, words);
    bw::WorkingCopy screen = bench::FullScreen();
    bench::AddNamesAndTexts(screen);
    bw::WorkingCopy fewer = screen;
    bench::LessenFaults(fewer);
    MeasurePointer(watch, fewer, events, "a full screen with few faults");
    MeasurePointer(watch, screen, events, "a full screen of random bytes");
    MeasureOpening(watch, fewer);
    return 0;
}

}  // namespace

int main(int count, char** words) {
    const std::string_view mode = count > 1 ? words[1] : "";
    if (mode == "measure") return Measure(count, words, std::atoi(words[2]));
    const std::string events = count > 1 ? words[1] : "400";
    const TemporaryFolder folder;
    const auto run = [&](const char* platform) {
        setenv("QT_QPA_PLATFORM", platform, 1);
        bench::RunChild({"/proc/self/exe", "measure", events}, folder / platform);
        std::cout << "the designer's window, " << platform << "\n"
                  << std::ifstream(folder / platform).rdbuf() << std::flush;
    };
    run("offscreen");
    if (std::getenv("DISPLAY") != nullptr) run("xcb");
    return 0;
}
