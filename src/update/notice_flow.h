// Fetches notices and decides which are shown. Each id is shown once, unless a notice wants to be
// shown at each start.
#pragma once

#include <optional>
#include <string>

#include "settings/settings_store.h"
#include "update/deployment.h"
#include "update/notice_record.h"
#include "update/update_host.h"
#include "update/update_source.h"

namespace bw {

class NoticeFlow {
  public:
    NoticeFlow(UpdateHost& host, UpdateSource& source, SettingsStore& store,
               const Deployment& deployment)
        : host_(host), source_(source), store_(store), deployment_(deployment) {}

    // Fetches a notice; PostNotice() follows if there is one to show. Nothing while one is under
    // way or waits to be shown, and in this run no more once a fetch has failed or has brought
    // nothing to show.
    void Start();
    // A notice that is under way comes to nothing, unless Start() was called again by then.
    void Stop() { wanted_ = false; }

    // The text of the notice that waits, ready for a person's eyes; empty if it has none in this
    // language.
    std::u16string Text(Language language) const;
    // What became of PostNotice().
    void Shown();
    void NotShown();

  private:
    void Answered(const std::optional<NoticeRecord>& answer);
    bool IsToShow() const;

    UpdateHost& host_;
    UpdateSource& source_;
    SettingsStore& store_;
    const Deployment& deployment_;
    NoticeRecord record_;
    bool wanted_ = false;
    bool busy_ = false;   // one is under way, or waits to be shown
    bool shown_ = false;  // one has been, in this run
};

}  // namespace bw
