#include <csignal>
#include <initializer_list>

#include <io.h>
#include <stdio.h>

#include "cli/terminal.h"

namespace bw {

bool StandardErrorIsTerminal() {
    return _isatty(_fileno(stderr)) != 0;
}

void OnEndRequest(void (*handler)(int)) {
    for (const int number : {SIGINT, SIGTERM, SIGBREAK})
        std::signal(number, handler);
}

}  // namespace bw
