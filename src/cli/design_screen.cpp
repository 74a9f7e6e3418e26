#include "cli/design_screen.h"

#include "builder/resources.h"
#include "designer/tools/text_tools.h"

namespace bw {

DesignProblem OpenScreen(const Arguments& arguments, const GatheredGames& gathered, NameRules rules,
                         Language language, WorkingCopy& copy) {
    const BuildSettings& settings = arguments.settings;
    const auto names = DisplayNames(gathered.games, settings.Numbers(), rules);
    LoadDesignData(copy.Store(), *MakeMemoryStore(), DefaultTileSet());
    copy.Store().CaptionText = MulticartTitle(names.size());
    SetItems(copy, names, static_cast<int32_t>(settings.PageSize), settings.NameInsertRow);
    copy.ShowPageNumber = settings.PageNumber;
    return OpenDesign(FromCurrentFolder(arguments.design), copy.document, language);
}

}  // namespace bw
