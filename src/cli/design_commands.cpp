#include "cli/design_commands.h"

#include "cli/inputs.h"
#include "cli/terminal_user.h"
#include "cli/written_files.h"
#include "designer/files/design_folder.h"
#include "support/paths.h"

namespace bw {

int PackDesignFolder(const Arguments& arguments) {
    const Language language = SystemLanguage();
    TerminalUser user(arguments, language);
    const std::filesystem::path file = DesignFileOf(arguments);
    std::vector<uint8_t> bytes;
    DesignProblem problem = PackDesign(FromCurrentFolder(arguments.folder), bytes, language);
    if (!problem) problem = SaveDesign(file, bytes, language);
    if (!problem) user.NoteWritten(file);
    return TellProblem(user, problem);
}

int UnpackDesignFile(const Arguments& arguments) {
    const Language language = SystemLanguage();
    TerminalUser user(arguments, language);
    const std::filesystem::path folder = FromCurrentFolder(arguments.folder);
    const DesignProblem problem =
        UnpackDesign(FromCurrentFolder(arguments.design), folder, language);
    if (!problem) user.NoteWritten(folder / "design.txt");
    return TellProblem(user, problem);
}

}  // namespace bw
