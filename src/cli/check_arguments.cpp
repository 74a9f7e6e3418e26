#include "cli/check_arguments.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>

#include "support/text.h"

namespace bw {
namespace {

constexpr uint32_t kMostJobs = 256;
constexpr uint32_t kMostFrames = 36000;  // ten minutes of the console
constexpr uint32_t kMostGames = 20000;   // more than any cart has

std::optional<uint32_t> Whole(std::string_view digits, uint32_t from, uint32_t to) {
    uint32_t number = 0;
    const char* end = digits.data() + digits.size();
    const auto [rest, error] = std::from_chars(digits.data(), end, number);
    if (error != std::errc() || rest != end || number < from || number > to) return std::nullopt;
    return number;
}

// "3,7-9" as indices from 0; nothing if it isn't that.
std::optional<std::vector<uint32_t>> Games(std::string_view text) {
    std::vector<uint32_t> games;
    while (true) {
        const std::string_view part = text.substr(0, text.find(','));
        const size_t dash = part.find('-');
        const auto first = Whole(part.substr(0, dash), 1, kMostGames);
        const auto last = dash == part.npos ? first : Whole(part.substr(dash + 1), 1, kMostGames);
        if (!first || !last || *last < *first) return std::nullopt;
        for (uint32_t number = *first; number <= *last; ++number)
            games.push_back(number - 1);
        if (part.size() == text.size()) return games;
        text.remove_prefix(part.size() + 1);
    }
}

void AddNumber(const CommandOptions& options, const std::string& name, uint32_t& value, uint32_t to,
               TextId help) {
    options.Command()
        .add_option(name, value, options.Words(help))
        ->type_name("NUMBER")
        ->check([to, words = options.Words(TextId::kNoNumberFromTo)](const std::string& text) {
            return Whole(text, 1, to)
                       ? std::string()
                       : ToUtf8(FormatText(ToWide(words), VisibleText(ToWide(text)), 1, to));
        });
}

}  // namespace

void AddCartCheckOptions(const CommandOptions& options, Arguments& arguments) {
    CheckArguments& checking = arguments.checking;
    AddNumber(options, "--jobs", checking.jobs, kMostJobs, TextId::kHelpJobs);
    AddNumber(options, "--frames", checking.frames, kMostFrames, TextId::kHelpFrames);
    options.Command()
        .add_option_function<std::string>(
            "--only", [&](const std::string& value) { checking.only = *Games(value); },
            options.Words(TextId::kHelpOnly))
        ->type_name("NUMBERS")
        ->check([words = options.Words(TextId::kNoGameNumbers)](const std::string& value) {
            return Games(value) ? std::string()
                                : ToUtf8(FormatText(ToWide(words), VisibleText(ToWide(value))));
        });
    options.Flag("--json", arguments.json, TextId::kHelpJson);
    options.Path("--sheet", checking.sheet, TextId::kHelpSheet, "FILE")
        ->check([words = options.Words(TextId::kNotToStandardOutput)](const std::string& file) {
            return file == "-" ? words : std::string();
        });
}

void AddBuildingOptions(const CommandOptions& options, std::string& given,
                        const std::function<void()>& add) {
    CLI::App& command = options.Command();
    const std::vector<CLI::Option*> before = command.get_options();
    add();
    for (CLI::Option* option : command.get_options()) {
        if (std::ranges::find(before, option) != before.end()) continue;
        option->each([&given, name = option->get_name()](const std::string&) {
            if (given.empty()) given = name;
        });
    }
}

}  // namespace bw
