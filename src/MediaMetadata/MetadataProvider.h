// What templates and rules can use from one file, read from its contents.
//
// The reader is chosen by the file's kind: images and RAW files through Exiv2 (ImageReader),
// video through libavformat (VideoReader), audio through TagLib (AudioReader), PDF through
// poppler (PdfReader). Every file gets its file-system dates (FileDates), and a file with an XMP
// sidecar gets the sidecar's descriptive fields, stored after the file's own so that the sidecar
// wins (SidecarReader, SidecarIndex). An XMP file itself gives its own descriptive fields, the
// same ones (so a sidecar without its photo still has a title), when the scope reads sidecars.
//
// Camera clock times without an offset are read in `timeZone()`. A date that names its own
// offset (EXIF OffsetTimeOriginal, a video's local creation date, a PDF's) is the moment it
// names; the offset is kept with the values (MetadataMap::shotOffset) and as `shotUtcOffset`,
// so that `{date}` writes the shot's own clock time, and photos and videos of one trip agree.
//
// Nothing is thrown and nothing is printed: a file that can't be opened or parsed gives only what
// could be read, at least its dates when it exists. A value type, cheap to copy; its sidecar
// index is shared by the copies. Make the provider before reading threads start (its
// construction sets the libraries up); after that `read` may be called from any thread.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <unicode/uversion.h>

#include "RenameEngine/FileKind.h"
#include "RenameEngine/MetadataValue.h"
#include "RenameEngine/Template.h"
#include "SidecarIndex.h"

U_NAMESPACE_BEGIN
class TimeZone;
U_NAMESPACE_END

namespace tessane {

struct FileMetadata {
  MetadataMap values;
  // The UTC offset in seconds the file gives for its capture date: EXIF's offset of the date
  // used, or a video's or PDF's creation date's when it names one other than zero (a container's
  // "Z" is UTC, not a local time); otherwise the provider's time zone applies.
  std::optional<std::int32_t> shotUtcOffset;

  // `shotUtcOffset` as ISO 8601 writes it ("+02:00", "-05:30"); nothing when there is none.
  std::optional<std::string> shotUtcOffsetText() const;

  friend bool operator==(const FileMetadata&, const FileMetadata&) = default;
};

// What a read takes beyond the file's own contents. The application reads everything; a caller
// that knows which values its rules name can leave out what none of them needs.
struct MetadataScope {
  bool fileDates = true;  // created, modified
  bool sidecars = true;   // the XMP sidecar's descriptive fields

  // Only what the template variables given can show.
  static MetadataScope forVariables(const std::set<TemplateVariable>& variables);
};

class MetadataProvider {
 public:
  // The system's default time zone and a new sidecar index.
  MetadataProvider();
  explicit MetadataProvider(const icu::TimeZone& timeZone,
                            std::shared_ptr<SidecarIndex> sidecars = nullptr,
                            MetadataScope scope = {});

  const icu::TimeZone& timeZone() const { return *timeZone_; }
  const std::shared_ptr<SidecarIndex>& sidecars() const { return sidecars_; }

  FileMetadata read(const std::filesystem::path& file, FileKind kind) const;
  MetadataMap metadata(const std::filesystem::path& file, FileKind kind) const {
    return read(file, kind).values;
  }

  // What could not be read at all so far because a reader's module failed to load, one text per
  // reader ("Videos can't be read: …"), for the caller to show once; empty when nothing failed.
  static std::vector<std::string> unavailableReaders();

 private:
  std::shared_ptr<const icu::TimeZone> timeZone_;
  std::shared_ptr<SidecarIndex> sidecars_;
  MetadataScope scope_;
};

}  // namespace tessane
