#include "update/range_task.h"

#include "update/http_log.h"
#include "update/http_request.h"

namespace bw {
namespace {

// Bytes that are gathered for a write: threads that write to one file wait for each other, and
// the library hands over 16 KB at most.
constexpr size_t kBlock = size_t{64} << 10;

}  // namespace

void RangeTask::Fetch(const RemoteFile& file, const ByteSink& sink,
                      const std::atomic<bool>& cancel) {
    Run(file, false, sink, cancel);
}

void RangeTask::FetchWhole(const RemoteFile& file, const ByteSink& sink,
                           const std::atomic<bool>& cancel) {
    Run(file, true, sink, cancel);
}

void RangeTask::Run(const RemoteFile& file, bool askWhole, const ByteSink& sink,
                    const std::atomic<bool>& cancel) {
    const bool cut = askWhole && range_.size < file.length;
    HttpRequest request{
        .url = file.url,
        .secureOnly = file.secureOnly,
        .onHead = [&](const HttpHead& head) { return TakeHead(head, file.length, askWhole); },
        .onBody = [&](std::span<const uint8_t> bytes) { return TakeBody(bytes, cut, sink); }};
    if (!askWhole) request.range = range_;
    block_.reserve(kBlock);
    const HttpRequest::End end = request.Perform(cancel);
    if (!block_.empty()) WriteBlock(sink);  // what has arrived stays, whatever the end
    block_ = {};
    if (end == HttpRequest::End::kStopped) {
        status_ = Status::kStopped;
        return;
    }
    // Once all bytes are there, it doesn't matter how the host ends the connection.
    const bool isComplete = done_ == range_.size && !isTooMuch_ && !problem_;
    if (!isComplete) LogHttpError(problem_ ? "WriteFile" : "InternetReadFile", 0);
    status_ = isComplete ? Status::kFinished : Status::kFailed;
}

bool RangeTask::TakeHead(const HttpHead& head, uint64_t length, bool askWhole) {
    const bool isWhole = head.Status() == 200;
    const bool mayBeWhole = askWhole || (range_.first == 0 && range_.size == length);
    const uint64_t expected = isWhole ? length : range_.size;
    wasAnsweredWhole_ = isWhole && !mayBeWhole;
    if ((isWhole ? mayBeWhole : !askWhole && head.IsRange(range_, length)) &&
        head.Length().value_or(expected) == expected) {
        return true;
    }
    LogHttpError("HttpQueryInfo", head.Status());
    return false;
}

bool RangeTask::TakeBody(std::span<const uint8_t> bytes, bool cut, const ByteSink& sink) {
    const uint64_t room = range_.size - done_;
    isTooMuch_ = bytes.size() > room && !cut;
    if (isTooMuch_) return false;
    if (bytes.size() > room) bytes = bytes.first(static_cast<size_t>(room));
    if (block_.size() + bytes.size() > kBlock && !WriteBlock(sink)) return false;
    block_.insert(block_.end(), bytes.begin(), bytes.end());
    done_ += bytes.size();
    return !cut || done_ < range_.size;
}

bool RangeTask::WriteBlock(const ByteSink& sink) {
    const FileResult<> result = sink(range_.first + done_ - block_.size(), block_);
    if (!result) problem_ = result.Problem();
    block_.clear();
    return static_cast<bool>(result);
}

}  // namespace bw
