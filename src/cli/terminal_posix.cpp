#include <unistd.h>

#include "cli/terminal.h"

namespace bw {

bool StandardErrorIsTerminal() {
    return isatty(STDERR_FILENO) == 1;
}

}  // namespace bw
