// Below HKEY_CURRENT_USER\Software\Classes, which needs no rights ("How to Register a File Type for
// a New Application", Microsoft Learn).
#include <string>

#include "shell/main/file_types.h"
#include "support/paths.h"
#include "support/windows_api.h"
// It needs what windows.h declares.
#include <shlobj.h>
#include <shlwapi.h>

namespace bw {
namespace {

const std::wstring kExtension = LR"(Software\Classes\.fcl)";
const std::wstring kChoices = kExtension + LR"(\OpenWithProgids)";
const std::wstring kTypeName = L"Bankweaver.List";
const std::wstring kType = LR"(Software\Classes\)" + kTypeName;
const std::wstring kCommand = kType + LR"(\shell\open\command)";

// An empty name is that of the key's own value.
bool Set(const std::wstring& key, const std::wstring& name, const std::wstring& text) {
    return RegSetKeyValueW(HKEY_CURRENT_USER, key.c_str(), name.c_str(), REG_SZ, text.c_str(),
                           static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))) ==
           ERROR_SUCCESS;
}

std::wstring OwnValue(const std::wstring& key) {
    DWORD size = 0;
    const auto get = [&](wchar_t* text) {
        return RegGetValueW(HKEY_CURRENT_USER, key.c_str(), L"", RRF_RT_REG_SZ, nullptr, text,
                            &size) == ERROR_SUCCESS;
    };
    if (!get(nullptr)) return {};
    std::wstring text(size / sizeof(wchar_t), L'\0');
    return get(text.data()) ? std::wstring(text.c_str()) : std::wstring();
}

std::wstring Command() {
    return L'"' + ExecutablePath().native() + LR"(" "%1")";
}

bool Register(Language language) {
    const std::u16string name = LoadText(TextId::kListFileType, language);
    const bool success =
        Set(kType, L"", std::wstring(name.begin(), name.end())) &&
        // The second icon of the program's file.
        Set(kType + LR"(\DefaultIcon)", L"", L'"' + ExecutablePath().native() + L"\",1") &&
        Set(kCommand, L"", Command()) && Set(kChoices, kTypeName, L"");
    // Another program's lists of this name go on opening with it; ours is one of its choices then.
    const std::wstring taken = OwnValue(kExtension);
    return success && (!taken.empty() || Set(kExtension, L"", kTypeName));
}

bool Forget() {
    RegDeleteKeyValueW(HKEY_CURRENT_USER, kChoices.c_str(), kTypeName.c_str());
    if (OwnValue(kExtension) == kTypeName)
        RegDeleteKeyValueW(HKEY_CURRENT_USER, kExtension.c_str(), L"");
    // Whatever another program has there stays.
    SHDeleteEmptyKeyW(HKEY_CURRENT_USER, kChoices.c_str());
    SHDeleteEmptyKeyW(HKEY_CURRENT_USER, kExtension.c_str());
    return RegDeleteTreeW(HKEY_CURRENT_USER, kType.c_str()) == ERROR_SUCCESS;
}

}  // namespace

std::optional<bool> ListsOpenHere() {
    return OwnValue(kCommand) == Command();
}

bool SetListsOpenHere(bool here, Language language) {
    const bool success = here ? Register(language) : Forget();
    SHChangeNotify(SHCNE_ASSOCCHANGED, SHCNF_IDLIST, nullptr, nullptr);
    return success;
}

}  // namespace bw
