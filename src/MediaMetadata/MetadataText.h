// Texts that files carry, made fit for a name: trimmed, never empty, always UTF-8.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "RenameEngine/MetadataValue.h"

namespace tessane::MetadataText {

// The text with spaces, line breaks and NUL padding removed at both ends. Bytes that are not
// UTF-8 are read as Latin-1, which is what older cameras and IPTC records without a character
// set write. Nothing when the result is empty.
std::optional<std::string> clean(std::string_view raw);

// Stores `raw` cleaned under `key`; an empty value stores nothing. Returns whether it stored.
bool setText(MetadataMap& map, MetadataKey key, std::string_view raw);

}  // namespace tessane::MetadataText
