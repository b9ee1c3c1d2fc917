#include "VideoReader.h"

#include <array>
#include <cmath>
#include <string>
#include <utility>

#include "ContainerFacts.h"
#include "LoadableModule.h"
#include "MetadataText.h"
#include "RenameIO/RegularFile.h"
#include "TimeParsing.h"

namespace tessane::VideoReader {
namespace {

std::string fourccOf(std::uint32_t tag) {
  std::string s;
  for (int i = 0; i < 4; ++i) {
    const char c = static_cast<char>((tag >> (8 * i)) & 0xff);
    s.push_back(c);
  }
  return s;
}

bool printable(std::string_view s) {
  for (const char c : s) {
    if (c < 0x20 || c > 0x7e) return false;
  }
  return true;
}

LoadableModule& containerModule() {
  static LoadableModule module("libtessane-video.so");
  return module;
}

}  // namespace

std::optional<std::string_view> codecName(std::string_view fourcc) noexcept {
  static constexpr std::array<std::pair<std::string_view, std::string_view>, 8> kTable = {{
      {"avc1", "H264"},
      {"hvc1", "HEVC"},
      {"hev1", "HEVC"},
      {"apco", "ProRes422Proxy"},
      {"apcs", "ProRes422LT"},
      {"apcn", "ProRes422"},
      {"apch", "ProRes422HQ"},
      {"ap4h", "ProRes4444"},
  }};
  for (const auto& [code, name] : kTable) {
    if (code == fourcc) return name;
  }
  return std::nullopt;
}

std::optional<std::string> codecText(const VideoFacts& facts) {
  const std::string fourcc = fourccOf(facts.codecTag);
  if (const auto name = codecName(fourcc)) return std::string(*name);
  // The codecs the table names keep its name under any other code, or none.
  if (facts.codecLibraryName == "h264") return std::string("H264");
  if (facts.codecLibraryName == "hevc") return std::string("HEVC");
  if (facts.codecTagNamesCodec && printable(fourcc)) return fourcc;
  if (!facts.codecLibraryName.empty()) return facts.codecLibraryName;
  return std::nullopt;
}

std::string problem() {
  return containerModule().problem();
}

std::optional<std::int32_t> read(const std::filesystem::path& path, const icu::TimeZone& zone,
                                 MetadataMap& out) {
  // libavformat opens the file itself: it is given nothing but a regular file.
  if (!RegularFile::is(path)) return std::nullopt;
  const auto readFacts =
      reinterpret_cast<TessaneReadVideoFacts>(containerModule().symbol("tessaneReadVideoFacts"));
  if (readFacts == nullptr) return std::nullopt;
  VideoFacts facts;
  readFacts(path.c_str(), &facts);
  if (!facts.opened || facts.stillPicture) return std::nullopt;

  std::optional<std::int32_t> shotOffset;
  for (const std::optional<std::string>& text : {facts.quickTimeCreationDate, facts.creationTime}) {
    if (!text) continue;
    if (const auto parsed = TimeParsing::isoDate(*text, zone)) {
      out.set(MetadataKey::date, MetadataValue::date(parsed->date));
      shotOffset = parsed->offsetSeconds;
      break;
    }
  }
  if (facts.make) MetadataText::setText(out, MetadataKey::make, *facts.make);
  if (facts.model) MetadataText::setText(out, MetadataKey::model, *facts.model);
  if (facts.title) MetadataText::setText(out, MetadataKey::title, *facts.title);
  if (facts.durationSeconds) {
    out.set(MetadataKey::duration, MetadataValue::number(*facts.durationSeconds));
  }
  if (!facts.hasVideoTrack) return shotOffset;
  if (facts.width > 0 && facts.height > 0) {
    out.set(MetadataKey::width, MetadataValue::integer(facts.width));
    out.set(MetadataKey::height, MetadataValue::integer(facts.height));
  }
  const double fps = facts.framesPerSecond;
  if (std::isfinite(fps) && fps > 0 && fps < 10000) {
    out.set(MetadataKey::fps, MetadataValue::number(fps));
  }
  if (const auto codec = codecText(facts)) MetadataText::setText(out, MetadataKey::codec, *codec);
  return shotOffset;
}

}  // namespace tessane::VideoReader
