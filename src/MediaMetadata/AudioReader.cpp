#include "AudioReader.h"

#include <taglib/audioproperties.h>
#include <taglib/fileref.h>
#include <taglib/tag.h>

#include "MetadataText.h"
#include "RenameIO/RegularFile.h"

namespace tessane::AudioReader {

void read(const std::filesystem::path& path, MetadataMap& out) {
  // TagLib opens the file itself: it is given nothing but a regular file.
  if (!RegularFile::is(path)) return;
  try {
    const TagLib::FileRef file(path.c_str(), true, TagLib::AudioProperties::Average);
    if (file.isNull()) return;
    if (const TagLib::Tag* tag = file.tag()) {
      MetadataText::setText(out, MetadataKey::artist, tag->artist().to8Bit(true));
      MetadataText::setText(out, MetadataKey::album, tag->album().to8Bit(true));
      MetadataText::setText(out, MetadataKey::title, tag->title().to8Bit(true));
      if (tag->track() > 0) out.set(MetadataKey::track, MetadataValue::integer(tag->track()));
      if (tag->year() > 0) out.set(MetadataKey::year, MetadataValue::integer(tag->year()));
    }
    if (const TagLib::AudioProperties* props = file.audioProperties()) {
      const int ms = props->lengthInMilliseconds();
      if (ms > 0) out.set(MetadataKey::duration, MetadataValue::number(ms / 1000.0));
    }
  } catch (...) {
    // TagLib doesn't throw by design, but a bad allocation on a damaged file must stop here.
  }
}

}  // namespace tessane::AudioReader
