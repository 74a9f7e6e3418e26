// A child process that doesn't outlive the test program. For programs that need a descriptor of
// their own, an environment of their own and a time limit, such as the X server.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace bw::test {

// Texts are UTF-8.
struct ChildCommand {
    std::vector<std::string> words;
    // NAME=value pairs that replace or join the parent's environment.
    std::vector<std::string> environment = {};
    std::filesystem::path workingFolder = {};
    // What the child reads; empty for nothing.
    std::filesystem::path inputFile = {};
    // Standard output and standard error go to this file.
    std::filesystem::path logFile;
    // Standard error goes here instead, unless it is empty.
    std::filesystem::path errorFile = {};
    // The child inherits this descriptor under the number 3; -1 for none. Not on Windows.
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
    // Of a child that has ended: its exit status; where a signal ended it, 128 and the signal.
    int Status() const { return status_; }
    // What Status tells of a child that was killed.
    static constexpr int kKilled = 128 + 9;
    // Of one that hasn't ended: false if it is gone. On Windows a child gets Ctrl+Break for SIGINT
    // and SIGTERM, and there are no others.
    bool Signal(int number) const;
    // Ends it in the middle of what it does.
    bool Kill() const;

  private:
    ChildProcess(intptr_t id, intptr_t group) : id_(id), group_(group) {}
    intptr_t id_ = -1;
    intptr_t group_ = -1;  // the child and all that it started
    int status_ = -1;
};

// What a program did that has ended by itself.
struct ProgramRun {
    int status = -1;  // -1 if it couldn't be started or didn't end within ten minutes
    std::string out;
    std::string err;
};
// Runs a program to its end; the command's files are chosen here, its input aside.
ProgramRun RunProgram(ChildCommand command);

// The first file of this name in PATH or, on POSIX, in /usr/games, where distributions keep
// emulators.
std::optional<std::filesystem::path> FindProgram(const std::string& name);

}  // namespace bw::test
