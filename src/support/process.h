// Runs another program: with its output on a pipe, or on its own.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace bw {

// A child process. Its standard output and standard error come to the parent through one pipe;
// its standard input is empty. Not for use from several threads at once.
class Process {
  public:
    Process() = default;
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;
    // A child that still runs is terminated.
    ~Process();

    // False if the program can't be started. `arguments` are passed as they are, with no shell.
    bool Start(const std::filesystem::path& program, const std::vector<std::string>& arguments,
               const std::filesystem::path& workingFolder);

    // Collects the output until the child closes it or, if sooner, until `silence` has passed
    // without a byte. At most `limit` bytes are kept, the rest is read and dropped; a child that
    // writes more than 16 times as much is taken for one that never stops, and reading ends.
    // Bytes come as the child wrote them.
    std::string ReadOutput(std::chrono::milliseconds silence, size_t limit = 1u << 20);

    // Waits up to `patience` for the child's end. Its exit code; -1 if there is no child or a
    // signal ended it; kStillRunning if it hasn't ended.
    int ExitStatus(std::chrono::milliseconds patience = std::chrono::milliseconds{0});
    static constexpr int kStillRunning = 259;

    // Terminates a child that still runs, and forgets it.
    void Close();

  private:
    intptr_t process_ = -1;
    intptr_t output_ = -1;
    int status_ = kStillRunning;
};

// Starts a program that goes on by itself, whatever becomes of this one: in a session of its own,
// with an empty standard input and this program's outputs. False if it can't be started.
bool StartDetached(const std::filesystem::path& program,
                   const std::filesystem::path& workingFolder);

// Whether a process with this number runs on the system. True where that can't be told.
bool ProcessRuns(uint32_t id);

}  // namespace bw
