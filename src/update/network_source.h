// The source of updates that uses the network.
#pragma once

#include "update/deployment.h"
#include "update/update_source.h"

namespace bw {

// Larger programs are refused, whatever the host announces.
inline constexpr uint64_t kLargestProgram = uint64_t{512} << 20;  // bytes

class NetworkSource : public UpdateSource {
  public:
    explicit NetworkSource(Deployment deployment) : deployment_(std::move(deployment)) {}

    std::optional<std::string> FetchText(const std::string& url,
                                         const std::atomic<bool>& stop) override;
    UpdateOutcome FetchProgram(const UpdateRecord& record, const std::filesystem::path& target,
                               const std::atomic<bool>& stop,
                               const ProgressCallback& progress) override;

  private:
    Deployment deployment_;
};

}  // namespace bw
