// The hidden names that files pass through during a batch:
//
//   ".tessane-" + batch tag + "-" + index + "-" + the file's own name
//
// where the batch tag is the first 8 characters of the batch's UUID (upper-case hexadecimal) and
// the index counts the batch's moves from 0. For example the first file of a batch whose UUID
// begins 3F2A9C01 is parked as ".tessane-3F2A9C01-0-_QM19581.ARW".
//
// The name carries the file's original name, so that a file left under it by a crash can be put
// back even without the batch's journal. When the whole would pass the 255-byte limit of a name,
// the carried name is cut at the end (at a character boundary when it is UTF-8).
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tessane {

struct TemporaryName {
  std::string tag;  // the 8 characters of the batch
  std::size_t index = 0;
  std::string name;       // the original name, possibly cut
  bool mayBeCut = false;  // the temporary name is so long that the name may have been cut

  static constexpr std::string_view kPrefix = ".tessane-";
  static constexpr std::size_t kMaxNameBytes = 255;

  static std::string make(std::string_view tag, std::size_t index, std::string_view name);
  // Reads a temporary name back; nothing when `text` is not one.
  static std::optional<TemporaryName> parse(std::string_view text);
};

}  // namespace tessane
