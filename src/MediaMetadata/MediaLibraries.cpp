#include "MediaLibraries.h"

#include <taglib/tdebuglistener.h>
#include <exiv2/exiv2.hpp>

#include <cstdlib>
#include <mutex>
#include <string>

namespace tessane::MediaLibraries {
namespace {

std::mutex xmpToolkitMutex;

void lockXmpToolkit(void* data, bool lock) {
  auto* m = static_cast<std::mutex*>(data);
  if (lock) {
    m->lock();
  } else {
    m->unlock();
  }
}

void ignoreExiv2(int, const char*) {}

class SilentTagLib final : public TagLib::DebugListener {
 public:
  void printMessage(const TagLib::String&) override {}
};

}  // namespace

void initialize() {
  static std::once_flag once;
  std::call_once(once, [] {
    Exiv2::LogMsg::setLevel(Exiv2::LogMsg::mute);
    Exiv2::LogMsg::setHandler(ignoreExiv2);
    Exiv2::enableBMFF(true);
    Exiv2::XmpParser::initialize(lockXmpToolkit, &xmpToolkitMutex);
    // The namespaces that files register with the toolkit are freed only by terminate.
    std::atexit([] { Exiv2::XmpParser::terminate(); });
    static SilentTagLib silent;
    TagLib::setDebugListener(&silent);
  });
}

}  // namespace tessane::MediaLibraries
