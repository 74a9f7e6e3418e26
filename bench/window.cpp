// The window with a full list of 20,000 rows as it is remembered, on a display without a screen:
//   start: from the process's start to the window's first picture, and to the first one with rows,
//     against a program that reads the same list and shows it in a bare QTableView; then with a
//     look for a newer version at a host that doesn't answer, against without;
//   commands: from the command to the rows painted anew, against a bare loop over the same data
//     that paints nothing.
//   bench_window [rounds]
#include <QApplication>
#include <QHeaderView>
#include <QTableView>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <memory>
#include <regex>

#include <arpa/inet.h>
#include <sys/socket.h>

#include "child.h"
#include "common/environment_variable.h"
#include "common/temporary_folder.h"
#include "full_list.h"
#include "list/remembered_list.h"
#include "list/search/name_search.h"
#include "measure.h"
#include "shell/framework/commands.h"
#include "shell/framework/texts.h"
#include "shell/main/main_dialog.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kRows = static_cast<int>(bw::kListLimit);

long long Now() {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(Clock::now().time_since_epoch())
        .count();
}

// Notes when the first picture and the first one with rows were drawn, writes both to standard
// output and ends.
class Watch : public QApplication {
  public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override {
        const bool done = QApplication::notify(receiver, event);
        if (event->type() != QEvent::Paint) return done;
        if (firstPaint_ == 0) firstPaint_ = Now();
        const auto* view = qobject_cast<QTableView*>(receiver->parent());
        if (view != nullptr && view->viewport() == receiver && view->model() != nullptr &&
            view->model()->rowCount() == kRows) {
            std::printf("\ntimes %lld %lld\n", firstPaint_, Now());
            std::fflush(stdout);
            std::_Exit(0);
        }
        return done;
    }

  private:
    long long firstPaint_ = 0;
};

class BareModel : public QAbstractTableModel {
  public:
    explicit BareModel(bw::GameList games) : games_(std::move(games)) {}

    int rowCount(const QModelIndex&) const override { return static_cast<int>(games_.size()); }
    int columnCount(const QModelIndex&) const override { return bw::kListColumns; }
    QVariant data(const QModelIndex& index, int role) const override {
        if (role != Qt::DisplayRole) return {};
        const auto row = static_cast<size_t>(index.row());
        return bw::ToQt(bw::CellText(games_[row], row, static_cast<bw::ListColumn>(index.column()),
                                     bw::Language::kEnglish));
    }

  private:
    bw::GameList games_;
};

int StartBare(int count, char** words) {
    Watch application(count, words);
    const auto store = bw::MakeUserStore();
    BareModel model(
        bw::LoadRememberedList(bw::ReadWholeBinary(*store, bw::kHistoryKey, "Data"), "/").games);
    QTableView view;
    view.setModel(&model);
    view.resize(900, 600);
    view.show();
    return QApplication::exec();
}

int StartOurs(int count, char** words) {
    Watch application(count, words);
    const auto store = bw::MakeUserStore();
    const std::string host = count > 2 ? words[2] : "";
    bw::CMainDialog window({.store = *store, .base = "/", .deployment = {.host = host}});
    window.Start({});
    return QApplication::exec();
}

// Takes connections and says nothing.
class SilentHost {
  public:
    SilentHost() {
        sockaddr_in address{.sin_family = AF_INET, .sin_port = 0, .sin_addr = {}, .sin_zero = {}};
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        bind(socket_, reinterpret_cast<sockaddr*>(&address), size);
        listen(socket_, 1024);
        getsockname(socket_, reinterpret_cast<sockaddr*>(&address), &size);
        address_ = "https://127.0.0.1:" + std::to_string(ntohs(address.sin_port));
    }
    const std::string& Address() const { return address_; }

  private:
    int socket_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);  // as long as the program
    std::string address_;
};

struct StartTimes {
    double firstPaint;
    double rows;
};

StartTimes Start(const std::string& mode, const std::filesystem::path& output,
                 const std::string& host = {}) {
    const long long begin = Now();
    bench::RunChild({"/proc/self/exe", mode, host}, output);
    long long first = 0;
    long long rows = 0;
    std::ifstream said(output);  // among warnings of the toolkit
    for (std::string line; std::getline(said, line);)
        std::sscanf(line.c_str(), "times %lld %lld", &first, &rows);
    return {static_cast<double>(first - begin) / 1e6, static_cast<double>(rows - begin) / 1e6};
}

void Starts(int rounds, const std::filesystem::path& output) {
    const SilentHost host;
    bench::Pair first;
    bench::Pair rows;
    bench::Pair looking;
    for (int round = 0; round < rounds; ++round) {
        const StartTimes ours = Start("start-ours", output);
        looking.ours.push_back(Start("start-ours", output, host.Address()).rows);
        looking.bare.push_back(ours.rows);
        const StartTimes bare = Start("start-bare", output);
        first.ours.push_back(ours.firstPaint);
        first.bare.push_back(bare.firstPaint);
        rows.ours.push_back(ours.rows);
        rows.bare.push_back(bare.rows);
    }
    bench::Report("start to the first picture", first);
    bench::Report("start to the rows", rows);
    bench::Report("start to the rows, looking for a newer version", looking);
}

