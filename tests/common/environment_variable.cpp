#include "common/environment_variable.h"

EnvironmentVariable::EnvironmentVariable(const char* name, const char* value)
    : name_(name), old_(Get(name)) {
    Set(name,
        value == nullptr ? std::nullopt : std::optional(std::filesystem::path(value).native()));
}

EnvironmentVariable::EnvironmentVariable(const char* name, const std::filesystem::path& value)
    : name_(name), old_(Get(name)) {
    Set(name, value.native());
}

EnvironmentVariable::~EnvironmentVariable() {
    Set(name_, old_);
}
