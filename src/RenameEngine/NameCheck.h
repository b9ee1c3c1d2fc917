// The checks of one proposed name against the rules of the file system.
//
// The two checks that need the whole batch or the folder (a duplicate in the batch, a name
// already taken) are made by the preview; their cases live here so that all name problems share
// one type. The texts users read are made by the application's message layer.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tessane {

class NameError {
 public:
  enum class Case {
    tooLong,
    existingFile,
    empty,
    startsWithDot,
    invalidCharacters,
    duplicateInBatch,
    spaceAtEdge,  // the part before the extension begins or ends with white space
    refused
  };

  static NameError tooLong(std::int64_t utf8Bytes) {
    return NameError(Case::tooLong, utf8Bytes, {});
  }
  static NameError existingFile(std::string name) {
    return NameError(Case::existingFile, 0, std::move(name));
  }
  static NameError empty() { return NameError(Case::empty, 0, {}); }
  static NameError startsWithDot() { return NameError(Case::startsWithDot, 0, {}); }
  static NameError invalidCharacters() { return NameError(Case::invalidCharacters, 0, {}); }
  static NameError duplicateInBatch() { return NameError(Case::duplicateInBatch, 0, {}); }
  // The system won't let the file take a new name (a read-only disk, a folder the user may not
  // write to, a locked file): `code` is what it would answer, an errno value.
  static NameError refused(int code) { return NameError(Case::refused, code, {}); }
  static NameError spaceAtEdge() { return NameError(Case::spaceAtEdge, 0, {}); }

  Case kind() const noexcept { return case_; }
  std::int64_t length() const noexcept { return length_; }  // tooLong: the UTF-8 byte count
  int systemCode() const noexcept { return static_cast<int>(length_); }  // refused: the errno
  const std::string& name() const noexcept { return name_; }  // existingFile: the name taken

  friend bool operator==(const NameError&, const NameError&) = default;

 private:
  NameError(Case c, std::int64_t length, std::string name)
      : case_(c), length_(length), name_(std::move(name)) {}

  Case case_;
  std::int64_t length_;
  std::string name_;
};

namespace NameCheck {

// The longest name a file system takes, in UTF-8 bytes.
inline constexpr std::size_t kMaxNameBytes = 255;

// The problems of the name base + "." + ext (base alone when ext is empty), in a fixed order:
// [empty] alone for an empty name, else startsWithDot, invalidCharacters, spaceAtEdge, tooLong
// as they apply. A base that begins or ends with white space is refused: such a name looks like
// another in every list and is hard to type.
// Empty when the name is acceptable.
std::vector<NameError> problems(std::string_view base, std::string_view ext);

// Whether the text holds "/", ":" or a control character (General Category Cc).
bool hasInvalidCharacters(std::string_view text);

// Whether a base name begins or ends with white space (Unicode White_Space).
bool hasSpaceAtEdge(std::string_view base);

}  // namespace NameCheck
}  // namespace tessane
