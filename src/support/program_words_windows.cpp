#include <cstdio>
#include <cstdlib>

#include <fcntl.h>
#include <io.h>

#include "support/program_words.h"
#include "support/windows_api.h"
// It needs what windows.h declares.
#include <shellapi.h>

namespace bw {
namespace {

std::string Utf8Of(const wchar_t* wide) {
    // A unit of half a pair becomes U+FFFD.
    const int size = WideCharToMultiByte(CP_UTF8, 0, wide, -1, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide, -1, utf8.data(), size, nullptr, nullptr);
    utf8.resize(utf8.empty() ? 0 : utf8.size() - 1);  // the closing zero
    return utf8;
}

// What a program prints is the same bytes on every system, line ends too.
void PrintAsItIs() {
    for (std::FILE* stream : {stdout, stderr}) {
        // A program with windows has none unless they were sent somewhere.
        if (const int number = _fileno(stream); number >= 0) _setmode(number, _O_BINARY);
    }
}

// The console belongs to whoever uses it after this program, too.
void PrintUtf8() {
    static const UINT before = GetConsoleOutputCP();
    if (before == 0 || before == CP_UTF8) return;  // no console, or nothing to do
    SetConsoleOutputCP(CP_UTF8);
    std::atexit([] { SetConsoleOutputCP(before); });
}

}  // namespace

std::vector<std::string> ProgramWords(int, char**) {
    PrintAsItIs();
    PrintUtf8();
    int count = 0;
    wchar_t** values = CommandLineToArgvW(GetCommandLineW(), &count);
    if (values == nullptr) return {};
    std::vector<std::string> words;
    for (int i = 1; i < count; ++i)
        words.push_back(Utf8Of(values[i]));
    LocalFree(values);
    return words;
}

}  // namespace bw
