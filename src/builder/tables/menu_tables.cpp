#include "builder/tables/menu_tables.h"

#include "builder/tables/design_compile.h"
#include "builder/tables/game_data.h"
#include "builder/tables/menu_config.h"
#include "builder/tables/name_tables.h"
#include "language/problem_text.h"
#include "settings/setting_names.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr uint32_t kDefaultNameColumn = 6;
constexpr uint32_t kColumnMask = 31;

uint8_t ReadBigCursor(const SettingsStore& store) {
    uint8_t value = 0;
    size_t size = sizeof value;
    return store.RegReadBinary(kDesignKey, setting::kBigCursor, &value, size) ? value : uint8_t{0};
}

void TellIfUnwritten(const MenuTables& tables, const FileResult<>& written) {
    if (!written) TellUnwritten(tables.context.user, written.Problem());
}

}  // namespace

uint32_t NameColumn(const BuildSettings& settings, const DesignStore& design) {
    return settings.CustomEnable ? design.ItemPpuAddr & kColumnMask : kDefaultNameColumn;
}

BankLimits CountTableBanks(const std::vector<std::u16string>& names, BoardType board,
                           uint32_t nameColumn, const std::filesystem::path& folder) {
    const TableWriteOptions countOnly{.write = false, .keep = false};
    BankLimits banks{};
    GenerateNameTables(names, folder,
                       {.nameColumn = nameColumn, .removalPattern = {}, .files = countOnly},
                       banks.names);
    GenerateGameData(std::vector<MulticartItem>(names.size()), folder, countOnly, banks.data);
    GenerateFinalData(std::vector<FinalDataRecord>(names.size()), folder, board, countOnly,
                      banks.finalData);
    return banks;
}

FileResult<> WriteMenuTables(const MenuTables& tables, const LayoutResult& layout,
                             const BankLimits& banks, std::vector<FinalDataRecord>& finalData) {
    const BuildContext& context = tables.context;
    const TableWriteOptions write;
    uint32_t unused = 0;
    TellIfUnwritten(tables,
                    GenerateNameTables(tables.names, tables.folder,
                                       {.nameColumn = NameColumn(context.settings, context.design),
                                        .removalPattern = {},
                                        .files = write},
                                       unused));
    TellIfUnwritten(tables, GenerateGameData(layout.items, tables.folder, write, unused));
    finalData = MakeFinalData(layout.items, tables.board);
    TellIfUnwritten(tables,
                    GenerateFinalData(finalData, tables.folder, tables.board, write, unused));
    const MenuConfig config{.board = tables.board,
                            .menuPrgUnits = tables.menuPrgUnits,
                            .nameBanks = banks.names,
                            .dataBanks = banks.data,
                            .finalDataBanks = banks.finalData,
                            .games = static_cast<uint32_t>(tables.names.size()),
                            .BigCursor = ReadBigCursor(context.store)};
    return WriteMenuConfig(config, context.settings, context.design, tables.folder);
}

void WriteScreenFiles(const MenuTables& tables) {
    const BuildContext& context = tables.context;
    std::u16string caption;
    const bool stored = context.store.RegReadString(kDesignKey, setting::kCaptionText, caption);
    TellIfUnwritten(tables, WriteDesignFiles(context.design, CountChecked(context.games),
                                             stored ? std::optional(caption) : std::nullopt,
                                             tables.folder, context.settings.CustomEnable));
}

void TellUnwritten(BuildUser& user, const FileProblem& problem) {
    user.Diagnostic("open file failed! " + ToUtf8(ProblemText(problem, user.UiLanguage())));
}

}  // namespace bw
