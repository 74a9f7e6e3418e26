#include "builder/build_driver.h"

#include <algorithm>
#include <utility>

#include "builder/build_base.h"
#include "builder/menu_assembler.h"
#include "builder/output/kept_folder.h"
#include "builder/output/rom_writer.h"
#include "builder/resources.h"
#include "builder/tables/cart_manifest.h"
#include "builder/tables/menu_tables.h"
#include "language/problem_text.h"
#include "rom/image_files.h"
#include "settings/setting_names.h"
#include "support/file_queries.h"
#include "support/files.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

class RomBuild : BuildBase {
  public:
    RomBuild(const BuildContext& context, BoardType board)
        : BuildBase(context),
          board_(board),
          menuFolder_(context.workFolder / "menu"),
          buildFolder_(menuFolder_ / "build") {}

    BuildOutcome Run() {
        LoadDesign();
        MakeMenuItem();
        BuildOutcome outcome;
        outcome.board = board_;
        // Tables that don't fit are refused before anything is written.
        if (ReadGames(NameRules::kRomBuild) && CountBanks(board_, menu_.prgUnits, buildFolder_)) {
            // Held for as long as the build runs: see RemoveAbandonedWorkFolders.
            FileResult<> prepared = WriteResources(context_.workFolder);
            const FileResult<FileLock> held = FileLock::TryTake(context_.workFolder);
            outcome.done = Build(std::move(prepared), outcome);
            outcome.workKept = KeepWork();
            RemoveFolder(context_.workFolder);
            outcome.unfit = std::move(unfit_);
        }
        return outcome;
    }

  private:
    bool ExternMenu() const { return context_.settings.ExternMenuEnable; }
    bool ExternMenuIs(std::string_view extension) const {
        return ExternMenu() && HasExtension(context_.settings.ExternMenuPath, extension);
    }

    void MakeMenuItem() {
        const uint32_t units = context_.settings.MenuUnits(board_);
        menu_.SetPrgCount(units);
        menu_.SetPrgUnits(units);
        menu_.isMenu = 1;
    }

    // Whether the assembler is to run over a source of the user's, which leaves files beside it.
    bool AssemblesExternMenu() const { return ExternMenuIs("asm") && !context_.dryRun; }

    bool Build(FileResult<> prepared, BuildOutcome& outcome) {
        if (items_.empty()) {
            user_.Message(Text(TextId::kNoFilesSelected), Text(TextId::kTipsTitle),
                          MessageKind::kTips);
            return false;
        }
        if (!PrepareGames(board_) || !CheckScreen() || !CheckExternMenu() ||
            !AcceptsIncomplete(items_) || !OpenKeptCart()) {
            return false;
        }
        TellOfSaves(board_);
        if (prepared) prepared = MakeFolders(buildFolder_);
        if (!prepared) {
            ShowFileProblem(prepared.Problem());
            return false;
        }
        if (AssemblesExternMenu() && !AssembleExternMenu(context_.settings.MenuSize)) return false;
        outcome.layout = LayOut();
        if (const auto fault = CheckRomLimits(outcome.layout, board_, language_)) {
            outcome.overLimits = true;
            user_.TooMuch(fault->text, Text(TextId::kErrorTitle));
            return false;
        }
        if (!WriteGeneratedFiles(outcome) || !GetMenu()) return false;
        // The tables in the menu come from the first layout; this one has the real menu, and the
        // same places as long as the menu's size is what it was.
        outcome.layout = LayOut();
        if (!Passes(CheckConflicts(outcome.layout, language_))) return false;
        outcome.names = names_;
        return context_.dryRun || WriteOutput(outcome);
    }

    // True if none is to be kept.
    bool OpenKeptCart() {
        if (!context_.keepPlaces) return true;
        FileResult<KeptCart> cart = KeptCart::Open(*context_.keepPlaces);
        if (!cart) {
            ShowError(NoCartText(cart.Problem(), language_));
            return false;
        }
        if (cart->Board() != board_) {
            ShowError(FormatText(Text(TextId::kOldCartOfOtherBoard),
                                 VisibleText(PathText(*context_.keepPlaces)),
                                 BoardName(cart->Board()), BoardName(board_)));
            return false;
        }
        places_ = cart->PlacesFor(items_);
        keptCart_ = std::move(*cart);
        return true;
    }

    // With the places of the earlier cart, as long as all fits that way.
    LayoutResult LayOut() {
        if (places_) {
            LayoutResult layout = AllocateKeeping(menu_, items_, board_, *places_);
            if (!CheckRomLimits(layout, board_, language_) && !FindLayoutConflict(layout)) {
                return layout;
            }
            places_.reset();
            user_.Note(FormatText(Text(TextId::kPlacesNotKept),
                                  VisibleText(PathText(*context_.keepPlaces))));
        }
        return Allocate(menu_, items_, board_);
    }

