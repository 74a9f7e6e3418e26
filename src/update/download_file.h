// Fetches an address into a file.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>

#include "support/files.h"
#include "update/http_client.h"

namespace bw {

class CDownloadFile {
  public:
    // What `statusCode` tells.
    enum Status : uint32_t { kBegins = 4, kGoesOn = 5, kEnds = 6 };
    static constexpr uint32_t kGoOn = 0;
    static constexpr uint32_t kAbort = 0x80004004;
    // Bytes that are there, and of the whole file; on a thread of the download's own.
    using Callback = std::function<void(uint64_t progress, uint64_t total, uint32_t statusCode)>;

    // Once `stop` is set, a download ends within 50 ms. It must live longer.
    explicit CDownloadFile(const std::atomic<bool>& stop) : stop_(stop) {}

    // By ranges, or by one request from a host that knows none. Of the limits, the largest size
    // and whether it must be secure are the caller's. One at a time.
    HttpResult Download(const std::string& url, File& file, Callback callback, HttpLimits limits);
    // Passes it on; kAbort once the download is to end.
    uint32_t OnProgress(uint64_t progress, uint64_t total, uint32_t statusCode) const;

  private:
    const std::atomic<bool>& stop_;
    Callback callback_;
};

}  // namespace bw
