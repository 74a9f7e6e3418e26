#include "nesasm/command_line.h"

#include <cstddef>
#include <iterator>
#include <utility>

#include "assembler/keywords.h"

namespace bw::nesasm {
namespace {

struct Option {
    std::string_view shortForm;  // empty if there is only the long one
    std::string_view longForm;
    std::string_view argument;  // name of its argument, empty if it has none
    std::string_view help;
    std::string CommandLine::*target;
    Action action;
};

constexpr Option kOptions[] = {
    {"-o", "--output", "FILE", "write the ROM to FILE (default: the source with .nes)",
     &CommandLine::output, Action::Assemble},
    {"-l", "--listing", "FILE", "write a listing to FILE", &CommandLine::listing, Action::Assemble},
    {"-s", "--symbols", "FILE", "write the global names and their values to FILE",
     &CommandLine::symbols, Action::Assemble},
    {"-C", "--folder", "FOLDER", "take all names from FOLDER, not from the current one",
     &CommandLine::folder, Action::Assemble},
    {"-h", "--help", "", "print this text", nullptr, Action::Help},
    {"", "--version", "", "print the version", nullptr, Action::Version},
};

const Option* FindOption(std::string_view word) {
    for (const Option& option : kOptions) {
        if (word == option.longForm || (!word.empty() && word == option.shortForm)) return &option;
    }
    return nullptr;
}

CommandLine UsageError(std::string text) {
    CommandLine result;
    result.action = Action::UsageError;
    result.error = std::move(text);
    return result;
}

}  // namespace

std::string FromFolder(std::string_view folder, std::string_view name) {
    const bool whole =
        name.starts_with('/') || name.starts_with('\\') || (name.size() > 1 && name[1] == ':');
    if (folder.empty() || whole) return std::string(name);
    return std::string(folder).append("/").append(name);
}

std::string DefaultOutput(std::string_view source) {
    const size_t name = source.find_last_of("/\\") + 1;  // 0 if there is none
    const size_t dot = source.find_last_of('.');
    if (dot != std::string_view::npos && dot > name) source = source.substr(0, dot);
    return std::string(source) + ".nes";
}

CommandLine ParseCommandLine(std::span<const std::string_view> words) {
    CommandLine result;
    bool optionsEnded = false;
    for (size_t i = 0; i < words.size(); ++i) {
        const std::string_view word = words[i];
        if (word == "--" && !optionsEnded) {
            optionsEnded = true;
        } else if (optionsEnded || word.size() < 2 || word.front() != '-') {
            if (!result.source.empty()) return UsageError("more than one source");
            result.source = word;
        } else {
            const Option* option = FindOption(word);
            if (option == nullptr) return UsageError("unknown option " + std::string(word));
            if (option->target == nullptr) {
                result.action = option->action;
                return result;
            }
            if (++i == words.size() || words[i].empty()) {
                return UsageError("a file name must follow " + std::string(word));
            }
            if (!(result.*option->target).empty()) {
                return UsageError(std::string(word) + " is given twice");
            }
            result.*option->target = words[i];
        }
    }
    if (result.source.empty()) return UsageError("no source named");
    if (result.output.empty()) result.output = DefaultOutput(result.source);
    const std::string* files[] = {&result.source, &result.output, &result.listing, &result.symbols};
    for (size_t i = 0; i < std::size(files); ++i) {
        for (size_t k = i + 1; k < std::size(files); ++k) {
            if (!files[i]->empty() && *files[i] == *files[k]) {
                return UsageError(*files[i] + " is named twice");
            }
        }
    }
    return result;
}

std::string HelpText() {
    constexpr size_t kHelpWidth = 80;
    std::string text =
        "Usage: nesasm [OPTION]... SOURCE\n"
        "Assembles SOURCE for the 6502 of the Famicom and NES into an iNES file.\n\n";
    for (const Option& option : kOptions) {
        std::string words = option.shortForm.empty() ? "      " : "  ";
        if (!option.shortForm.empty()) words.append(option.shortForm).append(", ");
        words.append(option.longForm);
        if (!option.argument.empty()) words.append(" ").append(option.argument);
        constexpr size_t kHelpColumn = 24;
        words.resize(kHelpColumn, ' ');
        text.append(words).append(option.help).append("\n");
    }
    text.append("\nDirectives:");
    size_t column = kHelpWidth;
    for (const std::string_view name : assembler::DirectiveNames()) {
        if (column + name.size() + 2 > kHelpWidth) {
            text.append("\n ");
            column = 1;
        }
        text.append(" .").append(name);
        column += name.size() + 2;
    }
    return text +
           "\n\nIncluded files are looked for from the current folder. The exit status is 0 if "
           "the\n"
           "ROM was written, 1 if not, 2 for a wrong command line.\n";
}

}  // namespace bw::nesasm
