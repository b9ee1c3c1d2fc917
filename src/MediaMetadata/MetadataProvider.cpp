#include "MetadataProvider.h"

#include <unicode/timezone.h>

#include <cstdio>
#include <initializer_list>

#include "AudioReader.h"
#include "FileDates.h"
#include "ImageReader.h"
#include "MediaLibraries.h"
#include "PdfReader.h"
#include "SidecarReader.h"
#include "VideoReader.h"

namespace tessane {

std::optional<std::string> FileMetadata::shotUtcOffsetText() const {
  if (!shotUtcOffset) return std::nullopt;
  const std::int64_t seconds = *shotUtcOffset;
  const std::int64_t minutes = (seconds < 0 ? -seconds : seconds) / 60;
  char text[16];
  std::snprintf(text, sizeof text, "%c%02d:%02d", seconds < 0 ? '-' : '+',
                static_cast<int>(minutes / 60), static_cast<int>(minutes % 60));
  return std::string(text);
}

MetadataScope MetadataScope::forVariables(const std::set<TemplateVariable>& variables) {
  const auto uses = [&](std::initializer_list<TemplateVariable> any) {
    for (TemplateVariable v : any) {
      if (variables.count(v) > 0) return true;
    }
    return false;
  };
  using V = TemplateVariable;
  MetadataScope scope;
  scope.fileDates = uses({V::created, V::modified});
  scope.sidecars = uses({V::city, V::location, V::author, V::title, V::headline});
  return scope;
}

MetadataProvider::MetadataProvider()
    : MetadataProvider(*std::unique_ptr<icu::TimeZone>(icu::TimeZone::createDefault())) {}

MetadataProvider::MetadataProvider(const icu::TimeZone& timeZone,
                                   std::shared_ptr<SidecarIndex> sidecars, MetadataScope scope)
    : timeZone_(timeZone.clone()),
      sidecars_(sidecars ? std::move(sidecars) : std::make_shared<SidecarIndex>()),
      scope_(scope) {
  MediaLibraries::initialize();
}

std::vector<std::string> MetadataProvider::unavailableReaders() {
  std::vector<std::string> out;
  if (std::string why = VideoReader::problem(); !why.empty()) {
    out.push_back("Videos can’t be read: " + why);
  }
  if (std::string why = PdfReader::problem(); !why.empty()) {
    out.push_back("PDF documents can’t be read: " + why);
  }
  return out;
}

FileMetadata MetadataProvider::read(const std::filesystem::path& file, FileKind kind) const {
  FileMetadata result;
  switch (kind) {
    case FileKind::raw:
    case FileKind::image:
      ImageReader::read(file, kind, *timeZone_, result.values);
      break;
    case FileKind::video:
      result.shotUtcOffset = VideoReader::read(file, *timeZone_, result.values);
      break;
    case FileKind::audio:
      AudioReader::read(file, result.values);
      break;
    case FileKind::pdf:
      result.shotUtcOffset = PdfReader::read(file, *timeZone_, result.values);
      break;
    case FileKind::sidecar:
      // An XMP file's own fields are its values, whether or not a photo of its name is there.
      if (scope_.sidecars) SidecarReader::read(file, result.values, timeZone_.get());
      break;
    case FileKind::other:
      break;
  }
  // One offset for both: the image readers keep theirs with the values, the others return it.
  if (result.shotUtcOffset) {
    result.values.setShotOffset(result.shotUtcOffset);
  } else {
    result.shotUtcOffset = result.values.shotOffset();
  }
  if (scope_.sidecars && kind != FileKind::sidecar) {
    if (const auto sidecar = sidecars_->sidecar(file))
      SidecarReader::read(*sidecar, result.values, timeZone_.get());
  }
  if (!result.shotUtcOffset) result.shotUtcOffset = result.values.shotOffset();
  if (scope_.fileDates) FileDates::read(file, result.values);
  return result;
}

}  // namespace tessane
