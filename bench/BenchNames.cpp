#include "BenchNames.h"

#include <cstdio>
#include <random>

namespace tessane::bench {

std::vector<std::string> realisticNames(std::size_t count) {
  static const char* cameraPatterns[] = {
      "DSC_%04u.ARW",        "DSC_%04u.JPG",       "DSC%05u.ARW",  "IMG_%04u.CR3", "IMG_%04u.JPG",
      "_MG_%04u.CR2",        "IMG_%04u.HEIC",      "P10%05u.RW2",  "DJI_%04u.MP4", "GOPR%04u.MP4",
      "C%04u.MXF",           "IMG_%04u.CR3.xmp",   "DSCF%04u.RAF", "_DSC%04u.NEF", "IMG_%04u.dng",
      "2024%04u_123456.jpg", "Export-%u-final.tif"};
  static const char* accentedPatterns[] = {"\xC3\x89t\xC3\xA9_\xC3\xA0_Paris_%03u.jpg",
                                           "Z\xC3\xBCrich-Altstadt-%u.ARW",
                                           "S\xC3\xA3o Paulo %u.JPG",
                                           "K\xC3\xB8"
                                           "benhavn_%04u.NEF",
                                           "Cr\xC3\xA8me br\xC3\xBBl\xC3\xA9"
                                           "e %u.jpg"};
  static const char* decomposedPatterns[] = {"E\xCC\x81te\xCC\x81_a\xCC\x80_Paris_%03u.jpg",
                                             "Zu\xCC\x88rich-Altstadt-%u.ARW"};
  static const char* emojiPatterns[] = {
      "\xF0\x9F\x8C\x8A_surf_%03u.jpg", "Party \xF0\x9F\x8E\x89\xF0\x9F\x8E\x82 %u.HEIC",
      "\xF0\x9F\x87\xAE\xF0\x9F\x87\xB9 Roma %u.JPG",
      "family-\xF0\x9F\x91\xA8\xE2\x80\x8D\xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F\x91\xA7-%u.mp4"};
  std::mt19937 random(2024);
  std::vector<std::string> names;
  names.reserve(count);
  char buffer[256];
  for (std::size_t i = 0; i < count; ++i) {
    const auto roll = random() % 100;
    const unsigned number = static_cast<unsigned>(i % 10000);
    const char* pattern;
    if (roll < 90) {
      pattern = cameraPatterns[random() % std::size(cameraPatterns)];
    } else if (roll < 97) {
      pattern = (random() % 10 == 0) ? decomposedPatterns[random() % std::size(decomposedPatterns)]
                                     : accentedPatterns[random() % std::size(accentedPatterns)];
    } else {
      pattern = emojiPatterns[random() % std::size(emojiPatterns)];
    }
    std::snprintf(buffer, sizeof buffer, pattern, number);
    names.emplace_back(buffer);
  }
  return names;
}

}  // namespace tessane::bench
