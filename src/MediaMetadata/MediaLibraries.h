// One-time set-up of the libraries that read file contents, done before any reading thread
// starts: Exiv2 reads ISO base media files (CR3, HEIC, HIF) and its XMP toolkit is initialised
// with a lock, and neither Exiv2's warnings nor TagLib's debug output reach the terminal. (FFmpeg
// and poppler, in modules of their own, are silenced by those modules when they load.)
#pragma once

namespace tessane::MediaLibraries {

// Idempotent and thread-safe; `MetadataProvider` calls it when it is made.
void initialize();

}  // namespace tessane::MediaLibraries
