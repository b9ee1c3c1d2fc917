// The entry Exiv2 names the lens from (Exiv2::lensName): the first present of a fixed list of
// keys, from the EXIF lens model to each maker's lens codes.
//
// Up to Exiv2 0.27 the answer depends on nothing but which keys the EXIF holds and in which
// order, so it is remembered for each such sequence (the files of one camera model share theirs)
// instead of Exiv2 building and seeking each key of its list again for every file: a fifth of the
// time of a JPEG whose maker note has to be decoded. Later versions look at values too and are
// asked each time. Thread-safe (each thread remembers its own).
#pragma once

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
#include <exiv2/exiv2.hpp>
#pragma GCC diagnostic pop

namespace tessane::LensEntry {

Exiv2::ExifData::const_iterator find(const Exiv2::ExifData& exif);

}  // namespace tessane::LensEntry
