#include "cli/commands.h"

#include "cli/build_command.h"
#include "cli/cart_commands.h"
#include "cli/check_command.h"
#include "cli/design_checking.h"
#include "cli/design_commands.h"
#include "cli/design_convert.h"
#include "cli/design_import.h"
#include "cli/design_render.h"
#include "cli/list_command.h"
#include "cli/play_command.h"

namespace bw {

int Execute(const Arguments& arguments) {
    switch (arguments.command) {
        case Command::kInfo:
            return TellOfImages(arguments);
        case Command::kList:
            return ListGames(arguments);
        case Command::kBuild:
            return Build(arguments);
        case Command::kExport:
            return ExportTables(arguments);
        case Command::kCheck:
            return Check(arguments);
        case Command::kDesignPack:
            return PackDesignFolder(arguments);
        case Command::kDesignUnpack:
            return UnpackDesignFile(arguments);
        case Command::kDesignRender:
            return RenderDesign(arguments);
        case Command::kDesignInfo:
            return DesignInfo(arguments);
        case Command::kDesignCheck:
            return CheckDesignFile(arguments);
        case Command::kDesignConvert:
            return ConvertDesign(arguments);
        case Command::kDesignImportPicture:
            return ImportPictureFile(arguments);
        case Command::kPlay:
            return PlayFile(arguments);
        case Command::kSplit:
            return SplitCartFile(arguments);
        case Command::kCompare:
            return CompareCartFiles(arguments);
    }
    return 1;
}

}  // namespace bw
