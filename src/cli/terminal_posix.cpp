#include <csignal>
#include <initializer_list>

#include <unistd.h>

#include "cli/terminal.h"

namespace bw {

bool StandardErrorIsTerminal() {
    return isatty(STDERR_FILENO) == 1;
}

void OnEndRequest(void (*handler)(int)) {
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        if (std::signal(number, handler) == SIG_IGN) std::signal(number, SIG_IGN);
    }
    std::signal(SIGPIPE, SIG_IGN);
}

}  // namespace bw
