#include "PdfReader.h"

#include <string>

#include "ContainerFacts.h"
#include "LoadableModule.h"
#include "MetadataText.h"
#include "RenameIO/RegularFile.h"
#include "TimeParsing.h"

namespace tessane::PdfReader {
namespace {

LoadableModule& documentModule() {
  static LoadableModule module("libtessane-pdf.so");
  return module;
}

}  // namespace

std::string problem() {
  return documentModule().problem();
}

std::optional<std::int32_t> read(const std::filesystem::path& path, const icu::TimeZone& zone,
                                 MetadataMap& out) {
  // poppler opens the file itself: it is given nothing but a regular file.
  if (!RegularFile::is(path)) return std::nullopt;
  const auto readFacts =
      reinterpret_cast<TessaneReadPdfFacts>(documentModule().symbol("tessaneReadPdfFacts"));
  if (readFacts == nullptr) return std::nullopt;
  PdfFacts facts;
  readFacts(path.c_str(), &facts);
  std::optional<std::int32_t> offset;
  MetadataText::setText(out, MetadataKey::title, facts.title);
  MetadataText::setText(out, MetadataKey::author, facts.author);
  if (const auto date = TimeParsing::pdfDate(facts.creationDate, zone)) {
    out.set(MetadataKey::date, MetadataValue::date(date->date));
    offset = date->offsetSeconds;
  }
  if (facts.pages > 0) out.set(MetadataKey::pages, MetadataValue::integer(facts.pages));
  return offset;
}

}  // namespace tessane::PdfReader
