// The faults that reading a text finds.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace bw {

// Keeps each fault once, since a phrase or a loop is read more than once, and only so many.
class FaultList {
  public:
    FaultList(std::string name, size_t limit) : name_(std::move(name)), limit_(limit) {}

    void Add(size_t line, const std::string& what) {
        std::string fault = name_ + ":" + std::to_string(line) + ": " + what;
        if (!Full() && std::find(faults_.begin(), faults_.end(), fault) == faults_.end()) {
            faults_.push_back(std::move(fault));
        }
    }
    bool Full() const { return faults_.size() >= limit_; }
    std::vector<std::string> Take() { return std::move(faults_); }

  private:
    std::string name_;
    size_t limit_;
    std::vector<std::string> faults_;
};

// A piece of the text as a message shows it, between quotes and cut to a length that fits a line.
// Bytes that a terminal could take for commands are left out.
inline std::string Quoted(std::string_view text) {
    constexpr size_t kShown = 24;
    std::string quoted = "\"";
    for (const char c : text.substr(0, kShown))
        quoted += static_cast<unsigned char>(c) < 0x20 || c == 0x7F ? '?' : c;
    return quoted + (text.size() > kShown ? "...\"" : "\"");
}

}  // namespace bw
