// An environment variable that is set, or removed with a null value, until the end of a test.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>

class EnvironmentVariable {
  public:
    EnvironmentVariable(const char* name, const char* value) : name_(name) {
        if (const char* old = std::getenv(name)) old_ = old;
        Set(value);
    }
    EnvironmentVariable(EnvironmentVariable&&) = delete;
    ~EnvironmentVariable() { Set(old_ ? old_->c_str() : nullptr); }

  private:
    void Set(const char* value) { value == nullptr ? unsetenv(name_) : setenv(name_, value, 1); }

    const char* name_;
    std::optional<std::string> old_;
};
