#include "NameKey.h"

#include "Unicode.h"

namespace tessane {

NameKey NameKey::of(std::string_view name) {
  if (unicode::isAscii(name)) return NameKey{unicode::foldCase(name)};
  return NameKey{unicode::foldCase(unicode::toNfc(name))};
}

}  // namespace tessane
