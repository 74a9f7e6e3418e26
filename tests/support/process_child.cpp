// A program that does what its words say, one after the other, for the test of processes.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <iostream>
#include <iterator>
#include <map>
#include <string>
#include <thread>

#include "common/this_process.h"
#include "support/program_words.h"
#include "support/text.h"

int main(int count, char** values) {
    using Value = const std::string&;
    bw::test::KeepLineEnds();
    const std::vector<std::string> words = bw::ProgramWords(count, values);
    const std::map<std::string, std::function<void(Value)>> deeds{
        {"out", [](Value text) { std::cout << text << std::flush; }},
        {"err", [](Value text) { std::cerr << text << std::flush; }},
        {"id", [](Value) { std::cout << bw::test::OwnProcessId() << std::flush; }},
        {"folder",
         [](Value) {
             std::cout << bw::ToUtf8(bw::PathText(std::filesystem::current_path())) << std::flush;
         }},
        {"words",
         [&](Value) {
             for (const std::string& word : words)
                 std::cout << '[' << word << ']';
         }},
        {"input",
         [](Value) {
             std::cout << std::distance(std::istreambuf_iterator<char>(std::cin), {}) << std::flush;
         }},
        {"fill", [](Value size) { std::cout << std::string(std::stoul(size), 'x') << std::flush; }},
        {"endless",
         [](Value) {
             while (std::cout << std::string(1000, 'y') << std::flush) {
             }
         }},
        {"close", [](Value) { bw::test::CloseOutputs(); }},
        {"wait",
         [](Value ms) { std::this_thread::sleep_for(std::chrono::milliseconds(std::stoi(ms))); }},
        {"exit", [](Value status) { std::_Exit(std::stoi(status)); }}};
    for (const std::string& word : words) {
        const size_t colon = word.find(':');
        const auto deed = deeds.find(word.substr(0, colon));
        if (deed != deeds.end())
            deed->second(colon == std::string::npos ? "" : word.substr(colon + 1));
    }
}