    bool CheckScreen() const {
        return ExternMenu() ||
               (Passes(CheckScreenPlaces(context_.settings, context_.design, names_.size(),
                                         language_)) &&
                Passes(CheckScreenRows(context_.settings, context_.design.ItemPpuAddr,
                                       names_.size(), language_)));
    }

    bool WriteGeneratedFiles(BuildOutcome& outcome) {
        user_.Progress(BuildStage::kWriteTables, 0, 1, u"");
        const MenuTables tables{context_, names_, board_, menu_.prgCount, buildFolder_};
        // The screen goes first, as in an export: it sets the caption whose length the
        // configuration tells, and both roads then assemble to the same menu.
        WriteScreenFiles(tables);
        const FileResult<> written =
            WriteMenuTables(tables, outcome.layout, banks_, outcome.finalData);
        if (!written) {
            ShowFileProblem(written.Problem());
            return false;
        }
        DeleteFile(menuFolder_ / "menu.nes");
        return true;
    }

    // Before anything is made for it: no folder, no table.
    bool CheckExternMenu() const {
        if (!ExternMenu()) return true;
        const std::filesystem::path& path = context_.settings.ExternMenuPath;
        const FileResult<> regular = CheckRegularFile(path);
        const FileResult<File> file = File::OpenForReading(path);
        if (regular && file && (ExternMenuIs("asm") || ExternMenuIs("nes"))) return true;
        if (!file && file.Problem().kind == FileProblem::Kind::kNoPermission) {
            ShowFileProblem(file.Problem());
        } else {
            ShowError(FormatText(Text(TextId::kInvalidExternalMenu), VisibleText(PathText(path))));
        }
        return false;
    }

    bool GetMenu() {
        user_.Progress(BuildStage::kAssembleMenu, 0, 1, u"");
        if (ExternMenuIs("asm") && context_.dryRun) return true;
        return ReadMenu() && Passes(CheckMenu(menu_, language_)) && AcceptsIncomplete({&menu_, 1});
    }

    bool ReadMenu() {
        if (!ExternMenu()) {
            return Assemble(menuFolder_ / "menu.asm", menuFolder_) && NoteGames();
        }
        if (ExternMenuIs("asm")) return AssembleExternMenu(menu_.prgUnits);
        // One that is read and is no menu is the menu check's to tell.
        const std::filesystem::path& path = context_.settings.ExternMenuPath;
        const auto unread = menu_.Load(path) ? std::nullopt : WhyUnread(path);
        if (unread) ShowFileProblem(*unread);
        return !unread;
    }

    // Assembles a source and reads the ROM that it leaves beside itself. A ROM that isn't there
    // leaves the menu invalid, which the menu check tells.
    bool Assemble(const std::filesystem::path& source, const std::filesystem::path& folder) {
        const AssemblyOutcome assembly =
            RunAssembler(AssemblerPath(context_.workFolder), source, folder, language_);
        if (!assembly.done) {
            ShowError(assembly.output);
            return false;
        }
        std::filesystem::path rom = source;
        menu_.Load(rom.replace_extension(".nes"));
        return true;
    }

    // Puts what the tables don't tell of the games into unused bytes of the assembled menu, where
    // these are; a menu that doesn't check out is the menu check's to tell.
    bool NoteGames() {
        if (context_.menuOnly || menu_.valid == 0) return true;
        FileResult<std::vector<uint8_t>> bytes = ReadFile(menu_.path);
        if (!bytes || bytes->size() < kInesHeaderSize) return true;
        const std::span program = std::span(*bytes).subspan(kInesHeaderSize);
        if (!AddManifest(program, board_, ManifestOf(items_))) return true;
        const FileResult<> written = WriteScratchFile(menu_.path, std::span(std::as_const(*bytes)));
        if (!written) {
            ShowFileProblem(written.Problem());
            return false;
        }
        return menu_.Load(std::filesystem::path(menu_.path));
    }

    // A menu of the user's own is assembled against freshly exported tables in the folder "build"
    // beside it. An export that fails has told the user why; the assembler then meets what it
    // finds.
    bool AssembleExternMenu(uint32_t menuPrgUnits) {
        // Absolute, because the assembler runs in that folder.
        const std::filesystem::path source = FromCurrentFolder(context_.settings.ExternMenuPath);
        const std::filesystem::path folder = source.parent_path();
        std::filesystem::path build = folder / "build";
        if (const FileResult<> made = MakeFolders(build); !made) {
            ShowFileProblem(made.Problem());
            return false;
        }
        const ExportType type =
            board_ == BoardType::kCoolgirl ? ExportType::kCoolgirl : ExportType::kCoolboy;
        ExportInfo(context_, type, menuPrgUnits, build, false);
        return Assemble(source, folder);
    }

