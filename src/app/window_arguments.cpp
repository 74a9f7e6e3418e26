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
std::vector<std::string> OwnWords(const std::vector<std::string>& words) {
    std::vector<std::string> own;
    for (size_t i = 0; i < words.size(); ++i) {
        if (std::ranges::find(kQtOptions, words[i]) != kQtOptions.end()) {
            ++i;
        } else {
            own.push_back(words[i]);
        }
    }
    std::ranges::reverse(own);
    return own;
}

}  // namespace

WindowArguments ParseWindowArguments(const std::vector<std::string>& words) {
    std::vector<std::filesystem::path> files;
    CLI::App app("Gathers games in a list and builds one multicart ROM from them.", "bankweaver");
    // On Windows the library would take a path that begins with a slash for an option.
    app.allow_windows_style_options(false);
    app.set_version_flag("--version", "bankweaver " + std::string(ProgramVersion()));
    app.add_option(
        "FILE", files,
        "Game images (.nes) and list files (.fcl) to add to the list, or one cart to open");
    std::filesystem::path played;
    app.add_option("--play", played, "Show nothing but a window that plays this game or cart")
        ->option_text("FILE");
    WindowArguments result;
    try {
        app.parse(OwnWords(words));
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
