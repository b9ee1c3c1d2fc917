// Feeds arbitrary bytes to the operation decoder as JSON, and applies whatever decodes to a few
// names: neither may crash, hang or read out of bounds, and results must stay valid UTF-8.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "RenameEngine/RenameOperation.h"
#include "RenameEngine/Unicode.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tessane;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const std::optional<Json> parsed = json::parse(text);
  if (!parsed) return 0;
  const Decoded<RenameOperation> decoded = decodeRenameOperation(*parsed);
  if (!decoded.ok()) return 0;
  const CompiledOperation compiled(*decoded.value);
  OperationContext locked;
  locked.protectedBlocks = {BlockRef::index(0)};
  for (const char* name :
       {"DSC_0001", "E\xCC\x81te\xCC\x81 a\xCC\x80 Paris-2024", "",
        "\xF0\x9F\x91\xA8\xE2\x80\x8D\xF0\x9F\x91\xA9_\xF0\x9F\x87\xAE\xF0\x9F\x87\xB9"}) {
    const OperationContext plain;
    for (const OperationContext* context :
         {&plain, static_cast<const OperationContext*>(&locked)}) {
      const OperationOutcome outcome = compiled.apply(FileName{name, "JPG"}, *context);
      if (!unicode::isValidUtf8(outcome.name.base) || !unicode::isValidUtf8(outcome.name.ext)) {
        std::abort();
      }
    }
  }
  // What decodes must encode and decode to the same value.
  const Decoded<RenameOperation> again = decodeRenameOperation(toJson(*decoded.value));
  if (!again.ok() || !(*again.value == *decoded.value)) std::abort();
  return 0;
}
