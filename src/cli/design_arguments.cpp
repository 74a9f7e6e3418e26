#include "cli/design_arguments.h"

#include <algorithm>
#include <charconv>
#include <string_view>
#include <system_error>

#include "cli/design_convert.h"
#include "cli/design_render.h"
#include "rom/image_files.h"
#include "support/text.h"

namespace bw {
namespace {

// A command below "design"; the file and the options that all have.
CommandOptions AddCommand(const CommandOptions& design, const std::string& name, TextId help,
                          Command command, Arguments& arguments) {
    const CommandOptions added = design.Add(name, help);
    added.Command().callback([&arguments, command] { arguments.command = command; });
    added.Flag("-q,--quiet", arguments.quiet, TextId::kHelpQuiet);
    added.Flag("-v,--verbose", arguments.verbose, TextId::kHelpVerbose);
    return added;
}

CLI::Option* AddFile(const CommandOptions& options, Arguments& arguments, TextId help) {
    return options.Path("FILE", arguments.design, help, "");
}

// An option that takes PART=FILE, any number of times.
CLI::Option* AddPartOption(const CommandOptions& options, const std::string& option,
                           std::vector<PartFile>& parts, const std::vector<std::string>& names,
                           TextId help) {
    std::string known;
    for (const std::string& name : names)
        known.append(known.empty() ? "" : ", ").append(name);
    return options.Command()
        .add_option_function<std::vector<std::string>>(
            option,
            [&parts](const std::vector<std::string>& values) {
                for (const std::string& value : values) {
                    const size_t sign = value.find('=');
                    parts.push_back({value.substr(0, sign), NamePath(value.substr(sign + 1))});
                }
            },
            options.Words(help) + ": " + known)
        ->type_name("PART=FILE")
        ->expected(1)
        ->take_all()
        ->allow_extra_args(false)
        ->check([names, words = options.Words(TextId::kNoKnownPart)](const std::string& value) {
            const size_t sign = value.find('=');
            const bool named = std::ranges::find(names, value.substr(0, sign)) != names.end();
            return named && sign + 1 < value.size() && sign != std::string::npos
                       ? std::string()
                       : ToUtf8(FormatText(ToWide(words), VisibleText(ToWide(value))));
        });
}

// Names with commas between them.
std::vector<std::string> SplitAtCommas(const std::string& text) {
    std::vector<std::string> names{""};
    for (const char c : text) {
        if (c == ',') {
            names.emplace_back();
        } else {
            names.back() += c;
        }
    }
    return names;
}

void AddRenderOptions(const CommandOptions& options, Arguments& arguments) {
    AddFile(options, arguments, TextId::kHelpDesignFile)->required();
    options.Inputs(arguments.inputs, TextId::kHelpRenderInput)
        ->expected(0, CLI::detail::expected_max_vector_size);
    options.Output(arguments.output, TextId::kHelpOutputPicture)->required();
    options.Command()
        .add_option_function<std::string>(
            "--layers",
            [&arguments](const std::string& value) { arguments.layers = SplitAtCommas(value); },
            options.Words(TextId::kHelpLayers))
        ->type_name("NAMES")
        ->check([known = options.OneOf(LayerNames())](const std::string& value) {
            for (const std::string& name : SplitAtCommas(value)) {
                if (std::string fault = known(name); !fault.empty()) return fault;
            }
            return std::string();
        });
    options.Choice("--view", arguments.view, {"screen", "tiles"}, TextId::kHelpView);
    options.Choice("--scale", arguments.scale, {"1", "2", "3", "4", "5", "6", "7", "8"},
                   TextId::kHelpScale);
    AddListOptions(options, arguments.settings);
}

void AddCheckOptions(const CommandOptions& options, Arguments& arguments) {
    options.Flag("--json", arguments.json, TextId::kHelpJson);
    AddFile(options, arguments, TextId::kHelpDesignFile)->required();
    options.Inputs(arguments.inputs, TextId::kHelpCheckInput)
        ->expected(0, CLI::detail::expected_max_vector_size);
    AddListOptions(options, arguments.settings);
}

// "COLUMN,ROW" of a cell of the screen.
std::optional<Pos> CellOf(const std::string& text) {
    const size_t comma = text.find(',');
    if (comma == std::string::npos) return std::nullopt;
    const auto reads = [](std::string_view digits, int limit, int32_t& number) {
        const char* end = digits.data() + digits.size();
        const auto [rest, error] = std::from_chars(digits.data(), end, number);
        return error == std::errc() && rest == end && number >= 0 && number < limit;
    };
    const std::string_view words = text;
    Pos cell;
    const bool good = reads(words.substr(0, comma), kScreenColumns, cell.X) &&
                      reads(words.substr(comma + 1), kScreenRows, cell.Y);
    return good ? std::optional(cell) : std::nullopt;
}

void AddImportOptions(const CommandOptions& options, Arguments& arguments) {
    options.Path("PICTURE", arguments.picture, TextId::kHelpPicture, "")->required();
    AddFile(options, arguments, TextId::kHelpBaseDesign);
    options.Output(arguments.output, TextId::kHelpOutputDesign)->required();
    ImportOptions& importing = arguments.importing;
    options.Command()
        .add_option_function<std::string>(
            "--at", [&](const std::string& value) { importing.at = *CellOf(value); },
            options.Words(TextId::kHelpPictureAt))
        ->type_name("COLUMN,ROW")
        ->check([words = options.Words(TextId::kNoCell)](const std::string& value) {
            return CellOf(value) ? std::string()
                                 : ToUtf8(FormatText(ToWide(words), VisibleText(ToWide(value))));
        });
    options.Flag("--keep-palettes", importing.keepPalettes, TextId::kHelpKeepPalettes);
    options.Flag("--keep-tiles", importing.keepTiles, TextId::kHelpKeepTiles);
    options.Command()
        .add_option_function<std::string>(
            "--dither",
            [&](const std::string& value) {
                importing.dithering = value == "ordered" ? Dithering::kOrdered : Dithering::kNone;
            },
            options.Words(TextId::kHelpDither))
        ->type_name("none|ordered")
        ->check(options.OneOf({"none", "ordered"}));
    options.Path("--report", arguments.report, TextId::kHelpImportReport, "FILE");
}

}  // namespace

void AddListOptions(const CommandOptions& options, BuildSettings& settings) {
    options.Choice("--page-size", settings.PageSize, {"5", "10", "15", "20"},
                   TextId::kHelpPageSize);
    options.Flag("--page-number", settings.PageNumber, TextId::kHelpPageNumber);
    options.Flag("--insert-row", settings.NameInsertRow, TextId::kHelpInsertRow);
    options.Flag("--number", settings.ShowNumberOrder, TextId::kHelpNumber);
    options.Flag("--dot", settings.ShowNumberDot, TextId::kHelpDot);
    options.Flag("--fill", settings.ShowNumberFill, TextId::kHelpFill);
}

void AddDesignCommands(const CommandOptions& program, Arguments& arguments) {
    const CommandOptions design = program.Add("design", TextId::kHelpDesign);
    design.Command().require_subcommand(1);
    const auto add = [&](const std::string& name, TextId help, Command command) {
        return AddCommand(design, name, help, command, arguments);
    };
    const CommandOptions pack = add("pack", TextId::kHelpPack, Command::kDesignPack);
    pack.Path("FOLDER", arguments.folder, TextId::kHelpPackFolder, "")->required();
    pack.Output(arguments.output, TextId::kHelpOutputDesign)->required();

    const CommandOptions unpack = add("unpack", TextId::kHelpUnpack, Command::kDesignUnpack);
    AddFile(unpack, arguments, TextId::kHelpDesignFile)->required();
    unpack.Path("-d,--directory", arguments.folder, TextId::kHelpFolder, "FOLDER")->required();

    AddRenderOptions(add("render", TextId::kHelpRender, Command::kDesignRender), arguments);

    const CommandOptions info = add("info", TextId::kHelpDesignInfo, Command::kDesignInfo);
    info.Flag("--json", arguments.json, TextId::kHelpJson);
    AddFile(info, arguments, TextId::kHelpDesignFile)->required();

    AddCheckOptions(add("check", TextId::kHelpCheck, Command::kDesignCheck), arguments);

    const CommandOptions convert = add("convert", TextId::kHelpConvert, Command::kDesignConvert);
    AddFile(convert, arguments, TextId::kHelpBaseDesign);
    AddPartOption(convert, "--load", arguments.loads, LoadedPartNames(), TextId::kHelpLoadPart);
    AddPartOption(convert, "--save", arguments.saves, SavedPartNames(), TextId::kHelpSavePart)
        ->required();

    AddImportOptions(
        add("import-picture", TextId::kHelpImportPicture, Command::kDesignImportPicture),
        arguments);
}

}  // namespace bw
