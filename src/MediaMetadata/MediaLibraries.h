// One-time set-up of the libraries that read file contents, done before any reading thread
// starts: Exiv2 reads ISO base media files (CR3, HEIC, HIF) and its XMP toolkit is initialised
// with a lock, and no library writes to the terminal (Exiv2's warnings, FFmpeg's log, poppler's
// error messages, TagLib's debug output all go nowhere).
#pragma once

namespace tessane::MediaLibraries {

// Idempotent and thread-safe; `MetadataProvider` calls it when it is made.
void initialize();

}  // namespace tessane::MediaLibraries
