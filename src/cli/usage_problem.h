// What is wrong with a command line, in the program's language.
#pragma once

#include <string>

#include <CLI/CLI.hpp>

#include "language/language.h"

namespace bw {

// A line on what is wrong and one on where help is. `program` is as the parsing has left it.
std::string UsageProblem(const CLI::App& program, const CLI::ParseError& error, Language language);

// The same for a problem that is already in words.
std::string UsageText(const CLI::App& program, const std::u16string& words, Language language);

// Whether a word stands where a command was expected.
bool NamesUnknownCommand(const CLI::App& program);

}  // namespace bw
