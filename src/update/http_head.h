// What a host says before the body of its answer.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace bw {

// Bytes of a file.
struct ByteRange {
    uint64_t first = 0;
    uint64_t size = 0;

    bool operator==(const ByteRange&) const = default;
};

class HttpHead {
  public:
    // A line of it, with its end or without; a line "HTTP/..." begins another one. Unknown fields
    // are passed over.
    void Read(std::string_view line);

    // 0 while no head was read.
    int Status() const { return status_; }
    bool IsInterim() const { return status_ >= 100 && status_ < 200; }
    // To another address, which Location() tells.
    bool IsRedirect() const { return status_ >= 300 && status_ < 400 && !location_.empty(); }
    const std::string& Location() const { return location_; }

    // Of the body; nothing where the host doesn't tell, or tells two, or what is no number.
    std::optional<uint64_t> Length() const;
    // True for the answer with exactly this range of a file of `total` bytes. The host may leave
    // the total open.
    bool IsRange(const ByteRange& range, uint64_t total) const;

  private:
    int status_ = 0;
    std::string location_;
    std::optional<std::string> length_;  // texts as they came
    std::optional<std::string> range_;
    bool isInChunks_ = false;
};

}  // namespace bw
