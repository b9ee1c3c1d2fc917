#include "FileKind.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

#include "StoredText.h"
#include "Unicode.h"

namespace tessane {
namespace {

// Extensions are short ASCII words, so each is packed into one integer and the table is searched
// by value; a lookup costs a handful of integer comparisons and no allocation.
constexpr std::uint64_t pack(std::string_view ext) {
  std::uint64_t v = 0;
  for (char c : ext)
    v = (v << 8) | static_cast<unsigned char>(c);
  return v;
}

struct Entry {
  std::uint64_t key;
  FileKind kind;
  bool carrier;  // may stand before ".xmp" in a sidecar's double extension
  std::string_view name;
};

constexpr auto kTable = [] {
  std::array<Entry, 54> table{{
      // raw
      {pack("arw"), FileKind::raw, true, "arw"},
      {pack("cr2"), FileKind::raw, true, "cr2"},
      {pack("cr3"), FileKind::raw, true, "cr3"},
      {pack("nef"), FileKind::raw, true, "nef"},
      {pack("nrw"), FileKind::raw, true, "nrw"},
      {pack("dng"), FileKind::raw, true, "dng"},
      {pack("raf"), FileKind::raw, true, "raf"},
      {pack("orf"), FileKind::raw, true, "orf"},
      {pack("rw2"), FileKind::raw, true, "rw2"},
      {pack("pef"), FileKind::raw, true, "pef"},
      {pack("srw"), FileKind::raw, true, "srw"},
      {pack("x3f"), FileKind::raw, true, "x3f"},
      {pack("iiq"), FileKind::raw, true, "iiq"},
      {pack("3fr"), FileKind::raw, true, "3fr"},
      {pack("crw"), FileKind::raw, true, "crw"},
      {pack("sr2"), FileKind::raw, true, "sr2"},
      {pack("srf"), FileKind::raw, true, "srf"},
      {pack("rwl"), FileKind::raw, true, "rwl"},
      {pack("fff"), FileKind::raw, true, "fff"},
      {pack("mrw"), FileKind::raw, true, "mrw"},
      {pack("erf"), FileKind::raw, true, "erf"},
      {pack("mos"), FileKind::raw, true, "mos"},
      {pack("mef"), FileKind::raw, true, "mef"},
      {pack("kdc"), FileKind::raw, true, "kdc"},
      {pack("dcr"), FileKind::raw, true, "dcr"},
      {pack("gpr"), FileKind::raw, true, "gpr"},
      // image
      {pack("jpg"), FileKind::image, true, "jpg"},
      {pack("jpeg"), FileKind::image, true, "jpeg"},
      {pack("heic"), FileKind::image, true, "heic"},
      {pack("heif"), FileKind::image, true, "heif"},
      {pack("hif"), FileKind::image, true, "hif"},
      {pack("tif"), FileKind::image, true, "tif"},
      {pack("tiff"), FileKind::image, true, "tiff"},
      {pack("png"), FileKind::image, true, "png"},
      {pack("gif"), FileKind::image, false, "gif"},
      {pack("webp"), FileKind::image, false, "webp"},
      // video
      {pack("mp4"), FileKind::video, true, "mp4"},
      {pack("mov"), FileKind::video, true, "mov"},
      {pack("mxf"), FileKind::video, true, "mxf"},
      {pack("avi"), FileKind::video, false, "avi"},
      {pack("mts"), FileKind::video, false, "mts"},
      {pack("m2ts"), FileKind::video, false, "m2ts"},
      {pack("m4v"), FileKind::video, false, "m4v"},
      {pack("mkv"), FileKind::video, false, "mkv"},
      // audio
      {pack("mp3"), FileKind::audio, false, "mp3"},
      {pack("wav"), FileKind::audio, false, "wav"},
      {pack("aif"), FileKind::audio, false, "aif"},
      {pack("aiff"), FileKind::audio, false, "aiff"},
      {pack("m4a"), FileKind::audio, false, "m4a"},
      {pack("flac"), FileKind::audio, false, "flac"},
      {pack("aac"), FileKind::audio, false, "aac"},
      {pack("ogg"), FileKind::audio, false, "ogg"},
      // pdf and sidecar
      {pack("pdf"), FileKind::pdf, false, "pdf"},
      {pack("xmp"), FileKind::sidecar, false, "xmp"},
  }};
  std::sort(table.begin(), table.end(),
            [](const Entry& a, const Entry& b) { return a.key < b.key; });
  return table;
}();

const Entry* find(std::string_view lowerExt) {
  if (lowerExt.empty() || lowerExt.size() > 4) return nullptr;
  const std::uint64_t key = pack(lowerExt);
  const auto* it = std::lower_bound(kTable.begin(), kTable.end(), key,
                                    [](const Entry& e, std::uint64_t k) { return e.key < k; });
  return (it != kTable.end() && it->key == key) ? &*it : nullptr;
}

// The lower-cased extension when it is short ASCII (everything in the table is); nothing else
// can match, so other text needs no Unicode lower-casing at all.
bool lowerAscii(std::string_view text, char (&out)[4]) {
  if (text.empty() || text.size() > 4) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (static_cast<unsigned char>(c) & 0x80) return false;
    out[i] = (c >= 'A' && c <= 'Z') ? static_cast<char>(c + 32) : c;
  }
  return true;
}

}  // namespace

namespace {
constexpr std::pair<FileKind, std::string_view> kKinds[] = {
    {FileKind::raw, "raw"},     {FileKind::image, "image"}, {FileKind::video, "video"},
    {FileKind::audio, "audio"}, {FileKind::pdf, "pdf"},     {FileKind::sidecar, "sidecar"},
    {FileKind::other, "other"}};
}  // namespace

std::string_view rawValue(FileKind kind) noexcept {
  return storedText(kKinds, kind);
}

std::optional<FileKind> fileKindFromRawValue(std::string_view text) noexcept {
  return fromStoredText(kKinds, text);
}

FileKind fileKindOf(std::string_view text) {
  // The last non-empty piece between dots.
  std::size_t end = text.size();
  while (end > 0 && text[end - 1] == '.')
    --end;
  const std::size_t dot = text.rfind('.', end == 0 ? 0 : end - 1);
  const std::size_t start = (dot == std::string_view::npos || end == 0) ? 0 : dot + 1;
  const std::string_view last = text.substr(start, end - start);

  char lower[4];
  if (lowerAscii(last, lower)) {
    const Entry* e = find(std::string_view(lower, last.size()));
    return e ? e->kind : FileKind::other;
  }
  // Full Unicode lower-casing can turn a non-ASCII letter into an ASCII one (the Kelvin sign
  // lower-cases to "k"), so text outside ASCII still gets a proper look.
  if (unicode::isAscii(last)) return FileKind::other;
  const std::string folded = unicode::toLower(last);
  const Entry* e = find(folded);
  return e ? e->kind : FileKind::other;
}

std::vector<std::string_view> extensionsOf(FileKind kind) {
  std::vector<std::string_view> out;
  for (const Entry& e : kTable) {
    if (e.kind == kind) out.push_back(e.name);
  }
  return out;
}

bool isSidecarCarrierExtension(std::string_view lowerExtension) noexcept {
  const Entry* e = find(lowerExtension);
  return e != nullptr && e->carrier;
}

bool isSidecarExtension(std::string_view lowerExtension) noexcept {
  return lowerExtension == "xmp";
}

}  // namespace tessane
