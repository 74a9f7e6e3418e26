#include <algorithm>
#include <cmath>
#include <deque>
#include <fstream>
#include <sstream>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "common/temporary_folder.h"
#include "settings/setting_names.h"
#include "support/text.h"
#include "update/update_flow.h"

namespace bw {
namespace {

using std::chrono::milliseconds;

struct Task : UpdateTask {
    const std::atomic<bool>& Stop() const override { return stop; }
    void Publish(std::function<void()> step) override { published.push_back(std::move(step)); }
    void Work() {
        if (const auto once = std::exchange(work, {})) once(*this);
    }
    std::atomic<bool> stop = false;
    std::function<void(UpdateTask&)> work;
    std::function<void()> finish;
    std::vector<std::function<void()>> published;
};

// A window and a network that do what words say, and log what the flow wants of them. Tasks are
// run at once unless they are held.
class Script : public UpdateHost, public UpdateSource {
  public:
    std::string Run(const std::string& words) {
        std::istringstream stream(words);
        for (std::string word; stream >> word;) {
            const size_t equals = word.find('=');
            if (equals == word.npos) {
                actions_.at(word)();
            } else {
                said_[word.substr(0, equals)] = word.substr(equals + 1);
            }
            while (!held_ && !tasks_.empty())
                Finish();
        }
        return std::exchange(log_, {});
    }

    void StartTask(std::function<void(UpdateTask&)> work, std::function<void()> finish) override {
        auto& task = *tasks_.emplace_back(std::make_unique<Task>());
        task.work = std::move(work);
        task.finish = std::move(finish);
    }
    void SetTimer(UpdateTimer timer, milliseconds interval) override {
        timers_[timer] = {interval, now_ + interval};
    }
    void KillTimer(UpdateTimer timer) override { timers_.erase(timer); }
    milliseconds Since1970() const override { return now_; }
    void PostOffer() override { log_ += " offer"; }
    void PostReady() override { log_ += flow_->Ready().empty() ? " nothing" : " ready"; }
    void PostNotice() override { log_ += " notice"; }
    void TellNoAnswer() override { log_ += " unanswered"; }
    void ShowTitle(std::optional<double> percent) override {
        log_ += percent ? fmt::format(" {:.0f}%", *percent) : " title";
    }
    void TellOutcome(const UpdateOutcome& outcome, bool asked) override {
        log_ += fmt::format(" {}{}", asked ? "asked" : "forced", static_cast<int>(outcome.kind));
    }

    std::optional<std::string> FetchText(const std::string& url,
                                         const std::atomic<bool>&) override {
        const bool notify = url.find("notify.json?") != url.npos;
        log_ += notify ? " notify" : " update";
        if (!said_[notify ? "quiet" : "down"].empty()) return std::nullopt;
        if (!notify)
            return fmt::format(R"({{"version":"{}","url":"{}","force_update":{}}})",
                               said_["version"], said_["url"], said_["force"]);
        return fmt::format(R"({{"notify_id":{},"for_users_type":{},"restart_show":{}}})",
                           said_["id"], said_["users"], said_["again"]);
    }
    UpdateOutcome FetchProgram(const UpdateRecord& record, const std::filesystem::path& target,
                               const std::atomic<bool>&,
                               const ProgressCallback& progress) override {
        log_ += " program" + ToUtf8(record.version).substr(0, 1);
        for (const uint64_t total : {0, 2})
            progress({.done = 1, .total = total});
        const int kind = std::stoi(said_["ends"]);
        if (kind == 0) std::ofstream(target) << "2";
        return {static_cast<UpdateOutcome::Kind>(kind)};
    }

  private:
    void Finish() {
        const auto task = std::move(tasks_.front());
        tasks_.pop_front();
        task->Work();
        for (const auto& step : task->published)
            step();
        task->finish();
    }
    void PassHalfMinute() {
        now_ += std::chrono::seconds(30);
        for (const UpdateTimer timer : {UpdateTimer::kCheck, UpdateTimer::kNotice}) {
            const auto set = timers_.find(timer);
            if (set == timers_.end() || set->second.second > now_) continue;
            set->second.second += set->second.first;
            flow_->OnTimer(timer);
        }
    }
    void LogState() {
        uint32_t id = 0;
        store_->RegReadDword(kMainKey, setting::kLastNotifyId, id);
        log_ += fmt::format(" last{} files{}", id, folder_.CountFiles());
    }

