#include "fceux_runner.h"

#include <future>
#include <semaphore>
#include <sstream>
#include <thread>

#include "console/fceux.h"

namespace bw::console {
namespace {

// What the script put, and what went wrong.
std::string ReadResult(const std::filesystem::path& file, ScriptResult& result) {
    std::istringstream lines(ReadText(file));
    std::string problem = "the emulator ended before the script did";
    for (std::string line; std::getline(lines, line);) {
        const size_t equal = line.find('=');
        const std::string key = line.substr(0, equal);
        const std::string value = line.substr(equal + 1);
        if (key == "!end") {
            problem = value.empty() ? "" : "the script failed: " + value;
        } else {
            result.values[key] = value;
        }
    }
    return problem;
}

}  // namespace

std::string ScriptResult::At(std::string_view key) const {
    const auto found = values.find(key);
    return found != values.end() ? found->second : "<no " + std::string(key) + ">";
}

long ScriptResult::Number(std::string_view key) const {
    const auto found = values.find(key);
    return found != values.end() ? std::strtol(found->second.c_str(), nullptr, 10) : -1;
}

// Each run has a folder that is the emulator's home, so that runs side by side share nothing.
ScriptResult RunOnConsole(const ScriptRun& run) {
    const auto fail = [&](const std::string& problem) {
        throw ConsoleFailure(run.label + ": " + problem);
    };
    const std::optional<std::filesystem::path> emulator = FindFceux();
    if (!emulator) fail("FCEUX was not found; install the package fceux");
    if (!is_regular_file(run.rom)) fail("there is no file " + run.rom.string());
    const TemporaryFolder folder;
    FillFceuxHome(folder.Path(), run.zeroRam ? FceuxMemory::kZeros : FceuxMemory::kPattern);
    WriteText(folder / "script.lua", run.script);
    WriteText(folder / "main.lua",
              "LABEL = '" + run.label + "' " + ReadText(BANKWEAVER_CONSOLE_PRELUDE));
    PipedProcess process;
    process.Start(CommandOf({*emulator, folder.Path(), folder / "main.lua", absolute(run.rom)}));
    ScriptResult result;
    // The script says nothing on its pipe, which closes with the emulator.
    const std::string problem =
        process.AwaitBytes(run.patience, {}) == PipeEnd::kClosed
            ? ReadResult(folder / "result.txt", result)
            : "the emulator was killed after " + std::to_string(run.patience.count()) + " s";
    if (!problem.empty()) fail(problem + "\n" + ReadText(FceuxLog(folder.Path())));
    for (const std::string& name : run.wantedFiles)
        result.files[name] = ReadText(folder / name);
    return result;
}

std::vector<ScriptResult> RunAllOnConsole(std::span<const ScriptRun> runs) {
    // The emulator's start is half waiting, so there may be more of them than processors.
    std::counting_semaphore<> places(2 * std::max(1U, std::thread::hardware_concurrency()));
    std::vector<std::future<ScriptResult>> started;
    for (const ScriptRun& run : runs) {
        started.push_back(std::async(std::launch::async, [&] {
            places.acquire();
            const std::shared_ptr<void> leave(nullptr, [&](void*) { places.release(); });
            return RunOnConsole(run);
        }));
    }
    std::vector<ScriptResult> results;
    for (auto& task : started)
        results.push_back(task.get());
    return results;
}

}  // namespace bw::console
