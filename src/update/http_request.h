// One request to a host.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>

#include "update/http_head.h"
#include "update/http_url.h"

namespace bw {

// GET, of the whole file or a range. Nothing is sent but the address, the program's agent text,
// and the wish that nothing cached comes back. Follows up to 5 redirects. A certificate that can't
// be believed is let pass: what arrives is data until its signature holds. Proxies are those of
// the environment.
struct HttpRequest {
    enum class End : uint8_t {
        kDone,     // the body is there
        kByUs,     // onHead or onBody wanted no more
        kStopped,  // `cancel` was set
        kFailed,
    };

    HttpUrl url;
    std::optional<ByteRange> range = {};
    // The address, and those that redirects lead to, are https.
    bool secureOnly = false;
    // For the connection, and for a host that sends next to nothing.
    std::chrono::seconds patience{30};
    // The answer's head; once, those of redirects left out. False: no more is wanted.
    std::function<bool(const HttpHead&)> onHead;
    // A part of the answer's body, at most 64 KB. False: no more is wanted.
    std::function<bool(std::span<const uint8_t>)> onBody;

    // Returns within 50 ms after `cancel` was set, whatever it waits for. The functions are called
    // on this thread. Memory: less than 200 KB besides what an encrypted connection takes.
    End Perform(const std::atomic<bool>& cancel) const;
};

}  // namespace bw
