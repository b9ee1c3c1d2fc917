#include "IOError.h"

#include <cstring>
#include <system_error>

#include "RenameEngine/Unicode.h"

namespace tessane {

std::string IOError::message() const {
  return "Couldn’t " + operation + " “" + unicode::toDisplayable(path.native()) +
         "”: " + std::generic_category().message(code);
}

}  // namespace tessane
