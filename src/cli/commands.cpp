#include "cli/commands.h"

#include <algorithm>
#include <cstdio>

#include "builder/build_driver.h"
#include "builder/build_words.h"
#include "builder/layout/build_checks.h"
#include "builder/output/rom_writer.h"
#include "builder/resources.h"
#include "cli/design_commands.h"
#include "cli/design_convert.h"
#include "cli/design_render.h"
#include "cli/inputs.h"
#include "cli/report.h"
#include "cli/terminal_user.h"
#include "designer/files/design_file.h"
#include "list/list_file.h"
#include "support/files.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr int kDone = 0;
constexpr int kFailed = 1;

class CommandRun {
  public:
    explicit CommandRun(const Arguments& arguments)
        : arguments_(arguments),
          language_(SystemLanguage()),
          user_(language_, {FromCurrentFolder(arguments.output), arguments.format},
                FromCurrentFolder(arguments.folder)) {}

    int Run() {
        const bool builds = arguments_.command == Command::kBuild;
        gathered_ = GatherGames(
            arguments_.inputs,
            builds ? WithFormatExtension(FromCurrentFolder(arguments_.output), arguments_.format)
                   : std::filesystem::path(),
            language_);
        for (const std::u16string& warning : gathered_.warnings) {
            Warn(warning);
        }
        Errors(gathered_.problems);
        switch (arguments_.command) {
            case Command::kInfo:
                return Info();
            case Command::kList:
                return List();
            case Command::kExport:
                return gathered_.problems.empty() && Sound() && LoadScreen() ? Export() : kFailed;
            default:
                return gathered_.problems.empty() && Sound() && LoadScreen() ? Build() : kFailed;
        }
    }

  private:
    const GameList& Games() const { return gathered_.games; }
    std::u16string Text(TextId id) const { return LoadText(id, language_); }
    void Errors(const std::vector<std::u16string>& lines) {
        for (const std::u16string& line : lines) {
            user_.Message(line, Text(TextId::kErrorTitle), MessageKind::kError);
        }
    }

    int Info() {
        const bool printed =
            PrintOut(arguments_.json ? InfoJson(Games()) : InfoTable(Games(), language_));
        return printed && gathered_.problems.empty() ? kDone : kFailed;
    }

    int List() {
        if (!gathered_.problems.empty()) {
            return kFailed;
        }
        if (arguments_.output.empty()) {
            return PrintOut(arguments_.json ? ListJson(Games()) : ListTable(Games())) ? kDone
                                                                                      : kFailed;
        }
        std::filesystem::path file = FromCurrentFolder(arguments_.output);
        if (!HasExtension(file, "fcl")) {
            file += ".fcl";
        }
        if (!SaveListFile(file, Games(), ExecutableFolder())) {
            Errors({FormatText(Text(TextId::kFileCantBeWritten), PathText(file))});
            return kFailed;
        }
        return !arguments_.json || PrintOut(ListJson(Games())) ? kDone : kFailed;
    }

    // What would go wrong on the console without a word from the build.
    bool Sound() {
        const std::vector<std::u16string> damaged = FindDamagedImages(Games(), language_);
        Errors(damaged);
        return damaged.empty();
    }

    // What the designer's window does with a file: open with the defaults, load, close.
    bool LoadScreen() {
        if (arguments_.design.empty()) {
            return true;
        }
        DesignDocument document;
        LoadDesignData(document.store, *store_, DefaultTileSet());
        document.store.CaptionText = MulticartTitle(CountChecked(Games()));
        const std::filesystem::path file = FromCurrentFolder(arguments_.design);
        if (const DesignProblem problem = OpenDesign(file, document, language_)) {
            Errors({*problem});
            return false;
        }
        StoreDesign(document, *store_);
        design_ = document.store;
        const CheckText misplaced =
            CheckScreenPlaces(arguments_.settings, design_, CountChecked(Games()), language_);
        if (misplaced) {
            Errors({PathText(file) + u": " + *misplaced});
            return false;
        }
        TellWhatLooksDifferent(document);
        return true;
    }

    void Warn(const std::u16string& text) {
        user_.Message(text, Text(TextId::kWarnTitle), MessageKind::kWarning);
    }

    // What the console shows otherwise than a designer may expect.
    void TellWhatLooksDifferent(const DesignDocument& document) {
        // A column left or right of the screen counts on in the neighbouring row.
        for (const Pos& place : {document.CaptionPos, document.PageNumberPos, document.ItemPos}) {
            if (place.X < 0 || place.X >= kScreenColumns) {
                const uint32_t cell = PpuAddress(place) - PpuAddress({});
                Warn(FormatText(Text(TextId::kPlaceShownElsewhere), place.X, place.Y,
                                cell % kScreenColumns, cell / kScreenColumns));
            }
        }
        const size_t shown = document.BigCursor != 0 ? 60 : 63;
        if (document.store.SpriteTileList.size() > shown) {
            Warn(FormatText(Text(TextId::kSpritesLeftOut), document.store.SpriteTileList.size(),
                            shown));
        }
    }

