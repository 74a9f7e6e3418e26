#include "update/update_flow.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "support/files.h"
#include "support/text.h"
#include "update/http_url.h"
#include "update/version_numbers.h"

namespace bw {
namespace {

constexpr std::chrono::milliseconds kCheckInterval = std::chrono::minutes(1);
constexpr std::chrono::milliseconds kNoticeInterval = std::chrono::seconds(30);

using Kind = UpdateOutcome::Kind;

size_t IdOf(const UpdateRecord& record) {
    return std::hash<std::string>()(ToUtf8(record.version) + '\n' + record.url);
}

}  // namespace

UpdateFlow::UpdateFlow(UpdateHost& host, UpdateSource& source, SettingsStore& store,
                       const Deployment& deployment, const ProgramFile& program)
    : host_(host),
      source_(source),
      deployment_(deployment),
      program_(program),
      notices_(host, source, store, deployment) {}

void UpdateFlow::Start() {
    if (on_ || !deployment_.NamesHost()) return;
    on_ = true;
    Check(Caller::kStart);
    host_.SetTimer(UpdateTimer::kCheck, kCheckInterval);
}

void UpdateFlow::Stop() {
    on_ = false;
    noticesOn_ = false;
    host_.KillTimer(UpdateTimer::kCheck);
    host_.KillTimer(UpdateTimer::kNotice);
    std::erase_if(waiting_, [](Caller caller) { return caller != Caller::kMenu; });
    notices_.Stop();
    if (download_ && !download_->asked) host_.ShowTitle(std::nullopt);
}

void UpdateFlow::OnTimer(UpdateTimer timer) {
    // A tick may come late.
    if (timer == UpdateTimer::kCheck && on_) Check(Caller::kTimer);
    if (timer == UpdateTimer::kNotice && noticesOn_) notices_.Start();
}

void UpdateFlow::Check() {
    if (deployment_.NamesHost()) Check(Caller::kMenu);
}

void UpdateFlow::Check(Caller caller) {
    if (std::ranges::find(waiting_, caller) == waiting_.end()) waiting_.push_back(caller);
    if (std::exchange(checking_, true)) return;
    const auto answer = std::make_shared<std::optional<UpdateRecord>>();
    host_.StartTask(
        [answer, &source = source_,
         url = UpdateFileUrl(deployment_, host_.Since1970())](UpdateTask& task) {
            if (const auto json = source.FetchText(url, task.Stop()))
                *answer = ReadUpdateRecord(*json);
        },
        [this, answer] { Answered(*answer); });
}

void UpdateFlow::Answered(const std::optional<UpdateRecord>& answer) {
    checking_ = false;
    const std::vector<Caller> callers = std::exchange(waiting_, {});
    if (callers.empty()) return;
    if (!answer) {
        if (std::ranges::find(callers, Caller::kMenu) != callers.end()) host_.TellNoAnswer();
        return;
    }
    if (on_ && !std::exchange(noticesOn_, true)) {
        notices_.Start();
        host_.SetTimer(UpdateTimer::kNotice, kNoticeInterval);
    }
    record_ = *answer;
    if (!download_) host_.ShowTitle(std::nullopt);
    for (const Caller caller : callers)
        Decide(caller);
}

bool UpdateFlow::IsNewer() const {
    return ReadVersion(deployment_.version) < ReadVersion(record_.version);
}

void UpdateFlow::Decide(Caller caller) {
    const bool force = record_.force_update && IsNewer() && program_.Replaceable();
    if (force && caller != Caller::kMenu) {
        Force();
    } else if (caller == Caller::kMenu || (caller == Caller::kStart && IsNewer())) {
        host_.PostOffer();
    }
}

void UpdateFlow::Force() {
    if (!download_ && ready_.empty() && !ended_.contains(IdOf(record_))) Fetch(false);
}

void UpdateFlow::Install() {
    if (download_) {
        download_->asked = true;
    } else if (!ready_.empty()) {
        host_.PostReady();
    } else {
        Fetch(true);
    }
}

void UpdateFlow::Fetch(bool asked) {
    const auto download = std::make_shared<Download>();
    download_ = download;
    download->asked = asked;
    download->id = IdOf(record_);
    if (const UpdateOutcome fetchable = Fetchable(); !fetchable) {
        download->outcome = fetchable;
        return Ended(download);
    }
    download->target = program_.DownloadTarget(record_.version);
    const auto work = [this, download, &source = source_, record = record_,
                       target = download->target](UpdateTask& task) {
        const auto show = [&](const DownloadProgress& progress) {
            if (progress.total == 0) return;
            const double percent =
                static_cast<double>(progress.done) * 100.0 / static_cast<double>(progress.total);
            task.Publish([this, download, percent] {
                if (!download->over && (download->asked || on_)) host_.ShowTitle(percent);
            });
        };
        download->outcome = source.FetchProgram(record, target, task.Stop(), show);
    };
    host_.StartTask(work, [this, download] { Ended(download); });
}

// All that can be looked at before the network is asked.
UpdateOutcome UpdateFlow::Fetchable() const {
    if (record_.url.empty()) return {Kind::kNoAddress};
    if (!IsPlainVersion(record_.version)) return {Kind::kBadVersion};
    if (!IsNewer()) return {Kind::kNotNewer};
    const auto url = CrackUrl(record_.url);
    if (!url || LastPart(record_.url).empty()) return {Kind::kBadAddress};
    const bool plain = deployment_.plainHttp && url->scheme == "http";
    if (!url->IsSecure() && !plain) return {Kind::kNotSecure};
    return program_.Replaceable();
}

void UpdateFlow::Ended(const std::shared_ptr<Download>& download) {
    download_.reset();
    download->over = true;
    const Kind kind = download->outcome.kind;
    if (kind == Kind::kStopped || kind == Kind::kNoAddress) return;
    if (!download->asked && !on_) return;
    if (kind != Kind::kNetwork) ended_.insert(download->id);
    if (kind == Kind::kDone) {
        ready_ = std::exchange(download->target, {});
        return host_.PostReady();
    }
    // A transfer that broke leaves the title at the percentage that it came to.
    if (kind != Kind::kNetwork) host_.ShowTitle(std::nullopt);
    host_.TellOutcome(download->outcome, download->asked);
}

void UpdateFlow::ForgetReady() {
    if (!ready_.empty()) DeleteFile(std::exchange(ready_, {}));
}

UpdateFlow::Download::~Download() {
    if (outcome && !target.empty()) DeleteFile(target);
}

}  // namespace bw
