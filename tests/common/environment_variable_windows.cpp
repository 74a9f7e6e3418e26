#include <cstdlib>

#include "common/environment_variable.h"
#include "support/windows_path.h"

std::optional<std::wstring> EnvironmentVariable::Get(const char* name) {
    const wchar_t* value = _wgetenv(bw::WideOf(name).c_str());
    return value == nullptr ? std::nullopt : std::optional<std::wstring>(value);
}

// By the C runtime, which tells the system too.
void EnvironmentVariable::Set(const char* name, const std::optional<std::wstring>& value) {
    _wputenv((bw::WideOf(name) + L"=" + value.value_or(L"")).c_str());
}
