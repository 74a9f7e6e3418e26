// A source of updates that needs no network.
#pragma once

#include <thread>

#include "common/game_image.h"
#include "update/update_source.h"

namespace bw {

class FakeUpdates : public UpdateSource {
  public:
    std::optional<std::string> update = "{}", notice = "{}";
    UpdateOutcome outcome;  // of fetching a program
    std::atomic<bool> hangs = false;
    std::atomic<int> asked = 0;

    std::optional<std::string> FetchText(const std::string& url,
                                         const std::atomic<bool>& stop) override {
        ++asked;
        if (Stopped(stop)) return std::nullopt;
        return url.find("update.json") != std::string::npos ? update : notice;
    }
    UpdateOutcome FetchProgram(const UpdateRecord&, const std::filesystem::path& target,
                               const std::atomic<bool>& stop,
                               const ProgressCallback& progress) override {
        progress({.done = 1, .total = 8});
        if (Stopped(stop)) return {UpdateOutcome::Kind::kStopped};
        if (outcome) test::WriteText(target, "new");
        return outcome;
    }

  private:
    bool Stopped(const std::atomic<bool>& stop) const {
        while (hangs && !stop)
            std::this_thread::yield();
        return stop;
    }
};

}  // namespace bw
