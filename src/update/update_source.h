// What the flow of updates wants of the network; tests stand in for it.
#pragma once

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "update/update_outcome.h"
#include "update/update_record.h"

namespace bw {

struct DownloadProgress {
    uint64_t done = 0;       // bytes
    uint64_t total = 0;      // bytes
    uint64_t perSecond = 0;  // bytes
};
// Runs on a thread of the download's own.
using ProgressCallback = std::function<void(const DownloadProgress&)>;

// From any thread, several at a time. All calls return soon (less than a tenth of a second) after
// `stop` was set.
class UpdateSource {
  public:
    virtual ~UpdateSource() = default;

    // A small file, of at most one megabyte; what a larger one has beyond that is cut off. Nothing
    // if it can't be had.
    virtual std::optional<std::string> FetchText(const std::string& url,
                                                 const std::atomic<bool>& stop) = 0;
    // The program of the record, and its signature. Done: it is the file `target`, its signature
    // holds, and it is for this version and name. Else nothing is left of it.
    virtual UpdateOutcome FetchProgram(const UpdateRecord& record,
                                       const std::filesystem::path& target,
                                       const std::atomic<bool>& stop,
                                       const ProgressCallback& progress) = 0;
};

}  // namespace bw
