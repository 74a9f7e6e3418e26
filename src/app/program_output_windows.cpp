#include "app/program_output.h"
#include "support/debug_output.h"
#include "support/windows_api.h"
#include "support/windows_path.h"

namespace bw {
namespace {

// Where the output was sent to a file or to another program; with a plain console there is nothing.
bool WriteRedirected(std::string_view text, bool problem) {
    const HANDLE out = GetStdHandle(problem ? STD_ERROR_HANDLE : STD_OUTPUT_HANDLE);
    const DWORD kind = GetFileType(out);
    if (kind != FILE_TYPE_DISK && kind != FILE_TYPE_PIPE) return false;
    DWORD written = 0;
    return WriteFile(out, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) != 0;
}

bool WriteToParentsConsole(const std::wstring& text) {
    if (AttachConsole(ATTACH_PARENT_PROCESS) == 0) return false;
    const HANDLE console =
        CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                    nullptr, OPEN_EXISTING, 0, nullptr);
    DWORD written = 0;
    const bool success = console != INVALID_HANDLE_VALUE &&
                         WriteConsoleW(console, text.data(), static_cast<DWORD>(text.size()),
                                       &written, nullptr) != 0;
    if (console != INVALID_HANDLE_VALUE) CloseHandle(console);
    FreeConsole();
    return success;
}

}  // namespace

void Answer(std::string_view text, bool problem) {
    if (WriteRedirected(text, problem)) return;
    const std::wstring wide = WideOf(text);
    // The shell has written its next prompt already: it doesn't wait for programs with windows.
    if (WriteToParentsConsole(L"\r\n" + wide)) return;
    MessageBoxW(nullptr, wide.c_str(), L"Bankweaver",
                problem ? MB_OK | MB_ICONERROR : MB_OK | MB_ICONINFORMATION);
}

void NoteProblem(std::string_view line) {
    const std::string text = std::string(line) + "\n";
    if (!WriteRedirected(text, true)) WriteDebugOutput(text);
}

std::string NoWindowText(std::string_view reason) {
    return "Bankweaver can't open a window here: " + std::string(reason) +
           "\nbankweaver-cli needs none.\n";
}

}  // namespace bw