    BuildContext Context() {
        return {Games(),      arguments_.settings, *store_, design_, user_,
                WorkFolder(), arguments_.keepWork};
    }

    int Export() {
        std::filesystem::path folder = FromCurrentFolder(arguments_.folder);
        if (CountChecked(Games()) == 0) {
            user_.Message(Text(TextId::kNoFilesSelected), Text(TextId::kTipsTitle),
                          MessageKind::kTips);
            return kFailed;
        }
        if (!MakeFolders(folder)) {
            Errors({FormatText(Text(TextId::kFolderCantBeMade), PathText(folder))});
            return kFailed;
        }
        return ExportInfo(Context(), static_cast<ExportType>(arguments_.settings.ExportRomType),
                          arguments_.settings.ExportMenuUnits(), folder, true)
                   ? kDone
                   : kFailed;
    }

    int Build() {
        std::atomic<bool> taskBusy = false;
        if (ReplacesAnInput() || !MayStartBuild(Games(), taskBusy, user_)) {
            return kFailed;
        }
        TellUnusedOptions();
        RemoveAbandonedWorkFolders();
        CancelOnInterrupt();
        const BuildOutcome outcome = BuildRom(Context(), arguments_.board, taskBusy);
        if (!outcome.done) {
            if (user_.Cancelled()) {
                user_.Line(BuildStoppedText(language_));
            }
            return kFailed;
        }
        user_.Line(BuildSummary(outcome, language_));
        return WriteReport(outcome) ? kDone : kFailed;
    }

    void TellUnusedOptions() {
        const BuildSettings& settings = arguments_.settings;
        if (arguments_.board == BoardType::kCoolgirl &&
            settings.MenuSize != BuildSettings().MenuSize && !settings.ExternMenuEnable) {
            Warn(Text(TextId::kMenuSizeUnused));
        }
    }

    // Writing a file of the build would replace one that it reads. The games themselves are the
    // build's to compare; this is about lists, reports and the two outputs.
    bool ReplacesAnInput() {
        const std::filesystem::path output =
            WithFormatExtension(FromCurrentFolder(arguments_.output), arguments_.format);
        const std::filesystem::path report =
            arguments_.report == "-" ? "" : FromCurrentFolder(arguments_.report);
        const auto same = [](const std::filesystem::path& a, const std::filesystem::path& b) {
            std::error_code error;
            return a == b || (std::filesystem::equivalent(a, b, error) && !error);
        };
        std::vector<std::filesystem::path> inputs(arguments_.inputs.begin(),
                                                  arguments_.inputs.end());
        if (arguments_.settings.ExternMenuEnable) {  // a source leaves its ROM beside itself
            std::filesystem::path menu = arguments_.settings.ExternMenuPath;
            inputs.push_back(menu);
            inputs.push_back(menu.replace_extension(".nes"));
        }
        if (!arguments_.design.empty()) {
            inputs.push_back(FromCurrentFolder(arguments_.design));
        }
        const auto isInput = [&](const std::filesystem::path& file) {
            return std::any_of(
                inputs.begin(), inputs.end(),
                [&](const std::filesystem::path& input) { return same(input, file); });
        };
        const bool outputIsWrong = isInput(output);
        if (!outputIsWrong && (report.empty() || (!isInput(report) && !same(report, output)))) {
            return false;
        }
        Errors({FormatText(Text(TextId::kOutputReplacesAnother),
                           PathText(outputIsWrong ? output : report))});
        return true;
    }

    bool WriteReport(const BuildOutcome& outcome) {
        if (arguments_.report.empty()) {
            return true;
        }
        const std::string report = BuildReportJson(outcome);
        if (arguments_.report == "-" ? PrintOut(report) : WriteFile(arguments_.report, report)) {
            return true;
        }
        Errors({FormatText(Text(TextId::kReportCantBeWritten), PathText(arguments_.report))});
        return false;
    }

    const Arguments& arguments_;
    Language language_;
    TerminalUser user_;
    GatheredGames gathered_;
    DesignStore design_;
    std::unique_ptr<SettingsStore> store_ = MakeMemoryStore();
};

}  // namespace

int Execute(const Arguments& arguments) {
    if (arguments.command == Command::kDesignPack) return PackDesignFolder(arguments);
    if (arguments.command == Command::kDesignUnpack) return UnpackDesignFile(arguments);
    if (arguments.command == Command::kDesignRender) return RenderDesign(arguments);
    if (arguments.command == Command::kDesignInfo) return DesignInfo(arguments);
    if (arguments.command == Command::kDesignConvert) return ConvertDesign(arguments);
    return CommandRun(arguments).Run();
}

}  // namespace bw
