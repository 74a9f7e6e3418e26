// Fetches a file by parallel requests for ranges of it: first its length is asked for, then each
// range by a thread of its own. Nothing is cached, no cookie and no name of a user is sent.
#pragma once

#include <atomic>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "support/file_problem.h"
#include "support/files.h"
#include "update/update_source.h"

namespace bw {

struct HttpResult {
    enum class Kind : uint8_t { kDone, kRefused, kTooLarge, kFailed, kStopped, kFile };

    Kind kind = Kind::kDone;
    uint64_t size = 0;  // kDone: bytes that have arrived
    int status = 0;     // of the host's first answer; 0 if there was none
    std::optional<FileProblem> file = {};

    explicit operator bool() const { return kind == Kind::kDone; }
};

struct HttpLimits {
    // https from the first address to the last one that a redirect leads to.
    bool secureOnly = false;
    uint64_t largest = UINT64_MAX;  // bytes; a longer file is refused before its first byte
    int threads = 2;                // held to 2 to 64; a file below 4,096 bytes takes one
    // Where the host answers a range with the whole file: fetch it again by one request.
    bool wholeIfNoRanges = false;
};

// One instance serves several calls, from several threads.
class HttpClient {
  public:
    // `cancel` ends all reads within 50 ms and must live as long as the client.
    explicit HttpClient(const std::atomic<bool>& cancel) : cancel_(cancel) {}

    // Fills the buffer from its start; of a longer file, as much as goes into it. An address that
    // is empty, and a buffer of no bytes, are refused at once. A range that fails doesn't stop the
    // others; what has arrived stays in the buffer.
    HttpResult DownloadToBuffer(const std::string& url, std::span<uint8_t> buffer,
                                const ProgressCallback& progress, const HttpLimits& limits) const;
    // The same into a file that is open for writing, which grows as the ranges come. Memory: less
    // than 256 KB for each thread, whatever the file's size; one megabyte more where the
    // connection is encrypted, for the system's list of authorities.
    HttpResult DownloadToFile(const std::string& url, File& file, const ProgressCallback& progress,
                              const HttpLimits& limits) const;

  private:
    const std::atomic<bool>& cancel_;
};

}  // namespace bw
