#include "cli/usage_problem.h"

#include <algorithm>
#include <numeric>
#include <utility>
#include <vector>

#include "support/text.h"

namespace bw {
namespace {

constexpr size_t kTypingErrors = 2;  // in a word that is still recognised

// The command that the words have led to, and its name with all above it.
const CLI::App& Reached(const CLI::App& program, std::string* name = nullptr) {
    const CLI::App* at = &program;
    if (name != nullptr) *name = program.get_name();
    while (!at->get_subcommands().empty()) {
        at = at->get_subcommands().front();
        if (name != nullptr) *name += " " + at->get_name();
    }
    return *at;
}

// Letters to insert, remove or change to make one word of the other (Levenshtein's distance).
size_t Distance(const std::string& a, const std::string& b) {
    std::vector<size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), 0);
    for (size_t i = 0; i < a.size(); ++i) {
        size_t diagonal = std::exchange(row[0], i + 1);
        for (size_t j = 0; j < b.size(); ++j) {
            const size_t changed = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({changed, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

std::u16string UnknownCommand(const CLI::App& at, const std::string& word, Language language) {
    const auto commands = at.get_subcommands([](const CLI::App*) { return true; });
    const auto nearest = std::ranges::min_element(
        commands, {}, [&](const CLI::App* command) { return Distance(word, command->get_name()); });
    const std::u16string shown = VisibleText(ToWide(word));
    if (nearest != commands.end() && Distance(word, (*nearest)->get_name()) <= kTypingErrors) {
        return FormatText(LoadText(TextId::kUnknownCommandMeant, language), shown,
                          (*nearest)->get_name());
    }
    return FormatText(LoadText(TextId::kUnknownCommand, language), shown);
}

std::u16string UnknownWord(const CLI::App& at, const std::string& word, Language language) {
    if (!at.get_subcommands([](const CLI::App*) { return true; }).empty() &&
        !word.starts_with('-')) {
        return UnknownCommand(at, word, language);
    }
    const TextId id = word.starts_with('-') ? TextId::kUnknownOption : TextId::kUnexpectedWord;
    return FormatText(LoadText(id, language), VisibleText(ToWide(word)));
}

// The first required option that isn't there, else that a command is missing.
std::u16string WhatIsMissing(const CLI::App& at, Language language) {
    for (const CLI::Option* option : at.get_options()) {
        if (option->get_required() && option->count() == 0) {
            return FormatText(LoadText(TextId::kOptionIsMissing, language),
                              option->get_name(option->get_positional(), true));
        }
    }
    return LoadText(TextId::kCommandIsMissing, language);
}

// The message of a wrong number of values begins with the option's name.
std::u16string WrongCount(const CLI::App& at, const std::string& message, Language language) {
    const std::string name = message.substr(0, message.find(':'));
    const CLI::Option* option = at.get_option_no_throw(name);
    const bool tooMany = option != nullptr && option->count() > 1;
    return FormatText(
        LoadText(tooMany ? TextId::kOptionGivenTwice : TextId::kOptionNeedsValue, language),
        VisibleText(ToWide(name)));
}

std::u16string Words(const CLI::App& program, const CLI::ParseError& error, Language language) {
    const CLI::App& at = Reached(program);
    const std::vector<std::string> unknown = program.remaining(true);
    const auto code = static_cast<CLI::ExitCodes>(error.get_exit_code());
    if (!unknown.empty()) return UnknownWord(at, unknown.front(), language);
    if (code == CLI::ExitCodes::RequiredError) return WhatIsMissing(at, language);
    if (code == CLI::ExitCodes::ArgumentMismatch) return WrongCount(at, error.what(), language);
    return ToWide(error.what());  // the words of a check of ours behind the option's name
}

}  // namespace

bool NamesUnknownCommand(const CLI::App& program) {
    const CLI::App& at = Reached(program);
    return !at.get_subcommands([](const CLI::App*) { return true; }).empty() &&
           !program.remaining(true).empty();
}

std::string UsageText(const CLI::App& program, const std::u16string& words, Language language) {
    std::string name;
    Reached(program, &name);
    return ToUtf8(LoadText(TextId::kErrorTitle, language) + u": " + words + u"\n" +
                  FormatText(LoadText(TextId::kHelpIsThere, language), name) + u"\n");
}

std::string UsageProblem(const CLI::App& program, const CLI::ParseError& error, Language language) {
    return UsageText(program, Words(program, error, language), language);
}

}  // namespace bw
