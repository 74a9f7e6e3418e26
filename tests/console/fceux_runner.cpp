#include "fceux_runner.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <thread>

#include "common/child_process.h"
#include "common/virtual_display.h"

namespace bw::console {
namespace {

using test::ChildProcess;
using test::FindProgram;

constexpr size_t kLogTail = 2000;

struct DisplayName {
    std::string name;     // such as ":99"; empty if there is none
    std::string problem;  // why there is none
};

// The display of this test program, made by the first call. The thread of that call must live as
// long as the display is used. Safe from several threads after that.
const DisplayName& SharedDisplay() {
    static const auto shared = [] {
        static std::optional<test::VirtualDisplay> own;
        if (const char* given = std::getenv("BANKWEAVER_TEST_DISPLAY"))
            return DisplayName{given, {}};
        own.emplace("800x600");
        return DisplayName{own->Name(), own->Problem()};
    }();
    return shared;
}

std::string LuaQuoted(const std::string& text) {
    std::string quoted = "\"";
    for (char c : text) {
        if (c == '"' || c == '\\') quoted += '\\';
        quoted += c;
    }
    return quoted + "\"";
}

// The folder of one run: the emulator's home, the scripts and the result lie in it, so that runs
// side by side share nothing.
struct RunFolder {
    explicit RunFolder(const ConsoleRun& run, bool takeShots) {
        const auto& base = folder.Path();
        // The emulator's plain drawing needs no OpenGL; a preset of RAM makes runs repeatable.
        WriteWholeFile(base / ".fceux" / "fceux.cfg",
                       "SDL.VideoDriver = 1\nSDL.RamInitMethod = " +
                           std::string(run.ram == PowerOnRam::kZero ? "2" : "0") + "\n");
        WriteWholeFile(base / "script.lua", run.script);
        WriteWholeFile(base / "main.lua",
                       "RESULT_FILE = " + LuaQuoted((base / "result.txt").string()) +
                           "\nSCRIPT_FILE = " + LuaQuoted((base / "script.lua").string()) +
                           "\nTAKE_SHOTS = " + (takeShots ? "true" : "false") +
                           "\nassert(loadfile(" + LuaQuoted(BANKWEAVER_CONSOLE_PRELUDE) + "))()\n");
    }

    std::vector<std::string> Environment(const std::string& display) const {
        const std::string base = folder.Path().string();
        return {"HOME=" + base,           "XDG_CONFIG_HOME=" + base, "XDG_DATA_HOME=" + base,
                "XDG_CACHE_HOME=" + base, "XDG_RUNTIME_DIR=" + base, "DISPLAY=" + display};
    }

    TemporaryFolder folder;
};

void ReadResult(const std::filesystem::path& file, ConsoleResult& result) {
    std::istringstream lines(ReadWholeFile(file));
    bool ended = false;
    for (std::string line; std::getline(lines, line);) {
        const size_t equal = line.find('=');
        if (equal == std::string::npos) continue;
        const std::string key = line.substr(0, equal);
        if (key == "!end")
            ended = true;
        else if (key == "!problem")
            result.problem = "the script failed: " + line.substr(equal + 1);
        else
            result.values[key] = line.substr(equal + 1);
    }
    if (!ended) result.problem = "the emulator ended before the script did";
}

std::string Tail(const std::string& text) {
    return text.size() > kLogTail ? text.substr(text.size() - kLogTail) : text;
}

void KeepPictures(const std::filesystem::path& from, const std::string& label,
                  const std::filesystem::path& to) {
    std::filesystem::create_directories(to);
    for (const auto& entry : std::filesystem::directory_iterator(from))
        if (entry.path().extension() == ".png")
            std::filesystem::copy_file(entry.path(),
                                       to / (label + "-" + entry.path().filename().string()),
                                       std::filesystem::copy_options::overwrite_existing);
}

void RunEmulator(const ConsoleRun& run, const std::string& emulator, const std::string& display,
                 ConsoleResult& result) {
    const char* pictures = std::getenv("BANKWEAVER_SCREENSHOTS");
    const RunFolder place(run, pictures != nullptr);
    const auto& base = place.folder.Path();
    auto child = ChildProcess::Start(
        {.words = {emulator, "--sound", "0", "--loadlua", (base / "main.lua").string(),
                   std::filesystem::absolute(run.rom).string()},
         .environment = place.Environment(display),
         .workingFolder = base,
         .logFile = base / "fceux.log"});
    if (!child) {
        result.problem = "no process for the emulator";
        return;
    }
    if (child->WaitFor(run.patience))
        ReadResult(base / "result.txt", result);
    else
        result.problem =
            "the emulator was killed after " + std::to_string(run.patience.count()) + " s";
    if (!result.Ok()) result.problem += "\n" + Tail(ReadWholeFile(base / "fceux.log"));
    for (const std::string& name : run.wantedFiles)
        result.files[name] = ReadWholeFile(base / name);
    if (pictures != nullptr) KeepPictures(base, run.label, pictures);
}

std::optional<std::filesystem::path> FindEmulator() {
    const char* given = std::getenv("BANKWEAVER_FCEUX");
    if (given == nullptr) return FindProgram("fceux");
    if (!std::filesystem::is_regular_file(given)) return std::nullopt;
    return given;
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

ConsoleResult RunOnConsole(const ConsoleRun& run) {
    ConsoleResult result;
    const auto emulator = FindEmulator();
    const DisplayName& display = SharedDisplay();
    if (!emulator)
        result.problem = "FCEUX was not found; install the package fceux";
    else if (!display.problem.empty())
        result.problem = display.problem;
    else if (!std::filesystem::is_regular_file(run.rom))
        result.problem = "there is no file " + run.rom.string();
    else
        RunEmulator(run, emulator->string(), display.name, result);
    if (!result.Ok()) result.problem = run.label + ": " + result.problem;
    return result;
}

std::vector<ConsoleResult> RunAllOnConsole(std::span<const ConsoleRun> runs) {
    SharedDisplay();  // from this thread, which outlives the workers
    std::vector<ConsoleResult> results(runs.size());
    std::atomic<size_t> next = 0;
    const auto work = [&] {
        for (size_t i = next++; i < runs.size(); i = next++)
            results[i] = RunOnConsole(runs[i]);
    };
    const size_t workers =
        std::min<size_t>(runs.size(), std::max(1U, std::thread::hardware_concurrency()));
    std::vector<std::jthread> threads;
    for (size_t i = 1; i < workers; ++i)
        threads.emplace_back(work);
    work();
    threads.clear();
    return results;
}

std::string ReadWholeFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void WriteWholeFile(const std::filesystem::path& path, std::string_view bytes) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush()) throw std::runtime_error("can't write " + path.string());
}

}  // namespace bw::console
