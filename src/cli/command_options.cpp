#include "cli/command_options.h"

#include <algorithm>

#include "cli/wildcards.h"
#include "rom/image_files.h"
#include "support/text.h"

namespace bw {

std::string CommandOptions::Words(TextId id) const {
    return ToUtf8(LoadText(id, language_));
}

CommandOptions CommandOptions::Add(const std::string& name, TextId help) const {
    CLI::App* command = command_.add_subcommand(name, Words(help));
    command->group(Words(TextId::kCommandsLabel));
    command->get_help_ptr()->group(Words(TextId::kOptionsLabel));
    return {*command, language_};
}

void CommandOptions::Flag(const std::string& names, bool& value, TextId help) const {
    command_.add_flag(names, value, Words(help));
}

CLI::Option* CommandOptions::Path(const std::string& names, std::filesystem::path& value,
                                  TextId help, const char* type) const {
    return command_
        .add_option_function<std::string>(
            names, [&value](const std::string& name) { value = NamePath(name); }, Words(help))
        ->type_name(type)
        ->check(NotEmpty());
}

CLI::Option* CommandOptions::Output(std::filesystem::path& value, TextId help) const {
    return Path("-o,--output", value, help, "FILE")
        ->check([words = Words(TextId::kNotToStandardOutput)](const std::string& file) {
            return file == "-" ? words : std::string();
        });
}

CLI::Option* CommandOptions::Paths(const std::string& names,
                                   std::vector<std::filesystem::path>& values, TextId help,
                                   const char* type) const {
    return command_
        .add_option_function<std::vector<std::string>>(
            names,
            [&values](const std::vector<std::string>& given) {
                for (const std::string& name : given) {
                    const std::vector<std::filesystem::path> meant = NamedPaths(name);
                    values.insert(values.end(), meant.begin(), meant.end());
                }
            },
            Words(help))
        ->type_name(type)
        ->check(NotEmpty());
}

CLI::Option* CommandOptions::Inputs(std::vector<std::filesystem::path>& values, TextId help) const {
    return Paths("INPUT", values, help, "");
}

ValueCheck CommandOptions::NotEmpty() const {
    return [words = Words(TextId::kValueIsEmpty)](const std::string& value) {
        return value.empty() ? words : std::string();
    };
}

ValueCheck CommandOptions::OneOf(const std::vector<std::string>& values) const {
    return [values, language = language_](const std::string& value) -> std::string {
        if (std::ranges::find(values, value) != values.end()) return "";
        std::u16string list;
        for (const std::string& word : values)
            list.append(list.empty() ? u"" : u", ").append(ToWide(word));
        return ToUtf8(FormatText(LoadText(TextId::kValueNotAmong, language),
                                 VisibleText(ToWide(value)), list));
    };
}

}  // namespace bw
