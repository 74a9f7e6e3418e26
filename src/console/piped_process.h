// A program of its own that talks with this one over two pipes, and never outlives it.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace bw {

// Words and variables are the system's own bytes, on Windows UTF-8.
struct PipedCommand {
    std::filesystem::path program;
    std::vector<std::string> arguments{};
    // NAME=value pairs that replace or join this process's environment; a NAME alone is taken out.
    std::vector<std::string> environment{};
    std::filesystem::path folder;  // that it runs in
    std::filesystem::path log;     // takes its standard output and standard error
};

enum class PipeEnd : uint8_t { kDone, kClosed, kSilent, kStopped };

// For the one thread that started it: where the system knows how, the program is killed when that
// thread ends, and elsewhere with this process.
class PipedProcess {
  public:
    // The variables that tell the program the paths by which it opens its ends of the pipes, like
    // files, each of them once.
    static constexpr std::string_view kOrders = "BANKWEAVER_ORDERS";    // it reads
    static constexpr std::string_view kAnswers = "BANKWEAVER_ANSWERS";  // it writes

    PipedProcess();
    PipedProcess(const PipedProcess&) = delete;
    PipedProcess& operator=(const PipedProcess&) = delete;
    // Kills a program that still runs.
    ~PipedProcess();

    // False if it can't be started. Ends one that was started before.
    bool Start(const PipedCommand& command);
    int64_t Id() const { return id_; }

    // kClosed: the program has closed its end. Both wake a program that rests.
    PipeEnd Write(std::string_view bytes, std::chrono::milliseconds patience,
                  const std::stop_token& stop);
    // Fills `bytes`.
    PipeEnd Read(std::span<char> bytes, std::chrono::milliseconds patience,
                 const std::stop_token& stop);

    // kDone as soon as there is something to read.
    PipeEnd AwaitBytes(std::chrono::milliseconds patience, const std::stop_token& stop);

    // Takes the processor away from it until the next Write or Read.
    void Rest();
    // Closes its orders and gives it `patience` to end by itself, then kills it.
    void End(std::chrono::milliseconds patience);

  private:
    class State;
    void Wake();

    std::unique_ptr<State> state_;  // the system's side; null when nothing runs
    int64_t id_ = -1;
    bool resting_ = false;
};

}  // namespace bw
