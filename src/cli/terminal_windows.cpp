#include <io.h>
#include <stdio.h>

#include "cli/terminal.h"

namespace bw {

bool StandardErrorIsTerminal() {
    return _isatty(_fileno(stderr)) != 0;
}

}  // namespace bw
