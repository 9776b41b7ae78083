#pragma once

#include <cstdlib>
#include <optional>

#include "platform/text/String.h"

namespace vintrace::test {

/// Sets an environment variable, or unsets it if `value` is null, while it lives.
class Environment {
 public:
  Environment(const char* name, const char* value) : name_(name) {
    if (const char* before = std::getenv(name)) before_ = before;
    Set(value);
  }
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;
  ~Environment() { Set(before_ ? before_->c_str() : nullptr); }

 private:
  void Set(const char* value) const {
    if (value == nullptr) {
      unsetenv(name_);
    } else {
      setenv(name_, value, 1);
    }
  }

  const char* name_;
  std::optional<String> before_;
};

}  // namespace vintrace::test
