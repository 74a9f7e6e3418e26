#include "cli/design_commands.h"

#include "cli/inputs.h"
#include "cli/terminal_user.h"
#include "designer/files/design_folder.h"
#include "support/paths.h"

namespace bw {

int PackDesignFolder(const Arguments& arguments) {
    const Language language = SystemLanguage();
    std::filesystem::path file = FromCurrentFolder(arguments.output);
    if (!HasExtension(file, "fcm")) file += ".fcm";
    std::vector<uint8_t> bytes;
    DesignProblem problem = PackDesign(FromCurrentFolder(arguments.folder), bytes, language);
    if (!problem) problem = SaveDesign(file, bytes, language);
    return TellProblem(problem, language);
}

int UnpackDesignFile(const Arguments& arguments) {
    const Language language = SystemLanguage();
    return TellProblem(UnpackDesign(FromCurrentFolder(arguments.design),
                                    FromCurrentFolder(arguments.folder), language),
                       language);
}

}  // namespace bw
