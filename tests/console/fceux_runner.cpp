#include "fceux_runner.h"

#include <cstdlib>
#include <future>
#include <semaphore>
#include <sstream>
#include <thread>

#include "common/child_process.h"

namespace bw::console {
namespace {

std::filesystem::path FindEmulator() {
    if (const char* given = std::getenv("BANKWEAVER_FCEUX")) return given;
    return test::FindProgram("fceux").value_or("fceux");
}

// What the script put, and what went wrong.
std::string ReadResult(const std::filesystem::path& file, ConsoleResult& result) {
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

std::string ConsoleResult::At(std::string_view key) const {
    const auto found = values.find(key);
    return found != values.end() ? found->second : "<no " + std::string(key) + ">";
}

long ConsoleResult::Number(std::string_view key) const {
    const auto found = values.find(key);
    return found != values.end() ? std::strtol(found->second.c_str(), nullptr, 10) : -1;
}

// Each run has a folder that is the emulator's home, so that runs side by side share nothing.
ConsoleResult RunOnConsole(const ConsoleRun& run) {
    const auto fail = [&](const std::string& problem) {
        throw ConsoleFailure(run.label + ": " + problem);
    };
    const std::filesystem::path emulator = FindEmulator();
    if (!is_regular_file(emulator)) fail("FCEUX was not found; install the package fceux");
    if (!is_regular_file(run.rom)) fail("there is no file " + run.rom.string());
    const TemporaryFolder folder;
    const std::string home = folder.Path().string();
    create_directory(folder / ".fceux");
    // The plain drawing of video driver 1 needs no OpenGL; a preset of RAM makes runs repeatable.
    WriteText(
        folder / ".fceux" / "fceux.cfg",
        std::string("SDL.VideoDriver = 1\nSDL.RamInitMethod = ") + (run.zeroRam ? "2\n" : "0\n"));
    WriteText(folder / "script.lua", run.script);
    WriteText(folder / "main.lua",
              "LABEL = '" + run.label + "' " + ReadText(BANKWEAVER_CONSOLE_PRELUDE));
    auto child = test::ChildProcess::Start(
        {.words = {emulator, "--sound", "0", "--loadlua", folder / "main.lua", absolute(run.rom)},
         .environment = {"HOME=" + home, "XDG_CONFIG_HOME=" + home, "XDG_DATA_HOME=" + home,
                         "XDG_CACHE_HOME=" + home, "XDG_RUNTIME_DIR=" + home,
                         "DISPLAY=", "QT_QPA_PLATFORM=offscreen", "SDL_VIDEODRIVER=dummy",
                         "SDL_AUDIODRIVER=dummy"},
         .workingFolder = folder.Path(),
         .logFile = folder / "fceux.log"});
    ConsoleResult result;
    const std::string problem =
        child && child->WaitFor(run.patience)
            ? ReadResult(folder / "result.txt", result)
            : "the emulator was killed after " + std::to_string(run.patience.count()) + " s";
    if (!problem.empty()) fail(problem + "\n" + ReadText(folder / "fceux.log"));
    for (const std::string& name : run.wantedFiles)
        result.files[name] = ReadText(folder / name);
    return result;
}

std::vector<ConsoleResult> RunAllOnConsole(std::span<const ConsoleRun> runs) {
    // The emulator's start is half waiting, so there may be more of them than processors.
    std::counting_semaphore<> places(2 * std::max(1U, std::thread::hardware_concurrency()));
    std::vector<std::future<ConsoleResult>> started;
    for (const ConsoleRun& run : runs) {
        started.push_back(std::async(std::launch::async, [&] {
            places.acquire();
            const std::shared_ptr<void> leave(nullptr, [&](void*) { places.release(); });
            return RunOnConsole(run);
        }));
    }
    std::vector<ConsoleResult> results;
    for (auto& task : started)
        results.push_back(task.get());
    return results;
}

}  // namespace bw::console
