// A program of its own that talks with this one over two pipes, and never outlives it.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <span>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace bw {

struct PipedCommand {
    std::filesystem::path program;
    std::vector<std::string> arguments{};
    // NAME=value pairs that replace or join this process's environment; a NAME alone is taken out.
    std::vector<std::string> environment{};
    std::filesystem::path folder;  // that it runs in
    std::filesystem::path log;     // takes its standard output and standard error
};

enum class PipeEnd : uint8_t { kDone, kClosed, kSilent, kStopped };

// For the one thread that started it: the program is killed when that thread ends.
class PipedProcess {
  public:
    // The paths by which the program opens its ends of the pipes.
    static constexpr std::string_view kOrders = "/dev/fd/3";   // it reads
    static constexpr std::string_view kAnswers = "/dev/fd/4";  // it writes

    PipedProcess() = default;
    PipedProcess(const PipedProcess&) = delete;
    PipedProcess& operator=(const PipedProcess&) = delete;
    // Kills a program that still runs.
    ~PipedProcess();

    // False if it can't be started.
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
    void Wake();

    int64_t id_ = -1;
    int orders_ = -1;
    int answers_ = -1;
    bool resting_ = false;
};

}  // namespace bw
