// An emulator of the tests: does what the variable BANKWEAVER_DEEDS says, deed by deed. It opens
// its ends of the pipes as the emulator's script does.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <thread>

#include "console/piped_process.h"
#include "support/paths.h"

namespace {

using namespace std::chrono_literals;

std::FILE* End(std::string_view variable, const char* mode) {
    std::FILE* end = std::fopen(std::getenv(std::string(variable).c_str()), mode);
    if (end == nullptr) std::exit(3);
    return end;
}

void Answer(const std::string& bytes) {
    static std::FILE* const answers = End(bw::PipedProcess::kAnswers, "wb");
    std::fwrite(bytes.data(), 1, bytes.size(), answers);
    std::fflush(answers);
}

// The next order, with its line's end; empty at the end of them.
std::string Order() {
    static std::FILE* const orders = End(bw::PipedProcess::kOrders, "rb");
    std::string line(100, '\0');
    const char* read = std::fgets(line.data(), static_cast<int>(line.size()), orders);
    return read != nullptr ? line.data() : "";
}

// Hosts a program of its own, and tells its number.
void Host() {
    bw::PipedProcess process;
    const auto folder = std::filesystem::current_path();
    process.Start({.program = bw::ExecutablePath(),
                   .environment = {"BANKWEAVER_DEEDS=wait"},
                   .folder = folder,
                   .log = folder / "hosted.log"});
    std::ofstream(folder / "hosted.tmp") << process.Id();
    std::filesystem::rename(folder / "hosted.tmp", folder / "hosted");
    std::this_thread::sleep_for(100s);
}

}  // namespace

int main() {
    const std::map<std::string, std::function<void(const std::string&)>> deeds{
        {"say", [](const std::string& text) { std::cout << text << std::endl; }},
        {"answer", Answer},
        {"fill", [](const std::string& size) { Answer(std::string(std::stoul(size), 'x')); }},
        {"take", [](const std::string&) { Order(); }},
        {"echo",
         [](const std::string& file) {
             std::string last;
             for (std::string line; !(line = Order()).empty(); last = line)
                 Answer("echo " + line);
             std::ofstream(file, std::ios::binary) << last;
         }},
        {"tick",
         [](const std::string&) {
             for (;; std::this_thread::sleep_for(5ms))
                 Answer(".");
         }},
        {"wait", [](const std::string&) { std::this_thread::sleep_for(100s); }},
        {"exit", [](const std::string& status) { std::_Exit(std::stoi(status)); }},
        {"host", [](const std::string&) { Host(); }}};
    std::istringstream list(std::getenv("BANKWEAVER_DEEDS"));
    for (std::string deed; std::getline(list, deed, ';');) {
        const size_t blank = std::min(deed.find(' '), deed.size());
        deeds.at(deed.substr(0, blank))(deed.substr(std::min(blank + 1, deed.size())));
    }
}
