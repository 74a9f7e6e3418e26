// Looks for a newer version, offers it, fetches it; and fetches notices. All rules of when and
// whether are here; the host (the main window) has threads, timers, messages and dialogs.
#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <optional>
#include <vector>

#include "settings/settings_store.h"
#include "update/deployment.h"
#include "update/notice_flow.h"
#include "update/program_file.h"
#include "update/update_host.h"
#include "update/update_source.h"
#include "update/version_numbers.h"

namespace bw {

// All calls on the window's thread. The given things must live longer.
class UpdateFlow {
  public:
    UpdateFlow(UpdateHost& host, UpdateSource& source, SettingsStore& store,
               const Deployment& deployment, const ProgramFile& program);

    // Looks by itself from now on: at once, and at each tick. Nothing where no host is named.
    void Start();
    // Not any more; a notice or an offer that is under way is dropped.
    void Stop();
    void OnTimer(UpdateTimer timer);
    // The user wants to know: the offer is shown whatever the versions.
    void Check();

    // Of the newest answer of the host.
    const UpdateRecord& Record() const { return record_; }
    bool IsNewer() const;
    // Fetches the program of the record; PostReady() follows. Nothing if that is going on already.
    void Install();
    // The program that is fetched and checked, once PostReady() was called; empty before.
    const std::filesystem::path& Ready() const { return ready_; }
    // Removes it again: the program ends before it was installed.
    void ForgetReady();

    NoticeFlow& Notices() { return notices_; }

  private:
    struct Caller {
        bool silent;
        bool periodic;
    };
    void Check(Caller caller);
    void Answered(const std::optional<std::string>& json);
    void Decide(Caller caller);
    void Fetch(bool asked);

    UpdateHost& host_;
    UpdateSource& source_;
    const Deployment& deployment_;
    const ProgramFile& program_;
    NoticeFlow notices_;
    UpdateRecord record_;
    std::vector<Caller> waiting_;  // for the answer that is under way; empty if none is
    bool on_ = false;
    bool fetching_ = false;
    std::filesystem::path ready_;
    // Refused in this run, and not fetched again unless the user asks.
    std::optional<std::u16string> refused_;
};

}  // namespace bw
