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
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;
    ~EnvironmentVariable() { Set(old_ ? old_->c_str() : nullptr); }

  private:
    void Set(const char* value) {
        if (value == nullptr) {
            unsetenv(name_);
        } else {
            setenv(name_, value, 1);
        }
    }

    const char* name_;
    std::optional<std::string> old_;
};
