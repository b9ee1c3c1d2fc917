// The module tessane-pdf: a PDF document's information dictionary read through poppler-cpp, as
// PdfFacts.
#include <poppler/cpp/poppler-document.h>
#include <poppler/cpp/poppler-global.h>

#include <memory>
#include <mutex>
#include <string>

#include "ContainerFacts.h"

namespace {

void ignorePoppler(const std::string&, void*) {}

std::string utf8(const poppler::ustring& s) {
  const poppler::byte_array bytes = s.to_utf8();
  return std::string(bytes.begin(), bytes.end());
}

}  // namespace

extern "C" __attribute__((visibility("default"))) void tessaneReadPdfFacts(
    const char* path, tessane::PdfFacts* out) noexcept {
  // poppler's error messages go nowhere near the user.
  static std::once_flag quiet;
  try {
    std::call_once(quiet, [] { poppler::set_debug_error_function(ignorePoppler, nullptr); });
    const std::unique_ptr<poppler::document> doc(poppler::document::load_from_file(path));
    if (!doc) return;
    out->opened = true;
    out->title = utf8(doc->info_key("Title"));
    out->author = utf8(doc->info_key("Author"));
    out->creationDate = utf8(doc->info_key("CreationDate"));
    out->pages = doc->pages();
  } catch (...) {
    // A damaged document gives what was read before the failure.
  }
}
