#include "shell/tasks/list_keeper.h"

#include <QDateTime>
#include <chrono>
#include <span>
#include <system_error>
#include <utility>

#include "language/problem_text.h"
#include "settings/recent_files.h"
#include "shell/framework/texts.h"
#include "support/text.h"

namespace bw {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

// What a kill may cost. Each writing costs the disk some megabytes, and many changes come in rows.
constexpr auto kDelay = 2s;

QString TimeText(fs::file_time_type time, const char* format) {
    const auto system = std::chrono::time_point_cast<std::chrono::milliseconds>(
        std::chrono::file_clock::to_sys(time));
    return QDateTime::fromMSecsSinceEpoch(system.time_since_epoch().count())
        .toString(QString::fromLatin1(format));
}

// A free name for a list that is put aside.
fs::path AsideName(const fs::path& folder, fs::file_time_type time) {
    const std::string stamp = "List " + TimeText(time, "yyyy-MM-dd HH.mm.ss").toStdString();
    fs::path file = folder / (stamp + ".fcl");
    std::error_code error;
    for (int number = 2; fs::exists(file, error); ++number)
        file = folder / (stamp + " (" + std::to_string(number) + ").fcl");
    return file;
}

struct News {
    std::u16string line;
    std::u16string details;  // line by line
};

News NewsOf(const ListKeeper::Found& found, Language language) {
    News news;
    const auto add = [&](TextId format, const fs::path& file) {
        if (!news.details.empty()) news.details += u'\n';
        news.details += FormatText(LoadText(format, language), PathText(file));
    };
    for (const fs::path& file : found.aside)
        add(TextId::kListAsFile, file);
    for (const fs::path& file : found.damaged)
        add(TextId::kKeptDamaged, file);
    if (found.games) {
        news.line = FormatText(LoadText(TextId::kListBroughtBack, language),
                               FromQt(TimeText(found.time, "yyyy-MM-dd HH:mm:ss")),
                               found.games->size(), CountChecked(*found.games));
    } else {
        news.line = news.details.substr(0, news.details.find(u'\n'));
    }
    return news;
}

}  // namespace

ListKeeper::ListKeeper(ListHost& host, fs::path folder) : host_(host), folder_(std::move(folder)) {
    timer_.setSingleShot(true);
    timer_.setInterval(kDelay);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Keep(); });
}

ListKeeper::~ListKeeper() {
    if (writing_.valid()) writing_.wait();
}

ListKeeper::Found ListKeeper::Find(std::span<const uint8_t> stored) const {
    Found found;
    if (folder_.empty()) return found;
    KeptLists kept = FindKeptLists(folder_, host_.Base());
    found.damaged = std::move(kept.damaged);
    if (kept.lists.empty()) return found;
    const auto putAside = [&](const fs::path& file) {
        AddRecentFile(host_.Store(), RecentKind::kLists, file);
        found.aside.push_back(file);
    };
    BroughtBack& newest = kept.lists.front();
    // An emptied list is as the user left it, and the one before may still be missed.
    const bool replaces = newest.origin == Crc32(stored) && !newest.games.empty();
    if (!stored.empty() && !replaces) {
        const fs::path file = AsideName(folder_, fs::file_time_type::clock::now());
        if (WriteFile(file, stored)) putAside(file);
    }
    for (const BroughtBack& older : std::span(kept.lists).subspan(1)) {
        const fs::path file = AsideName(folder_, older.time);
        std::error_code error;
        if (!older.games.empty()) fs::rename(older.file, file, error);
        if (!older.games.empty() && !error) putAside(file);
    }
    found.time = newest.time;
    found.games = std::move(newest.games);
    found.lists = std::move(kept.lists);
    return found;
}

void ListKeeper::Begin(std::span<const uint8_t> stored, Found found, GameList remembered) {
    origin_ = Crc32(stored);
    const News news = NewsOf(found, host_.CurrentLanguage());
    host_.Editor().Restore(found.games ? std::move(*found.games) : std::move(remembered));
    // What has come in lies in its place already.
    timer_.stop();
    changed_ = false;
    if (!news.line.empty()) host_.Tell(news.line, news.details);
    found_ = std::move(found.lists);
    if (!found_.empty()) Write();
}

void ListKeeper::Changed() {
    changed_ = true;
    if (!folder_.empty() && !timer_.isActive()) timer_.start();
}

void ListKeeper::Keep() {
    if (writing_.valid()) {
        if (writing_.wait_for(0s) != std::future_status::ready) return timer_.start();
        const FileResult<> written = writing_.get();
        if (!written && !std::exchange(told_, true)) TellOf(written.Problem());
    }
    if (changed_) Write();
}

void ListKeeper::TellOf(const FileProblem& problem) {
    const Language language = host_.CurrentLanguage();
    host_.Tell(
        FormatText(LoadText(TextId::kListNotKept, language), ProblemText(problem, language)));
}

void ListKeeper::Write() {
    if (writing_.valid()) writing_.wait();
    copy_ = host_.Editor().Games();  // anew in the same memory
    try {
        writing_ = std::async(std::launch::async,
                              [this, base = host_.Base(), origin = origin_]() -> FileResult<> {
                                  if (!kept_) {
                                      FileResult<KeptList> begun = KeptList::Begin(folder_);
                                      if (!begun) return begun.Problem();
                                      kept_ = std::move(*begun);
                                  }
                                  FileResult<> written = kept_->Keep(copy_, base, origin);
                                  if (!written) return written;
                                  for (const BroughtBack& old : std::exchange(found_, {}))
                                      DeleteFile(old.file);
                                  return {};
                              });
        changed_ = false;
    } catch (const std::system_error&) {
        // No more threads to be had now; the timer asks again.
    }
    timer_.start();  // to see how it went
}

void ListKeeper::Forget() {
    timer_.stop();
    changed_ = false;
    if (writing_.valid()) writing_.wait();
    for (const BroughtBack& old : std::exchange(found_, {}))
        DeleteFile(old.file);
    if (kept_) kept_->Forget();
}

}  // namespace bw
