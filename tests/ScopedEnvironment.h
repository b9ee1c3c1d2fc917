// Environment variables set for a test's length, each given back as it was afterwards.
#pragma once

#include <stdlib.h>

#include <map>
#include <optional>
#include <string>

namespace tessane::testing {

class ScopedEnvironment {
 public:
  ScopedEnvironment() = default;
  ScopedEnvironment(const ScopedEnvironment&) = delete;
  ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;
  ~ScopedEnvironment() {
    for (const auto& [name, value] : saved_) {
      if (value) {
        ::setenv(name.c_str(), value->c_str(), 1);
      } else {
        ::unsetenv(name.c_str());
      }
    }
  }

  void set(const std::string& name, const std::string& value) {
    if (saved_.count(name) == 0) {
      const char* old = ::getenv(name.c_str());
      saved_[name] = old ? std::optional<std::string>(old) : std::nullopt;
    }
    ::setenv(name.c_str(), value.c_str(), 1);
  }

 private:
  std::map<std::string, std::optional<std::string>> saved_;
};

}  // namespace tessane::testing
