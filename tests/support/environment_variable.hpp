// An environment variable that a test sets or removes, and that is as it was when the test ends.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

namespace halcyra {

class EnvironmentVariable {
 public:
  // Without a value the variable is removed.
  EnvironmentVariable(std::string name, const std::optional<std::string>& value)
      : name_(std::move(name)) {
    if (const char* before = std::getenv(name_.c_str())) before_ = before;
    assign(value);
  }
  EnvironmentVariable(const EnvironmentVariable&) = delete;
  EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;
  ~EnvironmentVariable() { assign(before_); }

 private:
  void assign(const std::optional<std::string>& value) const {
    if (value) {
      setenv(name_.c_str(), value->c_str(), 1);
    } else {
      unsetenv(name_.c_str());
    }
  }

  std::string name_;
  std::optional<std::string> before_;
};

}  // namespace halcyra
