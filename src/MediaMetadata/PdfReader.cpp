#include "PdfReader.h"

#include <poppler/cpp/poppler-document.h>

#include <memory>
#include <string>

#include "MetadataText.h"
#include "TimeParsing.h"

namespace tessane::PdfReader {
namespace {

std::string utf8(const poppler::ustring& s) {
  const poppler::byte_array bytes = s.to_utf8();
  return std::string(bytes.begin(), bytes.end());
}

}  // namespace

std::optional<std::int32_t> read(const std::filesystem::path& path, const icu::TimeZone& zone,
                                 MetadataMap& out) {
  std::optional<std::int32_t> offset;
  try {
    const std::unique_ptr<poppler::document> doc(poppler::document::load_from_file(path.string()));
    if (!doc) return offset;
    MetadataText::setText(out, MetadataKey::title, utf8(doc->info_key("Title")));
    MetadataText::setText(out, MetadataKey::author, utf8(doc->info_key("Author")));
    if (const auto date = TimeParsing::pdfDate(utf8(doc->info_key("CreationDate")), zone)) {
      out.set(MetadataKey::date, MetadataValue::date(date->date));
      offset = date->offsetSeconds;
    }
    const int pages = doc->pages();
    if (pages > 0) out.set(MetadataKey::pages, MetadataValue::integer(pages));
  } catch (...) {
    // A damaged document gives what was read before the failure.
  }
  return offset;
}

}  // namespace tessane::PdfReader