    const std::map<std::string, std::function<void()>> actions_{
        {"start", [&] { flow_->Start(); }},
        {"stop", [&] { flow_->Stop(); }},
        {"check", [&] { flow_->Check(); }},
        {"install", [&] { flow_->Install(); }},
        {"forget", [&] { flow_->ForgetReady(); }},
        {"shown", [&] { flow_->Notices().Shown(); }},
        {"hidden", [&] { flow_->Notices().NotShown(); }},
        {"late",
         [&] { flow_->OnTimer(UpdateTimer::kCheck), flow_->OnTimer(UpdateTimer::kNotice); }},
        {"30s", [&] { PassHalfMinute(); }},
        {"hold", [&] { held_ = true; }},
        {"go", [&] { held_ = false; }},
        {"first", [&] { Finish(); }},
        {"turn", [&] { std::rotate(tasks_.begin(), tasks_.begin() + 1, tasks_.end()); }},
        {"work", [&] { std::ranges::for_each(tasks_, [](const auto& task) { task->Work(); }); }},
        {"end", [&] { tasks_.clear(), flow_.reset(); }},
        {"moved", [&] { std::filesystem::remove(folder_ / "program"); }},
        {"nowhere", [&] { deployment_.host.clear(); }},
        {"plainly", [&] { deployment_.plainHttp = true; }},
        {"state", [&] { LogState(); }}};
    std::map<std::string, std::string> said_{{"version", "2.0.0.0"}, {"url", "https://h/b"},
                                             {"force", "false"},     {"ends", "0"},
                                             {"again", "false"},     {"id", "0"},
                                             {"users", "0"},         {"quiet", "1"}};
    TemporaryFolder folder_;
    std::unique_ptr<SettingsStore> store_ = MakeMemoryStore();
    Deployment deployment_{.host = "https://h", .version = "1.0.0.0"};
    ProgramFile program_{(std::ofstream(folder_ / "program") << "1", folder_ / "program")};
    std::optional<UpdateFlow> flow_{std::in_place, *this, *this, *store_, deployment_, program_};
    std::deque<std::unique_ptr<Task>> tasks_;
    std::map<UpdateTimer, std::pair<milliseconds, milliseconds>> timers_;  // interval, next
    milliseconds now_{1'000'000};
    bool held_ = false;
    std::string log_;
};

struct Case {
    const char* words;
    const char* log;
};

void Check(std::initializer_list<Case> cases, const std::string& before = {},
           const std::string& first = {}) {
    for (const auto& [words, log] : cases)
        EXPECT_EQ(Script().Run(before + words), first + log) << words;
}

// The host's notices fail unless the words say otherwise, and so are asked for once.
TEST(UpdateFlow, WhoAsksDecidesWhatComesOfAnAnswer) {
    Check({{"start 30s 30s 30s 30s check",
            " update title offer notify update title update title update title offer"},
           {"version=1.0.0.0 start check", " update title notify update title offer"},
           {"version=0.9.9.9 start check", " update title notify update title offer"},
           {"version= force=true start check", " update title notify update title offer"},
           {"down=1 start check 30s 30s down= check",
            " update update unanswered update update title offer notify"},
           {"nowhere start check 30s 30s", ""},
           // Without looking by itself there are no notices.
           {"check 30s 30s late", " update title offer"},
           {"start stop 30s 30s late start", " update title offer notify update title offer"},
           {"hold start stop check first stop start go",
            " update title offer update title offer notify"},
           {"hold start work stop go state", " update last0 files1"},
           {"hold start work stop start go", " update title offer notify"},
           // Whoever comes while an answer is under way gets the same.
           {"start hold 30s 30s check 30s 30s check go",
            " update title offer notify update title offer"},
           {"hold start work check version=1.0 go", " update title offer offer notify"}});
}

TEST(UpdateFlow, ForcedUpdateComesUnaskedAndOnce) {
    Check({{"start force=true 30s 30s version=3.0.0.0 30s 30s install state forget state",
            " update title offer notify update title program2 50% ready update title ready"
            " last0 files2 last0 files1"},
           {"force=true start forget 30s 30s install",
            " update title notify program2 50% ready update title program2 50% ready"},
           {"force=true check", " update title offer"},
           {"moved force=true start 30s 30s", " update title offer notify update title"},
           // While it runs the title is its own.
           {"start hold force=true 30s 30s first 30s 30s check turn go",
            " update title offer notify update title update offer program2 50% ready"},
           // Refused once, for each program.
           {"force=true ends=15 start 30s 30s ends=0 version=3.0.0.0 30s 30s forget"
            " version=2.0.0.0 30s 30s",
            " update title notify program2 50% title forced15 update title"
            " update title program3 50% ready update title"},
           {"force=true ends=10 start 30s 30s",
            " update title notify program2 50% forced10 update title program2 50% forced10"},
           {"force=true ends=1 start", " update title notify program2 50%"},
           {"force=true url= start 30s 30s", " update title notify update title"},
           {"force=true url=http://h/b start 30s 30s",
            " update title title forced6 notify update title"},
           // Not wanted any more; wanted after all, by the user; without a window.
           {"hold force=true start first stop go state",
            " update title title notify program2 last0 files1"},
           {"hold force=true start first install stop go state",
            " update title notify program2 50% ready last0 files2"},
           {"hold force=true start first work end state",
            " update title notify program2 last0 files1"}});
}

TEST(UpdateFlow, InstallsWhatIsFitToBeFetched) {
    Check({{"check install", " program2 50% ready"},
           {"ends=12 check install", " program2 50% title asked12"},
           {"ends=10 check install", " program2 50% asked10"},
           {"url= check install", ""},
           {"version=2.0.0.0/../x check install", " title asked3"},
           {"version=2 check install", " title asked3"},
           {"version=1.0.0.0 check install", " title asked4"},
           {"version=0.10.0.0 check install", " title asked4"},
           {"url=h check install", " title asked5"},
           {"url=https://h/ check install", " title asked5"},
           {"url=http://h/b check install", " title asked6"},
           {"url=http://h/b plainly check install", " program2 50% ready"},
           {"moved check install", " title asked9"}},
          {}, " update title offer");
}

TEST(UpdateFlow, EachNoticeIsShownOnce) {
    Check({{"id=5 users=1 start 30s shown state 30s id=6 30s 30s",
            " notice last5 files1 update title notify update title"},
           {"id=5 users=8 start shown id=6 30s shown state", " notice notify notice last6 files1"},
           {"id=5 users=9 start hidden state 30s", " notice last0 files1 notify notice"},
           {"id=5 users=6 start 30s users=1 30s", " notify update title notify notice"},
           {"users=1 again=true start shown 30s 30s 30s", " notice notify update title"},
           {"id=9 users=1 start shown again=true id=4 30s id=9 30s", " notice notify update title"},
           {"quiet=1 start quiet= id=5 users=1 30s 30s", " update title"},
           // What is dropped leaves the way free.
           {"id=5 users=1 hold start first work stop go start", " update title notify notice"}},
          "version=1 quiet= ", " update title notify");
}

}  // namespace
}  // namespace bw
