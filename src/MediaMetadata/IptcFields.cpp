#include "IptcFields.h"

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
#include <exiv2/exiv2.hpp>
#pragma GCC diagnostic pop

#include "MetadataText.h"

namespace tessane::IptcFields {

void read(const Exiv2::IptcData& iptc, ImageFields& fields) {
  for (const Exiv2::Iptcdatum& d : iptc) {
    if (d.record() != 2) continue;
    std::optional<std::string>* field = nullptr;
    switch (d.tag()) {
      case 80:
        field = &fields.byline;
        break;
      case 90:
        field = &fields.city;
        break;
      case 92:
        field = &fields.subLocation;
        break;
      case 5:
        field = &fields.objectName;
        break;
      case 105:
        field = &fields.headline;
        break;
      default:
        continue;
    }
    if (field->has_value()) continue;
    *field = MetadataText::clean(d.toString());
  }
}

}  // namespace tessane::IptcFields
