// What a crash leaves behind: a file that tells where the program was, for whoever mends it.
#pragma once

#include <memory>

namespace bw {

// From now on a crash of any thread (a bad access or instruction, a failed assertion, an exception
// that nobody catches) writes the file
//     Dump/<program>_<year>-<month>-<day> <hour>_<minute>_<second>.<millisecond>.dmp
// (UTC) below the program's folder, or below UserConfigFolder() where that can't be written, and
// ends the process without the system's own crash dialog; on POSIX with the status 128 + signal, on
// Windows with the exception's code. The file is text on POSIX (version, signal, registers, calls,
// memory map), a minidump on Windows, with the words of an exception that nobody caught as comment.
// To be called once, by main, on the first thread.
void InstallCrashHandler();

// Lets a thread besides the first one write its crash file even when its stack is used up; without
// one such a crash just ends the process. Lives on that thread's stack as long as the thread runs.
class CrashStack {
  public:
    CrashStack();
    CrashStack(const CrashStack&) = delete;
    CrashStack& operator=(const CrashStack&) = delete;
    ~CrashStack();

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace bw
