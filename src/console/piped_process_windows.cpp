// No emulator is found on this system yet: nothing can be started.
#include "console/piped_process.h"

namespace bw {

PipedProcess::~PipedProcess() = default;

bool PipedProcess::Start(const PipedCommand&) {
    return false;
}

PipeEnd PipedProcess::Write(std::string_view, std::chrono::milliseconds, const std::stop_token&) {
    return PipeEnd::kClosed;
}

PipeEnd PipedProcess::Read(std::span<char>, std::chrono::milliseconds, const std::stop_token&) {
    return PipeEnd::kClosed;
}

PipeEnd PipedProcess::AwaitBytes(std::chrono::milliseconds, const std::stop_token&) {
    return PipeEnd::kClosed;
}

void PipedProcess::Rest() {}

void PipedProcess::Wake() {}

void PipedProcess::End(std::chrono::milliseconds) {}

}  // namespace bw
