// One range of a file that is being fetched.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "support/file_problem.h"
#include "update/http_head.h"
#include "update/http_url.h"

namespace bw {

// Takes bytes of the file, at their place in it. From several threads, for different places.
using ByteSink = std::function<FileResult<>(uint64_t offset, std::span<const uint8_t> bytes)>;

struct RemoteFile {
    HttpUrl url;
    uint64_t length = 0;  // bytes, as the host has announced
    bool secureOnly = false;
};

// Fetched on one thread, watched from others.
class RangeTask {
  public:
    enum class Status : uint8_t { kRunning, kFinished, kFailed, kStopped };

    explicit RangeTask(const ByteRange& range) : range_(range) {}

    // The host must answer with exactly this range, or with the whole file if that is the range.
    void Fetch(const RemoteFile& file, const ByteSink& sink, const std::atomic<bool>& cancel);
    // By a request for the whole file, of which the range is the beginning.
    void FetchWhole(const RemoteFile& file, const ByteSink& sink, const std::atomic<bool>& cancel);
    // It can't even begin.
    void Fail() { status_ = Status::kFailed; }

    const ByteRange& Range() const { return range_; }
    uint64_t Done() const { return done_; }  // bytes
    Status State() const { return status_; }
    // Once it has ended: whether the host has answered with the whole file, which was too much.
    bool WasAnsweredWhole() const { return wasAnsweredWhole_; }
    const std::optional<FileProblem>& Problem() const { return problem_; }

  private:
    void Run(const RemoteFile& file, bool askWhole, const ByteSink& sink,
             const std::atomic<bool>& cancel);
    bool TakeHead(const HttpHead& head, uint64_t length, bool askWhole);
    bool TakeBody(std::span<const uint8_t> bytes, bool cut, const ByteSink& sink);
    bool WriteBlock(const ByteSink& sink);

    const ByteRange range_;
    std::vector<uint8_t> block_;  // the newest of what is done, not written yet
    std::atomic<uint64_t> done_{0};
    std::atomic<Status> status_{Status::kRunning};
    bool isTooMuch_ = false;
    bool wasAnsweredWhole_ = false;
    std::optional<FileProblem> problem_;
};

}  // namespace bw
