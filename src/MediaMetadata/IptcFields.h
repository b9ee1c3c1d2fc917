// The IPTC records the image reader uses, taken from Exiv2's decoded IPTC data, and the image's
// own XMP that takes their place.
#pragma once

#include <string_view>

#include "ImageFields.h"

namespace Exiv2 {
class IptcData;
class XmpData;
}  // namespace Exiv2

namespace tessane::IptcFields {

// By-line, City, Sub-location, Object Name and Headline of record 2: for each, the first record
// whose text is not empty once trimmed. Texts are decoded in the character set that record 1:90
// names (UTF-8, or one of the ISO 8859 sets); without one, UTF-8 when they are valid UTF-8, else
// Latin-1, and a text that is not ASCII then sets `iptcUncertain`.
void read(const Exiv2::IptcData& iptc, ImageFields& fields);

// Whether an XMP packet may hold any of those fields, told from its text without decoding it
// (which costs a hundred times a quick read): a property is written with its prefix, as
// "photoshop:City". False means it holds none.
bool xmpMayHold(std::string_view packet);

// The same fields from the image's own XMP (photoshop:City, Iptc4xmpCore:Location, dc:title,
// photoshop:Headline, dc:creator), each taking the place of the IPTC value where the XMP has
// one: XMP is always Unicode. The image readers ask for it only when `iptcUncertain` is set:
// decoding XMP costs a hundred times a quick read, and IPTC in ASCII or in a named character set
// reads as it stands.
void preferXmp(const Exiv2::XmpData& xmp, ImageFields& fields);

}  // namespace tessane::IptcFields
