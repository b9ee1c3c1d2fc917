// The fields the image reader maps (ImageFields), picked from Exiv2's decoded EXIF in one pass:
// IFD0's and the EXIF IFD's entries, a DNG's default crop, Panasonic's maker-note size, the
// maker note's serial number (Canon, Nikon's SerialNumber then SerialNO without its "NO=" label,
// Fujifilm, Olympus's three, Pentax, Panasonic, Sigma; the first that is not empty) and, when the
// EXIF lens model names none, the lens as Exiv2 names it. The first of each entry counts; a value
// Exiv2 can't convert is left out. Nothing is thrown; safe on any thread.
#pragma once

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
#include <exiv2/exiv2.hpp>
#pragma GCC diagnostic pop

#include "ImageFields.h"

namespace tessane::ExifPick {

ImageFields pick(const Exiv2::ExifData& exif);

// Exiv2's id of IFD0's group.
int imageGroup();

}  // namespace tessane::ExifPick
