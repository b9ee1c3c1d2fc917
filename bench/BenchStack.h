// The rule stack the engine benchmarks time: a photographer's usual naming (capture date and
// camera body, the counter where asked), a replacement, upper case and accents removed.
#pragma once

#include <string>

#include "RenameEngine/RuleStack.h"

namespace tessane::bench {

RuleStack typicalStack(const std::string& templateText);

}  // namespace tessane::bench
