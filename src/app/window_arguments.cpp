#include "app/window_arguments.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <string_view>

#include <CLI/CLI.hpp>

#include "support/paths.h"
#include "support/version.h"

namespace bw {
namespace {

constexpr int kWrongUsage = 2;

// Those that people and session managers give; each takes the next word.
constexpr std::array<std::string_view, 5> kQtOptions{"-display", "-platform", "-session", "-style",
                                                     "-stylesheet"};

// In the order in which CLI11 takes words from a list: backwards.
std::vector<std::string> OwnWords(int count, const char* const* values) {
    std::vector<std::string> words;
    for (int i = 1; i < count; ++i) {
        const std::string_view word = values[i];
        if (std::ranges::find(kQtOptions, word) != kQtOptions.end()) {
            ++i;
        } else {
            words.emplace_back(word);
        }
    }
    std::ranges::reverse(words);
    return words;
}

}  // namespace

WindowArguments ParseWindowArguments(int count, const char* const* values) {
    std::vector<std::filesystem::path> files;
    CLI::App app("Gathers games in a list and builds one multicart ROM from them.", "bankweaver");
    app.set_version_flag("--version", "bankweaver " + std::string(ProgramVersion()));
    app.add_option(
        "FILE", files,
        "Game images (.nes) and list files (.fcl) to add to the list, or one cart to open");
    std::filesystem::path played;
    app.add_option("--play", played, "Show nothing but a window that plays this game or cart")
        ->option_text("FILE");
    WindowArguments result;
    try {
        app.parse(OwnWords(count, values));
    } catch (const CLI::ParseError& ending) {  // --help and --version too
        std::ostringstream text;
        result.exitCode = app.exit(ending, text, text) == 0 ? 0 : kWrongUsage;
        result.text = text.str();
        return result;
    }
    for (std::filesystem::path& file : files)
        file = AbsolutePath(file, std::filesystem::current_path());
    result.files = std::move(files);
    if (!played.empty()) result.play = AbsolutePath(played, std::filesystem::current_path());
    return result;
}

}  // namespace bw
