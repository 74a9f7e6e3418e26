#include "cli/arguments.h"

#include <algorithm>
#include <map>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "cli/design_convert.h"
#include "cli/design_render.h"
#include "cli/inputs.h"
#include "language/language.h"
#include "support/paths.h"
#include "support/text.h"
#include "support/version.h"

namespace bw {
namespace {

constexpr int kWrongUsage = 2;

// What the options of a menu are parsed into before they become settings.
struct MenuOptions {
    std::string board = "coolboy";
    uint32_t menuSize = 128;  // KB
    std::string style = "default";
    std::string externMenu;
    std::string design;
};

template <typename Value>
void OneOf(CLI::Option* option, std::initializer_list<Value> values) {
    option->check(CLI::IsMember(std::vector<Value>(values)));
}

void AddInputs(CLI::App& command, Arguments& arguments) {
    command
        .add_option("INPUT", arguments.inputs,
                    "A game image (.nes), a list file (.fcl), or a folder with game images. The "
                    "order is the order of the menu.")
        ->required();
}

// The options that concern the names on the screen.
void AddListOptions(CLI::App& command, BuildSettings& settings) {
    OneOf<uint32_t>(
        command.add_option("--page-size", settings.PageSize, "Names on a page of the menu")
            ->capture_default_str(),
        {5, 10, 15, 20});
    command.add_flag("--page-number", settings.PageNumber, "Show the number of the page");
    command.add_flag("--insert-row", settings.NameInsertRow, "Leave a blank row between names");
    command.add_flag("--number", settings.ShowNumberOrder, "Put ordinal numbers before the names");
    command.add_flag("--dot", settings.ShowNumberDot, "Put a point behind the number");
    command.add_flag("--fill", settings.ShowNumberFill, "Give all numbers the same length");
}

// The tunes by the titles that they have in the window.
std::string MusicHelp() {
    std::string help = "Sound of the menu: 0 silent, 1 beeps, or a tune:";
    int number = 2;
    for (const TextId title :
         {TextId::kMusicSet2, TextId::kMusicSet3, TextId::kMusicSet4, TextId::kMusicSet5}) {
        help += fmt::format("{} {} {}", number == 2 ? "" : ",", number,
                            ToUtf8(LoadText(title, Language::kEnglish)));
        ++number;
    }
    return help;
}

void AddMenuOptions(CLI::App& command, BuildSettings& settings, MenuOptions& options) {
    OneOf<std::string>(
        command.add_option("--board", options.board, "The cartridge board")->capture_default_str(),
        {"coolboy", "mindkids", "coolgirl"});
    OneOf<uint32_t>(command
                        .add_option("--menu-size", options.menuSize,
                                    "Size of the menu program in KB; COOLGIRL's is always 128 "
                                    "unless --extern-menu is given")
                        ->capture_default_str(),
                    {128, 256, 512});
    AddListOptions(command, settings);
    OneOf<std::string>(
        command.add_option("--style", options.style, "Look of the menu")->capture_default_str(),
        {"default", "white"});
    command.add_option("--music", settings.Music, MusicHelp())
        ->capture_default_str()
        ->check(CLI::Range(0, 5));
    command
        .add_option("--turning-speed", settings.PageTurningSpeed,
                    "Names redrawn in a frame when the page turns")
        ->capture_default_str()
        ->check(CLI::Range(1, 4));
    command
        .add_option("--design", options.design, "A screen of your own (.fcm), instead of a style")
        ->check([](const std::string& file) {
            return file.empty() ? "the name of a design is missing" : "";
        });
    command.add_option("--extern-menu", options.externMenu,
                       "A menu of your own: a source (.asm) or a ROM (.nes)");
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
    settings.CustomEnable = !options.design.empty();
    if (settings.CustomEnable) arguments.design = options.design;
    settings.ExportRomType = arguments.board == BoardType::kCoolgirl ? 1 : 0;
    settings.ExportPrgSize = settings.MenuSize == 16 ? 1 : settings.MenuSize == 32 ? 2 : 0;
}

// The conversion of a design between its file and its folder.
struct DesignCommands {
    CLI::App* pack;
    CLI::App* unpack;
    CLI::App* render;
    CLI::App* info;
    CLI::App* convert;
};

// An option that takes PART=FILE, any number of times.
void AddPartOption(CLI::App& command, const std::string& option, std::vector<PartFile>& parts,
                   const std::vector<std::string>& names, const std::string& help) {
    std::string known;
    for (const std::string& name : names)
        known.append(known.empty() ? "" : ", ").append(name);
    command
        .add_option_function<std::vector<std::string>>(
            option,
            [&parts](const std::vector<std::string>& values) {
                for (const std::string& value : values) {
                    const size_t sign = value.find('=');
                    parts.push_back({value.substr(0, sign), value.substr(sign + 1)});
                }
            },
            help + ": " + known)
        ->type_name("PART=FILE")
        ->expected(1)
        ->take_all()
        ->check([names](const std::string& value) -> std::string {
            const size_t sign = value.find('=');
            const bool named = std::ranges::find(names, value.substr(0, sign)) != names.end();
            return named && sign + 1 < value.size() && sign != std::string::npos
                       ? ""
                       : value + " is no known part, = and a file";
        });
}

CLI::App* AddConvertCommand(CLI::App& design, Arguments& arguments) {
    CLI::App* convert =
        design.add_subcommand("convert", "Put parts into a design, or take parts out of it");
    convert->add_option("FILE", arguments.design,
                        "The design (.fcm) to begin with; without one the default screen");
    AddPartOption(*convert, "--load", arguments.loads, LoadedPartNames(), "Replace a part by");
    AddPartOption(*convert, "--save", arguments.saves, SavedPartNames(), "Write a part to");
    convert->get_option("--save")->required();
    return convert;
}

CLI::App* AddRenderCommand(CLI::App& design, Arguments& arguments) {
    CLI::App* render = design.add_subcommand("render", "Draw a design as a picture");
    render->add_option("FILE", arguments.design, "The design (.fcm)")->required();
    render
        ->add_option("INPUT", arguments.inputs,
                     "Game images, list files or folders whose names the list shows")
        ->expected(0, CLI::detail::expected_max_vector_size);
    render->add_option("-o,--output", arguments.output, "The picture (.png) to write")->required();
    render->add_option("--layers", arguments.layers, "What the screen shows, separated by commas")
        ->delimiter(',')
        ->check(CLI::IsMember(LayerNames()));
    OneOf<std::string>(
        render
            ->add_option("--view", arguments.view, "The screen, or the tiles in all their colours")
            ->capture_default_str(),
        {"screen", "tiles"});
    render->add_option("--scale", arguments.scale, "Pixels of the picture for one of the console")
        ->capture_default_str()
        ->check(CLI::Range(1, 8));
    AddListOptions(*render, arguments.settings);
    return render;
}

DesignCommands AddDesignCommands(CLI::App& app, Arguments& arguments) {
    CLI::App* design = app.add_subcommand("design", "Convert the design of a menu's screen");
    design->require_subcommand(1);
    CLI::App* pack = design->add_subcommand("pack", "Make a design from a folder of its parts");
    pack->add_option("FOLDER", arguments.folder, "The folder with design.txt and its pictures")
        ->required();
    pack->add_option("-o,--output", arguments.output, "The design (.fcm) to write")->required();
    CLI::App* unpack =
        design->add_subcommand("unpack", "Take a design apart into text and pictures");
    unpack->add_option("FILE", arguments.design, "The design (.fcm)")->required();
    unpack->add_option("-d,--directory", arguments.folder, "The folder to write to")->required();
    CLI::App* info = design->add_subcommand("info", "Tell what a design holds");
    info->add_flag("--json", arguments.json, "Print JSON instead of a table");
    info->add_option("FILE", arguments.design, "The design (.fcm)")->required();
    return {pack, unpack, AddRenderCommand(*design, arguments), info,
            AddConvertCommand(*design, arguments)};
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

}  // namespace

ParseResult ParseArguments(int count, const char* const* values) {
    Arguments arguments;
    MenuOptions menu;
    std::string format;
    std::string keepWork;

    CLI::App app("Builds one multicart ROM for COOLBOY, MINDKIDS and COOLGIRL cartridges.",
                 "bankweaver-cli");
    app.set_version_flag("--version", "bankweaver-cli " + std::string(ProgramVersion()));
    app.require_subcommand(1);

    CLI::App* info = app.add_subcommand("info", "Tell what game images hold");
    info->add_flag("--json", arguments.json, "Print JSON instead of a table");
    AddInputs(*info, arguments);

    CLI::App* build = app.add_subcommand("build", "Build a multicart ROM");
    AddMenuOptions(*build, arguments.settings, menu);
    OneOf<std::string>(build->add_option("--format", format,
                                         "nes, unf or bin; without it the extension of FILE "
                                         "decides, else nes"),
                       {"nes", "unf", "bin"});
    build->add_option("--keep-work", keepWork,
                      "A folder that receives the menu's sources and generated files");
    build->add_option("--report", arguments.report,
                      "A JSON file that tells where every game lies; - for standard output");
    build->add_option("-o,--output", arguments.output, "The ROM to write")->required();
    AddInputs(*build, arguments);

    CLI::App* exporting =
        app.add_subcommand("export", "Write the generated files for a menu of your own");
    AddMenuOptions(*exporting, arguments.settings, menu);
    exporting->add_option("-d,--directory", arguments.folder, "The folder to write to")->required();
    AddInputs(*exporting, arguments);

    CLI::App* list = app.add_subcommand("list", "Show the list of games, or save it");
    list->add_flag("--json", arguments.json, "Print JSON instead of a table");
    list->add_option("-o,--output", arguments.output, "A list file (.fcl) to write");
    AddInputs(*list, arguments);

    const DesignCommands design = AddDesignCommands(app, arguments);

    ParseResult result;
    try {
        app.parse(count, values);
    } catch (const CLI::Success& asked) {  // --help, --version
        std::ostringstream text;
        app.exit(asked, text, text);
        result.text = text.str();
        return result;
    } catch (const CLI::ParseError& error) {
        std::ostringstream text;
        app.exit(error, text, text);
        result.text = text.str();
        result.exitCode = kWrongUsage;
        return result;
    }
    arguments.command = info->parsed()             ? Command::kInfo
                        : build->parsed()          ? Command::kBuild
                        : exporting->parsed()      ? Command::kExport
                        : design.pack->parsed()    ? Command::kDesignPack
                        : design.unpack->parsed()  ? Command::kDesignUnpack
                        : design.render->parsed()  ? Command::kDesignRender
                        : design.info->parsed()    ? Command::kDesignInfo
                        : design.convert->parsed() ? Command::kDesignConvert
                                                   : Command::kList;
    ApplyMenuOptions(menu, arguments);
    arguments.format = FormatOf(format, arguments.output);
    if (!keepWork.empty()) arguments.keepWork = keepWork;
    result.arguments = std::move(arguments);
    return result;
}

}  // namespace bw
