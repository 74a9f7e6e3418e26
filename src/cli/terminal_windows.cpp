#include <atomic>
#include <csignal>
#include <cstdlib>

#include "cli/terminal.h"
#include "support/windows_api.h"

namespace bw {
namespace {

constexpr DWORD kLongestCleaning = 20000;  // ms; the system waits less for a console that closes

using Handler = void (*)(int);

std::atomic<Handler>& TheHandler() {
    static std::atomic<Handler> handler = nullptr;
    return handler;
}

// Runs on a thread of its own. When a console closes, or the user logs off, the system ends the
// program as soon as this returns: the command gets the time to clean up, and ends the program by
// itself.
BOOL WINAPI OnConsoleEvent(DWORD event) {
    const Handler handler = TheHandler();
    switch (event) {
        case CTRL_C_EVENT:
            handler(SIGINT);
            return TRUE;
        case CTRL_BREAK_EVENT:
            handler(SIGBREAK);
            return TRUE;
        default:
            handler(SIGTERM);
            Sleep(kLongestCleaning);
            return TRUE;
    }
}

}  // namespace

// A console that doesn't know the signs by which a line is written over counts as none. One that
// has them switched off gets them for as long as this program runs.
bool StandardErrorIsTerminal() {
    static const HANDLE console = GetStdHandle(STD_ERROR_HANDLE);
    static DWORD before = 0;
    DWORD now = 0;
    if (!GetConsoleMode(console, &now)) return false;
    if ((now & ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0) return true;
    before = now;
    if (!SetConsoleMode(console, now | ENABLE_VIRTUAL_TERMINAL_PROCESSING)) return false;
    std::atexit([] { SetConsoleMode(console, before); });
    return true;
}

// Whoever starts the program with Ctrl+C switched off gets it that way: the system keeps that
// switch apart from handlers.
void OnEndRequest(void (*handler)(int)) {
    TheHandler() = handler;
    SetConsoleCtrlHandler(OnConsoleEvent, TRUE);
}

}  // namespace bw
