#include "update/http_client.h"

#include <algorithm>
#include <chrono>
#include <deque>
#include <string_view>
#include <system_error>
#include <thread>
#include <vector>

#include "update/http_log.h"
#include "update/http_request.h"
#include "update/range_task.h"

namespace bw {
namespace {

using Kind = HttpResult::Kind;
using namespace std::chrono_literals;

constexpr int kFewestThreads = 2;
constexpr int kMostThreads = 64;
constexpr uint64_t kOneThreadBelow = 4096;  // bytes
constexpr auto kReportInterval = 500ms;
constexpr auto kReportSlice = 10ms;  // so that the report ends soon after its download

// A deque: tasks stay where they are.
using RangeTasks = std::deque<RangeTask>;

// Ranges of the same size, the last one with all that remains.
RangeTasks SplitIntoRanges(uint64_t total, int threads) {
    RangeTasks tasks;
    const auto count = static_cast<uint64_t>(threads);
    const uint64_t chunk = total / count;
    for (uint64_t i = 0; i < count; ++i) {
        tasks.emplace_back(ByteRange{chunk * i, i + 1 < count ? chunk : total - chunk * i});
    }
    return tasks;
}

bool IsAnyRunning(const RangeTasks& tasks) {
    return std::ranges::any_of(
        tasks, [](const auto& task) { return task.State() == RangeTask::Status::kRunning; });
}

// Tells how far the tasks are, until none runs any more.
void ReportProgress(const RangeTasks& tasks, const ProgressCallback& progress,
                    const std::atomic<bool>& cancel) {
    uint64_t previous = 0;
    for (;;) {
        for (auto slept = 0ms; slept < kReportInterval; slept += kReportSlice) {
            if (cancel || !IsAnyRunning(tasks)) return;
            std::this_thread::sleep_for(kReportSlice);
        }
        DownloadProgress sum;
        for (const RangeTask& task : tasks) {
            sum.done += task.Done();
            sum.total += task.Range().size;
        }
        sum.perSecond = (sum.done - previous) * 1000 / kReportInterval.count();
        previous = sum.done;
        progress(sum);
    }
}

// False if the system has no thread left.
template <typename Work>
bool StartThread(std::vector<std::jthread>& threads, Work work) {
    try {
        threads.emplace_back(std::move(work));
        return true;
    } catch (const std::system_error& error) {
        LogHttpError("CreateThread", error.code().value());
        return false;
    }
}

// One file on its way here.
class Download {
  public:
    Download(const HttpLimits& limits, const std::atomic<bool>& cancel,
             const ProgressCallback& progress, std::string_view step, ByteSink sink)
        : limits_(limits),
          cancel_(cancel),
          progress_(progress),
          step_(step),
          sink_(std::move(sink)) {}

    // At most `room` bytes of it.
    HttpResult Run(const std::string& url, uint64_t room);

  private:
    bool TakeAddress(const std::string& url);
    Kind AskLength();
    HttpResult FetchRanges(uint64_t room);
    HttpResult FetchWhole(uint64_t total);
    template <typename Fetch>
    void FetchAll(RangeTasks& tasks, const Fetch& fetch) const;
    HttpResult ResultOf(const RangeTasks& tasks) const;

