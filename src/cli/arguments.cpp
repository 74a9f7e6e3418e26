#include "cli/arguments.h"

#include <map>
#include <memory>
#include <sstream>

#include <fmt/printf.h>

#include "cli/cart_arguments.h"
#include "cli/check_arguments.h"
#include "cli/command_options.h"
#include "cli/design_arguments.h"
#include "cli/inputs.h"
#include "cli/usage_problem.h"
#include "support/paths.h"
#include "support/text.h"
#include "support/version.h"

namespace bw {
namespace {

constexpr int kWrongUsage = 2;

// What options are parsed into before they become settings.
struct MenuOptions {
    std::string board = "coolboy";
    uint32_t menuSize = 128;  // KB
    std::string style = "default";
    std::filesystem::path externMenu;
    std::string format;
    std::filesystem::path keepWork;
    std::string leaveOut;
    std::filesystem::path keepPlaces;
};

// The tunes by the titles that they have in the window.
std::string MusicHelp(const CommandOptions& options) {
    return fmt::sprintf(options.Words(TextId::kHelpMusic), options.Words(TextId::kMusicSet2),
                        options.Words(TextId::kMusicSet3), options.Words(TextId::kMusicSet4),
                        options.Words(TextId::kMusicSet5));
}

// What is done to the games before they are used.
void AddCollectionOptions(const CommandOptions& options, Arguments& arguments) {
    options.Path("--look-in", arguments.lookIn, TextId::kHelpLookIn, "FOLDER");
    options.Flag("--skip-damaged", arguments.skipDamaged, TextId::kHelpSkipDamaged);
    options.Flag("--keep-best", arguments.keepBest, TextId::kHelpKeepBest);
    options.Paths("--names", arguments.names, TextId::kHelpNames, "FILE")->allow_extra_args(false);
    options.Flag("--tidy-names", arguments.tidyNames, TextId::kHelpTidyNames);
    options.Flag("--shorten-names", arguments.shortenNames, TextId::kHelpShortenNames);
}

void AddBoardOption(const CommandOptions& options, MenuOptions& menu, TextId help) {
    options.Choice("--board", menu.board, {"coolboy", "mindkids", "coolgirl"}, help);
}

void AddFitOptions(const CommandOptions& options, MenuOptions& menu, Arguments& arguments) {
    options.Choice("--leave-out", menu.leaveOut, {"fewest", "last"}, TextId::kHelpLeaveOut);
    options.Flag("--fill-up", arguments.fillUp, TextId::kHelpFillUp);
}

void AddMenuOptions(const CommandOptions& options, MenuOptions& menu, Arguments& arguments) {
    BuildSettings& settings = arguments.settings;
    AddBoardOption(options, menu, TextId::kHelpBoard);
    options.Choice("--menu-size", menu.menuSize, {"128", "256", "512"}, TextId::kHelpMenuSize);
    AddListOptions(options, settings);
    options.Choice("--style", menu.style, {"default", "white"}, TextId::kHelpStyle);
    options.Choice("--music", settings.Music, {"0", "1", "2", "3", "4", "5"}, TextId::kHelpMusic)
        ->description(MusicHelp(options));
    options.Choice("--turning-speed", settings.PageTurningSpeed, {"1", "2", "3", "4"},
                   TextId::kHelpTurningSpeed);
    options.Path("--design", arguments.design, TextId::kHelpDesignOption, "FILE");
    options.Path("--extern-menu", menu.externMenu, TextId::kHelpExternMenu, "FILE");
    options.Flag("--strict", arguments.strict, TextId::kHelpStrict);
    options.Flag("--skip-unsupported", arguments.skipUnsupported, TextId::kHelpSkipUnsupported);
    AddCollectionOptions(options, arguments);
}

void ApplyMenuOptions(const MenuOptions& options, Arguments& arguments) {
    static const std::map<std::string, BoardType> kBoards{{"coolboy", BoardType::kCoolboy},
                                                          {"mindkids", BoardType::kMindkids},
                                                          {"coolgirl", BoardType::kCoolgirl}};
    BuildSettings& settings = arguments.settings;
    arguments.board = kBoards.at(options.board);
    settings.CoolboyType = arguments.board == BoardType::kMindkids ? 1 : 0;
    settings.MenuSize = options.menuSize / 16;
    settings.ShowStyle = options.style == "white" ? 1 : 0;
    settings.ExternMenuEnable = !options.externMenu.empty();
    if (settings.ExternMenuEnable) settings.ExternMenuPath = FromCurrentFolder(options.externMenu);
    settings.CustomEnable = !arguments.design.empty();
    settings.ExportRomType = arguments.board == BoardType::kCoolgirl ? 1 : 0;
    settings.ExportPrgSize = settings.MenuSize == 16 ? 1 : settings.MenuSize == 32 ? 2 : 0;
    if (!options.keepWork.empty()) arguments.keepWork = FromCurrentFolder(options.keepWork);
    if (!options.keepPlaces.empty()) arguments.keepPlaces = FromCurrentFolder(options.keepPlaces);
    if (!options.leaveOut.empty()) {
        arguments.leaveOut =
            options.leaveOut == "last" ? LeavingOut::kLeastLoved : LeavingOut::kFewest;
    }
}

RomFormat FormatOf(const std::string& name, const std::filesystem::path& output) {
    for (const RomFormat format : {RomFormat::kNes20, RomFormat::kUnif, RomFormat::kBinary}) {
        if (name.empty() ? HasExtension(output, FormatExtension(format))
                         : name == FormatExtension(format)) {
            return format;
        }
    }
    return RomFormat::kNes20;
}

// A command on games: what all of them have.
CommandOptions AddGameCommand(const CommandOptions& program, const std::string& name, TextId help,
                              TextId inputHelp, Command command, Arguments& arguments) {
    const CommandOptions added = program.Add(name, help);
    added.Command().callback([&arguments, command] { arguments.command = command; });
    added.Flag("-q,--quiet", arguments.quiet, TextId::kHelpQuiet);
    added.Flag("-v,--verbose", arguments.verbose, TextId::kHelpVerbose);
    added.Inputs(arguments.inputs, inputHelp)->required();
    return added;
}

void AddGameCommands(const CommandOptions& program, MenuOptions& menu, Arguments& arguments) {
    const auto add = [&](const std::string& name, TextId help, Command command) {
        return AddGameCommand(program, name, help, TextId::kHelpInput, command, arguments);
    };
    const CommandOptions info = add("info", TextId::kHelpInfo, Command::kInfo);
    info.Flag("--json", arguments.json, TextId::kHelpJson);
    info.Flag("--why", arguments.why, TextId::kHelpWhy);
    info.Flag("--fit", arguments.fit, TextId::kHelpFit);
    AddBoardOption(info, menu, TextId::kHelpFitBoard);

    const CommandOptions build = add("build", TextId::kHelpBuild, Command::kBuild);
    build.Output(arguments.output, TextId::kHelpOutputRom);
    build.Choice("--format", menu.format, {"nes", "unf", "bin"}, TextId::kHelpFormat);
    AddMenuOptions(build, menu, arguments);
    AddFitOptions(build, menu, arguments);
    build.Path("--keep-places", menu.keepPlaces, TextId::kHelpKeepPlaces, "FILE");
    build.Path("--keep-work", menu.keepWork, TextId::kHelpKeepWork, "FOLDER");
    build.Path("--report", arguments.report, TextId::kHelpReport, "FILE");
    build.Flag("--dry-run", arguments.dryRun, TextId::kHelpDryRun);

    const CommandOptions exporting = add("export", TextId::kHelpExport, Command::kExport);
    exporting.Path("-d,--directory", arguments.folder, TextId::kHelpFolder, "FOLDER")->required();
    AddMenuOptions(exporting, menu, arguments);
    AddFitOptions(exporting, menu, arguments);

    const CommandOptions check =
        AddGameCommand(program, "check", TextId::kHelpCheckCart, TextId::kHelpCheckedInput,
                       Command::kCheck, arguments);
    AddCartCheckOptions(check, arguments);
    AddBuildingOptions(check, arguments.checking.building, [&] {
        check.Choice("--format", menu.format, {"nes", "unf"}, TextId::kHelpFormat);
        AddMenuOptions(check, menu, arguments);
    });

    const CommandOptions list = add("list", TextId::kHelpListCommand, Command::kList);
    list.Flag("--json", arguments.json, TextId::kHelpJson);
    list.Output(arguments.output, TextId::kHelpOutputList);
    AddCollectionOptions(list, arguments);
    AddBoardOption(list, menu, TextId::kHelpFitBoard);
    AddFitOptions(list, menu, arguments);
}

void AddPlayCommand(const CommandOptions& program, Arguments& arguments) {
    const CommandOptions play = program.Add("play", TextId::kHelpPlay);
    play.Command().callback([&arguments] { arguments.command = Command::kPlay; });
    play.Path("CART", arguments.played, TextId::kHelpPlayInput, "FILE")->required();
}

// What goes together or not; empty if all is well.
std::u16string Contradiction(const Arguments& arguments, Language language) {
    if (arguments.command != Command::kBuild) return {};
    if (!arguments.dryRun && arguments.output.empty()) {
        return FormatText(LoadText(TextId::kOptionIsMissing, language), "-o,--output");
    }
    const bool reports = !arguments.report.empty() && arguments.report != "-";
    if (arguments.dryRun && (arguments.keepWork || reports)) {
        return FormatText(LoadText(TextId::kDryRunWritesNothing, language),
                          arguments.keepWork ? "--keep-work" : "--report");
    }
    return {};
}

// "help COMMAND..." is "COMMAND... --help".
std::vector<std::string> WordsOf(std::vector<std::string> words) {
    if (!words.empty() && words.front() == "help") {
        words.erase(words.begin());
        words.emplace_back("--help");
    }
    return words;
}

std::unique_ptr<CLI::App> MakeProgram(Language language) {
    const auto words = [language](TextId id) { return ToUtf8(LoadText(id, language)); };
    auto program = std::make_unique<CLI::App>(words(TextId::kProgramPurpose), "bankweaver-cli");
    program->option_defaults()->group(words(TextId::kOptionsLabel));
    // On Windows the library would take a path that begins with a slash for an option.
    program->allow_windows_style_options(false);
    program->set_help_flag("-h,--help", words(TextId::kHelpHelp))
        ->group(words(TextId::kOptionsLabel));
    program
        ->set_version_flag("-V,--version", "bankweaver-cli " + std::string(ProgramVersion()),
                           words(TextId::kHelpVersion))
        ->group(words(TextId::kOptionsLabel));
    const auto formatter = program->get_formatter();
    formatter->label("Usage", words(TextId::kUsageLabel));
    formatter->label("Positionals", words(TextId::kPositionalsLabel));
    formatter->label("OPTIONS", words(TextId::kOptionsLabel));
    formatter->label("SUBCOMMAND", words(TextId::kCommandLabel));
    formatter->label("REQUIRED", words(TextId::kRequiredLabel));
    program->require_subcommand(1);
    return program;
}

}  // namespace

ParseResult ParseArguments(const std::vector<std::string>& given) {
    const Language language = SystemLanguage();
    const auto program = MakeProgram(language);
    Arguments arguments;
    MenuOptions menu;
    AddGameCommands({*program, language}, menu, arguments);
    AddCartCommands({*program, language}, arguments);
    AddDesignCommands({*program, language}, arguments);
    AddPlayCommand({*program, language}, arguments);

    const auto refuse = [&](std::string text) {
        return ParseResult{.text = std::move(text), .exitCode = kWrongUsage};
    };
    try {
        const std::vector<std::string> words = WordsOf(given);
        program->parse(std::vector<std::string>(words.rbegin(), words.rend()));
    } catch (const CLI::Success& asked) {  // --help, --version
        if (NamesUnknownCommand(*program)) return refuse(UsageProblem(*program, asked, language));
        std::ostringstream text;
        program->exit(asked, text, text);
        return {.text = text.str()};
    } catch (const CLI::ParseError& error) {
        return refuse(UsageProblem(*program, error, language));
    }
    ApplyMenuOptions(menu, arguments);
    if (const std::u16string words = Contradiction(arguments, language); !words.empty()) {
        return refuse(UsageText(*program, words, language));
    }
    arguments.format = FormatOf(menu.format, arguments.output);
    return {.arguments = std::move(arguments)};
}

}  // namespace bw
