#include <cstdio>

#include "app/program_output.h"

namespace bw {

void Answer(std::string_view text, bool problem) {
    std::fwrite(text.data(), 1, text.size(), problem ? stderr : stdout);
}

void NoteProblem(std::string_view line) {
    Answer(std::string(line) + "\n", true);
}

// Qt's own last words tell to install it again.
std::string NoWindowText(std::string_view) {
    return "Bankweaver found no display that it can open. Start it inside a desktop session (the\n"
           "variable DISPLAY or WAYLAND_DISPLAY names its display; Wayland needs the package\n"
           "qt6-wayland), or use bankweaver-cli, which needs none.\n";
}

}  // namespace bw
