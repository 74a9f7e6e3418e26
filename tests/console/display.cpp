#include "display.h"

#include <cstdlib>
#include <optional>
#include <utility>

#include <poll.h>
#include <unistd.h>

#include "child_process.h"
#include "fceux_runner.h"

namespace bw::console {
namespace {

constexpr int kStartTimeoutMs = 30'000;

class VirtualDisplay {
  public:
    VirtualDisplay() {
        if (const char* given = std::getenv("BANKWEAVER_TEST_DISPLAY")) {
            display_.name = given;
            return;
        }
        const auto program = FindProgram("Xvfb");
        if (!program) {
            display_.problem = "Xvfb was not found; install the package xvfb";
            return;
        }
        Start(program->string());
    }

    const DisplayName& Name() const { return display_; }

  private:
    // Xvfb writes the number of the free display that it took to descriptor 3. It must not start
    // anew when its last client leaves: the next emulator would find nobody for a moment.
    void Start(const std::string& program) {
        int ends[2];
        if (pipe(ends) != 0) {
            display_.problem = "no pipe for Xvfb";
            return;
        }
        auto started = ChildProcess::Start({.words = {program, "-displayfd", "3", "-screen", "0",
                                                      "800x600x24", "-nolisten", "tcp", "-noreset"},
                                            .environment = {},
                                            .workingFolder = folder_.Path(),
                                            .logFile = folder_.Path() / "xvfb.log",
                                            .passedDescriptor = ends[1]});
        close(ends[1]);
        const std::string number = ReadLine(ends[0]);
        close(ends[0]);
        if (started) server_.emplace(std::move(*started));
        if (number.empty())
            display_.problem = "Xvfb did not start: " + ReadWholeFile(folder_.Path() / "xvfb.log");
        else
            display_.name = ":" + number;
    }

    static std::string ReadLine(int descriptor) {
        std::string line;
        pollfd ready{.fd = descriptor, .events = POLLIN, .revents = 0};
        char letter = 0;
        while (poll(&ready, 1, kStartTimeoutMs) == 1 && read(descriptor, &letter, 1) == 1) {
            if (letter == '\n') return line;
            line += letter;
        }
        return {};
    }

    TemporaryFolder folder_;
    std::optional<ChildProcess> server_;
    DisplayName display_;
};

}  // namespace

const DisplayName& SharedDisplay() {
    static const VirtualDisplay display;
    return display.Name();
}

}  // namespace bw::console
