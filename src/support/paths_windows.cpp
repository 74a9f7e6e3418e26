// The parts of paths.h and text.h that Windows answers in its own way.
#include <algorithm>
#include <cstdlib>
#include <string>

#include "support/paths.h"
#include "support/text.h"
#include "support/windows_api.h"
// They need what windows.h declares.
#include <knownfolders.h>
#include <shlobj.h>

namespace bw {
namespace {

namespace fs = std::filesystem;

fs::path LocalDataFolder() {
    wchar_t* text = nullptr;
    fs::path folder;
    if (SUCCEEDED(SHGetKnownFolderPath(FOLDERID_LocalAppData, 0, nullptr, &text))) folder = text;
    CoTaskMemFree(text);
    return folder;
}

// `standard` is where the folder lies if BANKWEAVER_HOME doesn't move it to its `own` one.
fs::path UserFolder(const char* own, const fs::path& standard) {
    const wchar_t* moved = _wgetenv(L"BANKWEAVER_HOME");
    if (moved == nullptr || *moved == L'\0') return standard;
    return FromCurrentFolder(moved) / own;
}

// A drive ("C:") or a share, and what is behind it.
struct RootAndRest {
    std::wstring root;
    std::wstring rest;

    explicit RootAndRest(const fs::path& path) : rest(fs::path(path).make_preferred().native()) {
        const size_t share = rest.starts_with(LR"(\\)") ? rest.find(L'\\', 2) : rest.npos;
        size_t size = rest.size() > 1 && rest[1] == L':' ? 2 : 0;
        if (share != rest.npos && share > 2)
            size = std::min(rest.find(L'\\', share + 1), rest.size());
        root = rest.substr(0, size);
        rest.erase(0, size);
    }
    bool IsShare() const { return root.starts_with(L'\\'); }
    bool FromTop() const { return IsShare() || rest.starts_with(L'\\'); }
    bool IsAbsolute() const { return !root.empty() && FromTop(); }
};

std::u16string Folded(const fs::path& path) {
    return FoldCase(PathText(path));
}

}  // namespace

bool IsAbsolutePath(const fs::path& path) {
    return RootAndRest(path).IsAbsolute();
}

fs::path NormalPath(const fs::path& path) {
    const RootAndRest parts(path);
    return parts.root + fs::path(parts.rest).lexically_normal().native();
}

// The system knows the folder that is current on each drive.
fs::path FromCurrentFolder(const fs::path& path) {
    if (path.empty() || IsAbsolutePath(path)) return path;
    const DWORD size = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    std::wstring full(size, L'\0');
    full.resize(GetFullPathNameW(path.c_str(), size, full.data(), nullptr));
    return full.empty() ? path : fs::path(full);
}

fs::path AbsolutePath(const fs::path& path, const fs::path& base) {
    const RootAndRest own(path);
    const RootAndRest bases(base);
    if (own.IsAbsolute()) return NormalPath(path);
    if (own.FromTop()) return NormalPath(bases.root + own.rest);
    if (own.root.empty()) return NormalPath(base / path);
    // "C:name": in a folder of that drive.
    if (Folded(own.root) == Folded(bases.root)) return NormalPath(base / own.rest);
    return NormalPath(FromCurrentFolder(path));
}

fs::path RelativePath(const fs::path& path, const fs::path& base) {
    const RootAndRest to(NormalPath(path));
    const RootAndRest from(NormalPath(base));
    if (Folded(to.root) != Folded(from.root) || to.FromTop() != from.FromTop()) return path;
    const fs::path target(to.rest);
    const fs::path start(from.rest);
    auto next = target.begin();
    auto left = start.begin();
    while (next != target.end() && left != start.end() && Folded(*next) == Folded(*left)) {
        ++next;
        ++left;
    }
    fs::path relative;
    for (; left != start.end(); ++left) {
        if (*left == L"..") return path;
        if (!left->empty() && *left != L".") relative /= L"..";
    }
    for (; next != target.end(); ++next)
        relative /= *next;
    return relative.empty() ? fs::path(L".") : relative;
}

fs::path ExecutablePath() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

fs::path UserConfigFolder() {
    return UserFolder("config", LocalDataFolder() / "Bankweaver");
}

fs::path UserDataFolder() {
    return UserFolder("data", LocalDataFolder() / "Bankweaver" / "Data");
}

fs::path UserScratchFolder() {
    return UserFolder("scratch", LocalDataFolder());
}

fs::path WorkFolder() {
    return UserScratchFolder() / "Temp" / "Bankweaver" / std::to_string(GetCurrentProcessId());
}

std::u16string PathText(const fs::path& path) {
    return {path.native().begin(), path.native().end()};
}

fs::path TextPath(std::u16string_view text) {
    return std::wstring(text.begin(), text.end());
}

}  // namespace bw
