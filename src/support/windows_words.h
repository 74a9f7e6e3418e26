// The command line of another program. Inline, for tests too, which link nothing of this folder.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "support/windows_path.h"

namespace bw {

// One word as the C runtime of the child takes command lines apart: backslashes count only in
// front of a quote ("Parsing C command-line arguments", Microsoft Learn).
inline std::wstring QuotedWord(std::wstring_view word) {
    std::wstring quoted = L"\"";
    size_t backslashes = 0;
    for (const wchar_t unit : word) {
        if (unit == L'"') quoted.append(backslashes + 1, L'\\');
        backslashes = unit == L'\\' ? backslashes + 1 : 0;
        quoted += unit;
    }
    return quoted.append(backslashes, L'\\') + L'"';
}

// The arguments are UTF-8.
inline std::wstring CommandLine(std::wstring_view program,
                                const std::vector<std::string>& arguments) {
    std::wstring line = QuotedWord(program);
    for (const std::string& argument : arguments)
        line += L" " + QuotedWord(WideOf(argument));
    return line;
}

}  // namespace bw
