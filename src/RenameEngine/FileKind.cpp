#include "FileKind.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

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
};

constexpr auto kTable = [] {
  std::array<Entry, 54> table{{
      // raw
      {pack("arw"), FileKind::raw, true},
      {pack("cr2"), FileKind::raw, true},
      {pack("cr3"), FileKind::raw, true},
      {pack("nef"), FileKind::raw, true},
      {pack("nrw"), FileKind::raw, true},
      {pack("dng"), FileKind::raw, true},
      {pack("raf"), FileKind::raw, true},
      {pack("orf"), FileKind::raw, true},
      {pack("rw2"), FileKind::raw, true},
      {pack("pef"), FileKind::raw, true},
      {pack("srw"), FileKind::raw, true},
      {pack("x3f"), FileKind::raw, true},
      {pack("iiq"), FileKind::raw, true},
      {pack("3fr"), FileKind::raw, true},
      {pack("crw"), FileKind::raw, true},
      {pack("sr2"), FileKind::raw, true},
      {pack("srf"), FileKind::raw, true},
      {pack("rwl"), FileKind::raw, true},
      {pack("fff"), FileKind::raw, true},
      {pack("mrw"), FileKind::raw, true},
      {pack("erf"), FileKind::raw, true},
      {pack("mos"), FileKind::raw, true},
      {pack("mef"), FileKind::raw, true},
      {pack("kdc"), FileKind::raw, true},
      {pack("dcr"), FileKind::raw, true},
      {pack("gpr"), FileKind::raw, true},
      // image
      {pack("jpg"), FileKind::image, true},
      {pack("jpeg"), FileKind::image, true},
      {pack("heic"), FileKind::image, true},
      {pack("heif"), FileKind::image, true},
      {pack("hif"), FileKind::image, true},
      {pack("tif"), FileKind::image, true},
      {pack("tiff"), FileKind::image, true},
      {pack("png"), FileKind::image, true},
      {pack("gif"), FileKind::image, false},
      {pack("webp"), FileKind::image, false},
      // video
      {pack("mp4"), FileKind::video, true},
      {pack("mov"), FileKind::video, true},
      {pack("mxf"), FileKind::video, true},
      {pack("avi"), FileKind::video, false},
      {pack("mts"), FileKind::video, false},
      {pack("m2ts"), FileKind::video, false},
      {pack("m4v"), FileKind::video, false},
      {pack("mkv"), FileKind::video, false},
      // audio
      {pack("mp3"), FileKind::audio, false},
      {pack("wav"), FileKind::audio, false},
      {pack("aif"), FileKind::audio, false},
      {pack("aiff"), FileKind::audio, false},
      {pack("m4a"), FileKind::audio, false},
      {pack("flac"), FileKind::audio, false},
      {pack("aac"), FileKind::audio, false},
      {pack("ogg"), FileKind::audio, false},
      // pdf and sidecar
      {pack("pdf"), FileKind::pdf, false},
      {pack("xmp"), FileKind::sidecar, false},
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

std::string_view rawValue(FileKind kind) noexcept {
  switch (kind) {
    case FileKind::raw:
      return "raw";
    case FileKind::image:
      return "image";
    case FileKind::video:
      return "video";
    case FileKind::audio:
      return "audio";
    case FileKind::pdf:
      return "pdf";
    case FileKind::sidecar:
      return "sidecar";
    case FileKind::other:
      return "other";
  }
  return "other";
}

std::optional<FileKind> fileKindFromRawValue(std::string_view text) noexcept {
  for (FileKind k : {FileKind::raw, FileKind::image, FileKind::video, FileKind::audio,
                     FileKind::pdf, FileKind::sidecar, FileKind::other}) {
    if (rawValue(k) == text) return k;
  }
  return std::nullopt;
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

bool isSidecarCarrierExtension(std::string_view lowerExtension) noexcept {
  const Entry* e = find(lowerExtension);
  return e != nullptr && e->carrier;
}

bool isSidecarExtension(std::string_view lowerExtension) noexcept {
  return lowerExtension == "xmp";
}

}  // namespace tessane