class Window {
  public:
    explicit Window(bw::SettingsStore& store) : dialog_({.store = store, .base = "/"}) {
        dialog_.Start({});
        while (View() == nullptr)
            QApplication::processEvents();
        WaitFor([&] { return View()->model()->rowCount() == kRows; });
    }

    void Command(int id) {
        dialog_.Send(bw::kMessageCommand, id);
        Settle();
    }
    void ClickHeader(bw::ListColumn column) {
        QMetaObject::invokeMethod(View()->horizontalHeader(), "sectionClicked",
                                  Q_ARG(int, static_cast<int>(column)));
        Settle();
    }
    void ReplaceAll(const bw::FindRecord& record) {
        const QString before = Name();
        dialog_.Send(bw::kMessageReplaceAll, 0, reinterpret_cast<bw::MessageParam>(&record));
        WaitFor([&] { return Name() != before; });
    }

    void Repaint() { View()->viewport()->repaint(); }

  private:
    QTableView* View() const { return dialog_.findChild<QTableView*>(); }
    QString Name() const { return View()->model()->index(0, 1).data().toString(); }
    // Until the rows are painted and no task runs that would refuse the next command.
    void Settle() {
        const auto* stop = dialog_.findChild<QWidget*>(QStringLiteral("status_stop"));
        do {
            QApplication::processEvents();
        } while (stop != nullptr && stop->isVisible());
        Repaint();
    }
    void WaitFor(const std::function<bool()>& reached) {
        while (!reached())
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
        Settle();
    }

    bw::CMainDialog dialog_;
};

void BareReplace(std::vector<std::wstring>& names) {
    const std::wregex pattern(L"^(.)(.*)$");
    for (std::wstring& name : names)
        name = std::regex_replace(name, pattern, L"$2$1");
}

void Commands(int rounds, Window& window, bw::GameList games) {
    std::vector<double> paints;
    for (int round = 0; round < rounds; ++round)
        paints.push_back(bench::Time([&] { window.Repaint(); }));
    std::printf("painting the rows in sight, which each command below does: %.2f ms\n",
                bench::Median(paints));
    for (const bench::SortColumn& by : bench::kSortColumns) {
        bw::GameList plain;
        bool sorted = false;
        const auto prepare = [&] {
            if (std::exchange(sorted, false)) window.Command(bw::kCommandUndo);
            plain = games;
        };
        const auto ours = [&] {
            window.ClickHeader(by.column);
            sorted = true;
        };
        bench::Report(std::string("sort by ") + by.name,
                      bench::InTurn(
                          rounds, ours, [&] { bench::BareSort(plain, by.column); }, prepare));
        prepare();
    }
    bench::Report("select all", bench::InTurn(
                                    rounds, [&] { window.Command(bw::kCommandSelectAll); },
                                    [&] {
                                        for (bw::GameEntry& entry : games)
                                            entry.checked = true;
                                    },
                                    [&] {
                                        window.Command(bw::kCommandSelectAll);
                                        window.Command(bw::kCommandSelectInverse);
                                        for (bw::GameEntry& entry : games)
                                            entry.checked = false;
                                    }));
    std::vector<std::wstring> names;
    for (const bw::GameEntry& entry : games)
        names.emplace_back(entry.name.begin(), entry.name.end());
    const bw::FindRecord rotate{.find = u"^(.)(.*)$", .replace = u"$2$1", .regex = true};
    bench::Report("replace all by expression", bench::InTurn(
                                                   rounds, [&] { window.ReplaceAll(rotate); },
                                                   [&] { BareReplace(names); }, [] {}));
}

}  // namespace

int main(int count, char** words) {
    if (std::getenv("DISPLAY") == nullptr || std::getenv("QT_QPA_PLATFORM") == nullptr)
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    const std::string mode = count > 1 ? words[1] : "";
    if (mode == "start-ours") return StartOurs(count, words);
    if (mode == "start-bare") return StartBare(count, words);
    const int rounds = count > 1 ? std::atoi(words[1]) : 11;

    const TemporaryFolder home;
    const EnvironmentVariable moved("BANKWEAVER_HOME", home.Path().c_str());
    const auto store = bw::MakeUserStore();
    const bw::GameList games = bench::FullList();
    const std::string list = bw::StoreRememberedList(games, bw::ColumnWidths{}, "/");
    store->RegWriteBinary(bw::kHistoryKey, "Data",
                          {reinterpret_cast<const uint8_t*>(list.data()), list.size()});
    Starts(rounds, home / "times");

    const QApplication application(count, words);
    Window window(*store);
    Commands(rounds, window, games);
    std::fflush(stdout);
    std::_Exit(0);  // without the window's farewell, which would store the list
}
