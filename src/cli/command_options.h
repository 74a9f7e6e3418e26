// The options of a command: their checks and help in the program's language.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "language/language.h"

namespace bw {

// What is wrong with a value; empty if it will do.
using ValueCheck = std::function<std::string(const std::string&)>;

class CommandOptions {
  public:
    CommandOptions(CLI::App& command, Language language) : command_(command), language_(language) {}

    CLI::App& Command() const { return command_; }
    // In UTF-8, as CLI11 wants it.
    std::string Words(TextId id) const;
    // A command below this one.
    CommandOptions Add(const std::string& name, TextId help) const;

    void Flag(const std::string& names, bool& value, TextId help) const;
    // The name of a file or a folder, which is never empty.
    CLI::Option* Path(const std::string& names, std::filesystem::path& value, TextId help,
                      const char* type) const;
    // Several of them. Not by the library's own conversion: it doesn't know that words are UTF-8.
    CLI::Option* Paths(const std::string& names, std::vector<std::filesystem::path>& values,
                       TextId help, const char* type) const;
    // The same for a file that is written, which can't be standard output.
    CLI::Option* Output(std::filesystem::path& value, TextId help) const;
    CLI::Option* Inputs(std::vector<std::filesystem::path>& values, TextId help) const;
    // One of a few words or numbers.
    template <typename Value>
    CLI::Option* Choice(const std::string& names, Value& value,
                        const std::vector<std::string>& values, TextId help) const {
        std::string type;
        for (const std::string& word : values)
            type.append(type.empty() ? "" : "|").append(word);
        return command_.add_option(names, value, Words(help))
            ->type_name(type)
            ->check(OneOf(values))
            ->capture_default_str();
    }

    ValueCheck NotEmpty() const;
    ValueCheck OneOf(const std::vector<std::string>& values) const;

  private:
    CLI::App& command_;
    Language language_;
};

}  // namespace bw
