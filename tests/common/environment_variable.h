// An environment variable that is set, or removed with a null value, until the end of a test.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

class EnvironmentVariable {
  public:
    // Windows takes an empty value for none.
    EnvironmentVariable(const char* name, const char* value);
    EnvironmentVariable(const char* name, const std::filesystem::path& value);
    EnvironmentVariable(EnvironmentVariable&&) = delete;
    ~EnvironmentVariable();

  private:
    // The system's own form, so that any path can be a value.
    using Value = std::filesystem::path::string_type;
    static std::optional<Value> Get(const char* name);
    static void Set(const char* name, const std::optional<Value>& value);

    const char* name_;
    std::optional<Value> old_;
};
