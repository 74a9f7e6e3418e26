#include "common/virtual_display.h"

#include <utility>

#include <poll.h>
#include <unistd.h>

#include "common/game_image.h"

namespace bw::test {
namespace {

constexpr int kStartTimeoutMs = 30'000;

std::string ReadLine(int descriptor) {
    std::string line;
    pollfd ready{.fd = descriptor, .events = POLLIN, .revents = 0};
    char letter = 0;
    while (poll(&ready, 1, kStartTimeoutMs) == 1 && read(descriptor, &letter, 1) == 1) {
        if (letter == '\n') return line;
        line += letter;
    }
    return {};
}

}  // namespace

VirtualDisplay::VirtualDisplay(const std::string& size) {
    const auto program = FindProgram("Xvfb");
    int ends[2];
    if (!program || pipe(ends) != 0) {
        problem_ = "Xvfb was not found; install the package xvfb";
        return;
    }
    const auto log = folder_.Path() / "xvfb.log";
    // Xvfb writes the number of the free display that it took to descriptor 3. It must not start
    // anew when its last client leaves: the next one would find nobody for a moment.
    auto started =
        ChildProcess::Start({.words = {program->string(), "-displayfd", "3", "-screen", "0",
                                       size + "x24", "-nolisten", "tcp", "-noreset"},
                             .workingFolder = folder_.Path(),
                             .logFile = log,
                             .passedDescriptor = ends[1]});
    close(ends[1]);
    const std::string number = ReadLine(ends[0]);
    close(ends[0]);
    if (started) server_.emplace(std::move(*started));
    if (number.empty())
        problem_ = "Xvfb did not start: " + ReadText(log);
    else
        name_ = ":" + number;
}

}  // namespace bw::test
