#include "cli/making_command.h"

#include <vector>

#include "builder/layout/build_checks.h"
#include "builder/resources.h"
#include "builder/tables/design_compile.h"
#include "builder/tables/menu_tables.h"
#include "cli/unsupported_games.h"
#include "designer/files/design_file.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {

bool MakingCommand::LoadScreen() {
    if (arguments_.design.empty()) return true;
    DesignDocument document;
    LoadDesignData(document.store, *store_, DefaultTileSet());
    document.store.CaptionText = MulticartTitle(CountChecked(Games()));
    const std::filesystem::path file = FromCurrentFolder(arguments_.design);
    if (const DesignProblem problem = OpenDesign(file, document, language_)) {
        user_.Error(FullText(*problem));
        return false;
    }
    StoreDesign(document, *store_);
    design_ = document.store;
    std::optional<Diagnostic> misplaced =
        CheckScreenPlaces(arguments_.settings, design_, CountChecked(Games()), language_);
    if (misplaced) {
        misplaced->place.file = VisibleText(PathText(file));
        user_.Error(FullText(*misplaced));
        return false;
    }
    TellWhatLooksDifferent(document);
    return !user_.Refused();
}

bool MakingCommand::NamesGames() {
    return Renamed({arguments_.settings.Numbers(), NameColumn(arguments_.settings, design_)});
}

bool MakingCommand::UsesAllOptions() {
    const BuildSettings& settings = arguments_.settings;
    const bool unused = arguments_.board == BoardType::kCoolgirl &&
                        settings.MenuSize != BuildSettings().MenuSize && !settings.ExternMenuEnable;
    return !unused || user_.Warn(Text(TextId::kMenuSizeUnused));
}

BuildContext MakingCommand::Context() {
    return {.games = Games(),
            .settings = arguments_.settings,
            .store = *store_,
            .design = design_,
            .user = user_,
            .workFolder = WorkFolder(),
            .keepWork = arguments_.keepWork,
            .dryRun = arguments_.dryRun,
            .keepPlaces = arguments_.keepPlaces};
}

void MakingCommand::TellWayOut() {
    const std::u16string text = WayOut(Games(), arguments_.board, language_);
    if (!text.empty() && !user_.Cancelled()) user_.Note(text);
}

void MakingCommand::TellWhatLooksDifferent(const DesignDocument& document) {
    std::vector<Pos> places{document.CaptionPos, document.ItemPos};
    if (arguments_.settings.PageNumber) places.push_back(document.PageNumberPos);
    for (const Pos& place : places) {
        const Pos shown = ConsoleCell(place);
        if (shown != place) {
            user_.Warn(
                FormatText(Text(TextId::kPlaceShownElsewhere), place.X, place.Y, shown.X, shown.Y));
        }
    }
    const size_t shown = SpritesShown(document.BigCursor != 0);
    if (document.store.SpriteTileList.size() > shown) {
        user_.Warn(
            FormatText(Text(TextId::kSpritesLeftOut), document.store.SpriteTileList.size(), shown));
    }
}

}  // namespace bw
