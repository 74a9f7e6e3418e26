#include "update/download_file.h"

#include <utility>

namespace bw {
namespace {

constexpr int kThreads = 4;  // for a program of some megabytes; hosts think ill of many more

}  // namespace

HttpResult CDownloadFile::Download(const std::string& url, File& file, Callback callback,
                                   HttpLimits limits) {
    callback_ = std::move(callback);
    limits.threads = kThreads;
    limits.wholeIfNoRanges = true;
    const auto report = [this](const DownloadProgress& progress) {
        OnProgress(progress.done, progress.total, kGoesOn);
    };
    HttpResult result = HttpClient(stop_).DownloadToFile(url, file, report, limits);
    if (result) OnProgress(result.size, result.size, kEnds);
    return result;
}

uint32_t CDownloadFile::OnProgress(uint64_t progress, uint64_t total, uint32_t statusCode) const {
    if (callback_) callback_(progress, total, statusCode);
    return stop_ ? kAbort : kGoOn;
}

}  // namespace bw
