// PDF documents through poppler-cpp: title, author, creation date (its offset kept) and the
// page count. poppler lives in the module tessane-pdf, loaded by the first read; without it, PDF
// documents give no values.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include <unicode/uversion.h>

#include "RenameEngine/MetadataValue.h"

U_NAMESPACE_BEGIN
class TimeZone;
U_NAMESPACE_END

namespace tessane::PdfReader {

// Why PDF documents can't be read, when the module that reads them can't be loaded; else empty.
std::string problem();

// Fills `out`; returns the creation date's UTC offset in seconds when it names one.
std::optional<std::int32_t> read(const std::filesystem::path& path, const icu::TimeZone& zone,
                                 MetadataMap& out);

}  // namespace tessane::PdfReader
