// A child process that doesn't outlive the test program. For programs that need a descriptor of
// their own, an environment of their own and a time limit, such as the X server.
#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace bw::test {

struct ChildCommand {
    std::vector<std::string> words;
    // NAME=value pairs that replace or join the parent's environment.
    std::vector<std::string> environment = {};
    std::filesystem::path workingFolder = {};
    // Standard output and standard error go to this file.
    std::filesystem::path logFile;
    // The child inherits this descriptor under the number 3; -1 for none.
    int passedDescriptor = -1;
};

class ChildProcess {
  public:
    // Nothing if the process can't be made. A program that isn't there ends with status 127.
    static std::optional<ChildProcess> Start(const ChildCommand& command);
    ChildProcess(ChildProcess&& other) noexcept;
    ChildProcess& operator=(ChildProcess&&) = delete;
    // Kills the child and all that it started.
    ~ChildProcess();

    // True if the child has ended within the time.
    bool WaitFor(std::chrono::milliseconds patience);
    // Of a child that has ended: its exit status, or 128 and the signal that ended it.
    int Status() const { return status_; }
    // Of one that hasn't: false if it is gone.
    bool Signal(int number) const;

  private:
    explicit ChildProcess(pid_t id) : id_(id) {}
    pid_t id_ = -1;
    int status_ = -1;
};

// The first file of this name in PATH or in /usr/games, where distributions keep emulators.
std::optional<std::filesystem::path> FindProgram(const std::string& name);

}  // namespace bw::test
