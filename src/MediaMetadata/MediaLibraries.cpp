#include "MediaLibraries.h"

#include <poppler/cpp/poppler-global.h>
#include <taglib/tdebuglistener.h>
#include <exiv2/exiv2.hpp>

#include <mutex>
#include <string>

extern "C" {
#include <libavutil/log.h>
}

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
void ignorePoppler(const std::string&, void*) {}

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
    av_log_set_level(AV_LOG_QUIET);
    poppler::set_debug_error_function(ignorePoppler, nullptr);
    static SilentTagLib silent;
    TagLib::setDebugListener(&silent);
  });
}

}  // namespace tessane::MediaLibraries