    const HttpLimits& limits_;
    const std::atomic<bool>& cancel_;
    const ProgressCallback& progress_;
    const std::string_view step_;  // what the debug output calls a range
    const ByteSink sink_;
    RemoteFile file_;
};

HttpResult Download::Run(const std::string& url, uint64_t room) {
    if (!TakeAddress(url)) return {Kind::kRefused};
    if (const Kind kind = AskLength(); kind != Kind::kDone) {
        if (kind == Kind::kFailed) LogHttpError("GetContentLength", 0);
        return {kind};
    }
    const HttpResult result = FetchRanges(room);
    if (result.kind == Kind::kFailed) LogHttpError("PartialDownload", 0);
    return result;
}

bool Download::TakeAddress(const std::string& url) {
    std::optional<HttpUrl> cracked = CrackUrl(url);
    if (!cracked) {
        LogHttpError("InternetCrackUrl", 0);
        return false;
    }
    file_ = {.url = std::move(*cracked), .secureOnly = limits_.secureOnly};
    const bool isFit = limits_.secureOnly ? file_.url.IsSecure() : file_.url.IsHttp();
    if (!isFit) LogHttpError("Scheme", 0);
    return isFit;
}

// By a request for the whole file that ends with the answer's head.
Kind Download::AskLength() {
    int status = 0;
    std::optional<uint64_t> length;
    const HttpRequest request{.url = file_.url,
                              .secureOnly = file_.secureOnly,
                              .onHead =
                                  [&](const HttpHead& head) {
                                      status = head.Status();
                                      length = head.Length();
                                      return false;
                                  },
                              .onBody = [](auto) { return false; }};
    if (request.Perform(cancel_) == HttpRequest::End::kStopped) return Kind::kStopped;
    if (status != 200 || !length) {
        LogHttpError("QueryContentLength", status);
        return Kind::kFailed;
    }
    file_.length = *length;
    return file_.length > limits_.largest ? Kind::kTooLarge : Kind::kDone;
}

HttpResult Download::FetchRanges(uint64_t room) {
    const uint64_t total = std::min(room, file_.length);
    // No range names no bytes. An empty file is here as soon as its length is known.
    if (total == 0) return {};
    const int threads =
        total < kOneThreadBelow ? 1 : std::clamp(limits_.threads, kFewestThreads, kMostThreads);
    RangeTasks tasks = SplitIntoRanges(total, threads);
    FetchAll(tasks, [&](RangeTask& task) { task.Fetch(file_, sink_, cancel_); });
    const HttpResult result = ResultOf(tasks);
    const bool hasNoRanges =
        std::ranges::any_of(tasks, [](const RangeTask& task) { return task.WasAnsweredWhole(); });
    const bool again = result.kind == Kind::kFailed && hasNoRanges && limits_.wholeIfNoRanges;
    return again ? FetchWhole(total) : result;
}

HttpResult Download::FetchWhole(uint64_t total) {
    LogHttpWarning("SetContentRange", 200);
    RangeTasks tasks;
    tasks.emplace_back(ByteRange{0, total});
    FetchAll(tasks, [&](RangeTask& task) { task.FetchWhole(file_, sink_, cancel_); });
    return ResultOf(tasks);
}

// Each task on a thread of its own; returns when all have ended.
template <typename Fetch>
void Download::FetchAll(RangeTasks& tasks, const Fetch& fetch) const {
    std::vector<std::jthread> threads;
    for (RangeTask& task : tasks) {
        if (!StartThread(threads, [&] { fetch(task); })) task.Fail();
    }
    if (progress_) StartThread(threads, [&] { ReportProgress(tasks, progress_, cancel_); });
    threads.clear();  // joins
    for (const RangeTask& task : tasks) {
        if (task.State() == RangeTask::Status::kFailed) LogHttpError(step_, 0);
    }
}

HttpResult Download::ResultOf(const RangeTasks& tasks) const {
    HttpResult result;
    for (const RangeTask& task : tasks) {
        result.size += task.Done();
        if (task.State() == RangeTask::Status::kFinished) continue;
        if (!result.file) result.file = task.Problem();
        if (result.kind != Kind::kStopped) {
            result.kind =
                task.State() == RangeTask::Status::kStopped ? Kind::kStopped : Kind::kFailed;
        }
    }
    if (result.kind == Kind::kFailed && result.file) result.kind = Kind::kFile;
    return result;
}

}  // namespace

HttpResult HttpClient::DownloadToBuffer(const std::string& url, std::span<uint8_t> buffer,
                                        const ProgressCallback& progress,
                                        const HttpLimits& limits) const {
    if (url.empty() || buffer.empty()) return {Kind::kRefused};
    const auto toBuffer = [buffer](uint64_t offset, std::span<const uint8_t> bytes) {
        std::ranges::copy(bytes, buffer.begin() + static_cast<ptrdiff_t>(offset));
        return FileResult<>();
    };
    return Download(limits, cancel_, progress, "SaveToBuffer", toBuffer).Run(url, buffer.size());
}

HttpResult HttpClient::DownloadToFile(const std::string& url, File& file,
                                      const ProgressCallback& progress,
                                      const HttpLimits& limits) const {
    if (url.empty()) return {Kind::kRefused};
    const auto toFile = [&file](uint64_t offset, std::span<const uint8_t> bytes) {
        return file.WriteAt(offset, bytes);
    };
    return Download(limits, cancel_, progress, "SaveToFile", toFile).Run(url, UINT64_MAX);
}

}  // namespace bw