    bool WriteOutput(BuildOutcome& outcome) {
        const std::optional<OutputChoice> choice = user_.AskOutput(context_.settings.LastBuildDir);
        if (!choice) return false;
        context_.store.RegWriteString(kMainKey, setting::kLastBuildDir,
                                      PathText(choice->path.parent_path()));
        outcome.format = choice->format;
        outcome.output = WithFormatExtension(choice->path, choice->format);
        if (IsInput(outcome.output)) {
            ShowError(
                FormatText(Text(TextId::kOutputIsAnInput), VisibleText(PathText(outcome.output))));
            return false;
        }
        const FileResult<RomEnd> end = WriteRom(
            outcome.layout, board_, outcome.format, outcome.output,
            [this](size_t done, size_t total, const MulticartItem& item) {
                user_.Progress(BuildStage::kWriteRom, done, total, item.name);
                return !user_.Cancelled();
            },
            FinishOf(outcome));
        if (!end) {
            ShowFileProblem(end.Problem());
            return false;
        }
        if (*end == RomEnd::kStopped) return false;
        user_.Progress(BuildStage::kWriteRom, 1, 1, u"");
        AskToShow(outcome.output);
        return true;
    }

    RomFinish FinishOf(BuildOutcome& outcome) {
        if (!keptCart_) return {};
        return [this, &outcome](File& rom, uint64_t start, uint64_t bytes) -> FileResult<> {
            FileResult<SectorChanges> changes =
                keptCart_->FillGaps(outcome.layout, rom, start, bytes);
            keptCart_.reset();  // the new file may be about to take its place
            if (!changes) return changes.Problem();
            outcome.changes = std::move(*changes);
            return {};
        };
    }

    // Writing would replace a file that is still to be read.
    bool IsInput(const std::filesystem::path& output) const {
        if (!Exists(output)) return false;
        const auto same = [&](const std::filesystem::path& path) {
            return IsSameFile(output, path);
        };
        return same(menu_.path) || (ExternMenu() && same(context_.settings.ExternMenuPath)) ||
               std::any_of(items_.begin(), items_.end(),
                           [&](const MulticartItem& item) { return same(ContainerOf(item.path)); });
    }

    // True if it is done or not wanted.
    bool KeepWork() const {
        if (!context_.keepWork) return true;
        const FileResult<> kept = KeepFiles(menuFolder_, *context_.keepWork);
        if (!kept)
            ShowError(Text(TextId::kWorkFolderNotKept) + ProblemText(kept.Problem(), language_));
        return static_cast<bool>(kept);
    }

    BoardType board_;
    std::filesystem::path menuFolder_;
    std::filesystem::path buildFolder_;
    MulticartItem menu_;
    std::optional<KeptCart> keptCart_;
    std::optional<std::vector<KeptPlace>> places_;  // of it; nothing once they aren't to be kept
};

// Sets the flag for as long as it lives.
class BusyMark {
  public:
    explicit BusyMark(std::atomic<bool>& flag) : flag_(flag) { flag_ = true; }
    BusyMark(const BusyMark&) = delete;
    BusyMark& operator=(const BusyMark&) = delete;
    ~BusyMark() { flag_ = false; }

  private:
    std::atomic<bool>& flag_;
};

}  // namespace

std::optional<Diagnostic> CheckBuildStart(const GameList& games, bool taskBusy, Language language) {
    if (taskBusy) return Diagnostic{Severity::kWarning, LoadText(TextId::kTaskBusy, language)};
    if (CountChecked(games) > kCheckedLimit) {
        return Diagnostic{Severity::kWarning,
                          FormatText(LoadText(TextId::kTooManyGames, language), kCheckedLimit)};
    }
    return std::nullopt;
}

bool MayStartBuild(const GameList& games, const std::atomic<bool>& taskBusy, BuildUser& user) {
    const Language language = user.UiLanguage();
    const std::optional<Diagnostic> problem = CheckBuildStart(games, taskBusy, language);
    if (problem)
        user.Message(problem->text, LoadText(TextId::kWarnTitle, language), MessageKind::kWarning);
    return !problem;
}

BuildOutcome BuildRom(const BuildContext& context, BoardType board, std::atomic<bool>& taskBusy) {
    const BusyMark busy(taskBusy);
    return RomBuild(context, board).Run();
}

}  // namespace bw
