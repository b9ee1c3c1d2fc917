// Errors of the file system layer, as values. Nothing in this layer throws across its edge.
#pragma once

#include <filesystem>
#include <string>
#include <utility>
#include <variant>

namespace tessane {

struct IOError {
  int code = 0;                // the errno value the system gave
  std::string operation;       // the call that failed ("open", "read folder", ...)
  std::filesystem::path path;  // what it failed on

  static IOError fromErrno(int code, std::string operation, std::filesystem::path path) {
    return IOError{code, std::move(operation), std::move(path)};
  }
  // "Couldn't open “/photos/card”: No such file or directory".
  std::string message() const;
};

// A value or the error that prevented it (an IOError unless the operation has errors of its own).
template <typename T, typename E = IOError>
class Result {
 public:
  Result(T value) : v_(std::move(value)) {}  // NOLINT: implicit by design
  Result(E error) : v_(std::move(error)) {}  // NOLINT: implicit by design

  bool ok() const noexcept { return v_.index() == 0; }
  explicit operator bool() const noexcept { return ok(); }

  T& value() & { return std::get<0>(v_); }
  const T& value() const& { return std::get<0>(v_); }
  T&& value() && { return std::get<0>(std::move(v_)); }
  const E& error() const { return std::get<1>(v_); }

 private:
  std::variant<T, E> v_;
};

}  // namespace tessane
