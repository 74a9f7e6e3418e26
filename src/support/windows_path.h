// Paths as the calls of Windows take them. Inline, for the assembler too, which links nothing else.
#pragma once

#include <string>
#include <string_view>

#include "support/windows_api.h"

namespace bw {

inline std::wstring WideOf(std::string_view utf8) {
    const auto size = static_cast<int>(utf8.size());
    std::wstring wide(
        static_cast<size_t>(MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, nullptr, 0)), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, wide.data(), static_cast<int>(wide.size()));
    return wide;
}

// A path that is too long for the calls as it stands (260 units with what they add) in the form
// that has no such limit ("Maximum Path Length Limitation", Microsoft Learn); every other one as it
// is.
inline std::wstring CallPath(std::wstring_view path) {
    constexpr size_t kSafeLength = 240;  // a folder's limit is 12 units below a file's
    std::wstring given(path);
    if (given.starts_with(LR"(\\?\)") || given.starts_with(LR"(\\.\)")) return given;
    // The length that counts is that of the absolute path; the limit isn't this call's.
    const DWORD needed = GetFullPathNameW(given.c_str(), 0, nullptr, nullptr);
    if (needed < kSafeLength) return given;
    std::wstring full(needed, L'\0');
    full.resize(GetFullPathNameW(given.c_str(), needed, full.data(), nullptr));
    if (full.empty()) return given;
    if (full.starts_with(LR"(\\)")) return LR"(\\?\UNC)" + full.substr(1);
    return LR"(\\?\)" + full;
}

}  // namespace bw
