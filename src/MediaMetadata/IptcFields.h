// The IPTC records the image reader uses, taken from Exiv2's decoded IPTC data.
#pragma once

#include "ImageFields.h"

namespace Exiv2 {
class IptcData;
}

namespace tessane::IptcFields {

// By-line, City, Sub-location, Object Name and Headline of record 2: for each, the first record
// whose text is not empty once trimmed.
void read(const Exiv2::IptcData& iptc, ImageFields& fields);

}  // namespace tessane::IptcFields
