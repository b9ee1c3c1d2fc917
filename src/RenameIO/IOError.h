// Errors of the file system layer, as values. Nothing in this layer throws across its edge.
#pragma once

#include <filesystem>
#include <string>
#include <utility>
#include <variant>

namespace tessane {

// What failed, as a kind and its data; the application's message layer makes the sentence
// ("Couldn’t open “/photos/card”: No such file or directory").
struct IOError {
  // What the layer was doing.
  enum class Operation {
    open,
    create,
    createFolder,
    openFolder,
    readFolder,
    write,
    flush,
    replace,
    rename,
    remove,
    lock,
    find,
    readPreset,
    savePreset,
    deletePreset,
  };

  int code = 0;  // the errno value the system gave
  Operation operation = Operation::open;
  std::filesystem::path path;  // what it failed on

  static IOError fromErrno(int code, Operation operation, std::filesystem::path path) {
    return IOError{code, operation, std::move(path)};
  }
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
