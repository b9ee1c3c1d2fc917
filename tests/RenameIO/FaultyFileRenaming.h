// A forwarding SystemFileRenaming that fails chosen calls of the one it wraps: the k-th call of an
// operation (counting from 1 since construction), or every call from the k-th on, as if the
// process had stopped or the card had been pulled there. A failed call reaches nothing below:
// moveItem fails with the chosen errno and changes nothing, fileExists and identity answer
// "couldn't tell" with it, list answers nothing. Everything else is forwarded as it is.
// Not thread-safe.
#pragma once

#include <array>
#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <vector>

#include "RenameIO/SystemFileRenaming.h"

namespace tessane::testing {

class FaultyFileRenaming final : public SystemFileRenaming {
 public:
  enum class Call : unsigned char { moveItem, fileExists, identity, list };

  explicit FaultyFileRenaming(SystemFileRenaming& inner) : inner_(inner) {}

  // The `k`-th call of `call` fails with `code`.
  void failAt(Call call, std::size_t k, int code = EIO) {
    faults_.push_back({call, k, false, code});
  }
  // Every call of `call` from the `k`-th on fails with `code`.
  void failFrom(Call call, std::size_t k, int code = EIO) {
    faults_.push_back({call, k, true, code});
  }
  // No more faults; the counts go on.
  void heal() { faults_.clear(); }

  std::size_t calls(Call call) const { return counts_[index(call)]; }

  std::optional<IOError> moveItem(const std::filesystem::path& from,
                                  const std::filesystem::path& to) override {
    if (const int code = next(Call::moveItem)) {
      return IOError::fromErrno(code, IOError::Operation::rename, from);
    }
    return inner_.moveItem(from, to);
  }

  Presence fileExists(const std::filesystem::path& at) override {
    if (const int code = next(Call::fileExists)) return Presence::unknown(code);
    return inner_.fileExists(at);
  }

  IdentityLookup identity(const std::filesystem::path& at) override {
    if (const int code = next(Call::identity)) {
      return IdentityLookup::without(Presence::unknown(code));
    }
    return inner_.identity(at);
  }

  std::optional<std::vector<FolderEntry>> list(const std::filesystem::path& folder) override {
    if (next(Call::list) != 0) return std::nullopt;
    return inner_.list(folder);
  }

 private:
  struct Fault {
    Call call;
    std::size_t k;
    bool onward;
    int code;
  };

  static std::size_t index(Call call) { return static_cast<std::size_t>(call); }

  // Counts a call; the errno it fails with, or 0.
  int next(Call call) {
    const std::size_t n = ++counts_[index(call)];
    for (const Fault& f : faults_) {
      if (f.call == call && (n == f.k || (f.onward && n > f.k))) return f.code;
    }
    return 0;
  }

  SystemFileRenaming& inner_;
  std::vector<Fault> faults_;
  std::array<std::size_t, 4> counts_{};
};

}  // namespace tessane::testing
