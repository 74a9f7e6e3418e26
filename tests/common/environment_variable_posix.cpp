#include <cstdlib>

#include "common/environment_variable.h"

std::optional<std::string> EnvironmentVariable::Get(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

void EnvironmentVariable::Set(const char* name, const std::optional<std::string>& value) {
    value ? setenv(name, value->c_str(), 1) : unsetenv(name);
}
