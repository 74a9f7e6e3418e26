// Looks for a newer version, offers it, fetches it; and fetches notices. All rules of when and
// whether are here; the host (the main window) has threads, timers, messages and dialogs.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <set>
#include <vector>

#include "settings/settings_store.h"
#include "update/deployment.h"
#include "update/notice_flow.h"
#include "update/program_file.h"
#include "update/update_host.h"
#include "update/update_source.h"

namespace bw {

// All calls on the window's thread. The given things must live longer.
class UpdateFlow {
  public:
    UpdateFlow(UpdateHost& host, UpdateSource& source, SettingsStore& store,
               const Deployment& deployment, const ProgramFile& program);

    // Looks by itself from now on: at once, and at each tick. Nothing where no host is named.
    void Start();
    // Not any more. What the user has asked for goes on; a notice, an offer or a forced update that
    // is under way comes to nothing if it arrives before looking has begun again.
    void Stop();
    void OnTimer(UpdateTimer timer);
    // The user wants to know: the offer is shown whatever the versions.
    void Check();

    // Of the newest answer of the host.
    const UpdateRecord& Record() const { return record_; }
    bool IsNewer() const;
    // Fetches the program of the record, as the user wishes; PostReady() follows. If one is being
    // fetched already, the user is told of that one's end; if one is ready, PostReady() says so
    // again.
    void Install();
    // The program that is fetched and checked, once PostReady() was called; empty before.
    const std::filesystem::path& Ready() const { return ready_; }
    // Removes it again: the program ends before it was installed.
    void ForgetReady();

    NoticeFlow& Notices() { return notices_; }

  private:
    enum class Caller { kStart, kTimer, kMenu };
    struct Download {
        // Removes what was fetched unless somebody has taken it.
        ~Download();

        bool asked = false;  // by the user
        bool over = false;
        // Made from the version and the address, which may be of any length.
        size_t id = 0;
        std::filesystem::path target{};  // empty once it is taken
        // Of the task, which is done with it before `over` is set.
        UpdateOutcome outcome{UpdateOutcome::Kind::kStopped};
    };

    void Check(Caller caller);
    void Answered(const std::optional<UpdateRecord>& answer);
    void Decide(Caller caller);
    void Force();
    void Fetch(bool asked);
    UpdateOutcome Fetchable() const;
    void Ended(const std::shared_ptr<Download>& download);

    UpdateHost& host_;
    UpdateSource& source_;
    const Deployment& deployment_;
    const ProgramFile& program_;
    NoticeFlow notices_;
    UpdateRecord record_;
    bool on_ = false;
    bool noticesOn_ = false;
    bool checking_ = false;
    std::vector<Caller> waiting_;         // for the answer that is under way, each once
    std::shared_ptr<Download> download_;  // under way
    std::filesystem::path ready_;
    // Downloads that have come to their end, good or bad, in this run: they aren't begun again
    // unless the user asks.
    std::set<size_t> ended_;
};

}  // namespace bw
