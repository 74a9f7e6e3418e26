#include <utility>

#include "builder/build_base.h"
#include "builder/build_driver.h"
#include "builder/tables/menu_tables.h"
#include "builder/tables/reports.h"
#include "settings/setting_names.h"
#include "support/text.h"

namespace bw {
namespace {

class Export : BuildBase {
  public:
    Export(const BuildContext& context, ExportType type, uint32_t menuPrgUnits)
        : BuildBase(context),
          board_(type == ExportType::kCoolgirl ? BoardType::kCoolgirl : BoardType::kCoolboy),
          menuPrgUnits_(menuPrgUnits) {}

    bool Run(std::filesystem::path& folder, bool ask) {
        if (!ReadGames(NameRules::kDesignerAndExport)) return false;
        if (!folder.empty()) {
            const FileResult<> report = WriteNameReport(names_, folder);
            if (!report) TellUnwritten(user_, report.Problem());
        }
        if (!PrepareGames(board_) || (ask && !AcceptsIncomplete(items_))) return false;
        MulticartItem menu;
        menu.SetPrgCount(menuPrgUnits_);
        menu.SetPrgUnits(menuPrgUnits_);
        LoadDesign();
        // Counting keeps the indexes of its folder in step. Before the first export there is none,
        // and the current folder is not meant.
        if (!CountBanks(board_, menuPrgUnits_, folder.empty() ? context_.workFolder : folder)) {
            return false;
        }
        if (ask) {
            const std::optional<std::filesystem::path> chosen = user_.AskFolder(folder);
            if (!chosen) return false;
            folder = *chosen;
        }
        const LayoutResult layout = Allocate(menu, items_, board_);
        const MenuTables tables{context_, names_, board_, menuPrgUnits_, folder};
        user_.Progress(BuildStage::kWriteTables, 0, 1, u"");
        WriteScreenFiles(tables);
        std::vector<FinalDataRecord> unused;
        const FileResult<> written = WriteMenuTables(tables, layout, banks_, unused);
        if (!written) ShowFileProblem(written.Problem());
        return static_cast<bool>(written);
    }

  private:
    BoardType board_;
    uint32_t menuPrgUnits_;
};

}  // namespace

bool ExportInfo(const BuildContext& context, ExportType type, uint32_t menuPrgUnits,
                std::filesystem::path& folder, bool ask) {
    return Export(context, type, menuPrgUnits).Run(folder, ask);
}

bool IsExportedName(std::u16string_view name) {
    return name.starts_with(u"game_") || name == u"custom_chr_data.bin" ||
           name == u"char_mapping.bin";
}

bool RunExport(const BuildContext& context) {
    std::filesystem::path folder = context.settings.LastExportDir;
    const auto type = static_cast<ExportType>(context.settings.ExportRomType != 0 ? 1 : 0);
    if (!ExportInfo(context, type, context.settings.ExportMenuUnits(), folder, true)) return false;
    context.store.RegWriteString(kMainKey, setting::kLastExportDir, PathText(folder));
    const Language language = context.user.UiLanguage();
    if (context.user.AskYesNo(LoadText(TextId::kDoneOpenFolder, language),
                              LoadText(TextId::kTipsTitle, language))) {
        context.user.ShowInFileManager(folder);
    }
    return true;
}

}  // namespace bw
