#include "VideoReader.h"

#include <array>
#include <cmath>
#include <string>
#include <utility>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/dict.h>
}

#include "MetadataText.h"
#include "TimeParsing.h"

namespace tessane::VideoReader {
namespace {

const char* tag(const AVDictionary* dict, const char* key) {
  const AVDictionaryEntry* e = av_dict_get(dict, key, nullptr, 0);
  return e != nullptr ? e->value : nullptr;
}

// The first of `keys` the container has, as text.
const char* firstTag(const AVDictionary* dict, std::initializer_list<const char*> keys) {
  for (const char* key : keys) {
    if (const char* v = tag(dict, key)) return v;
  }
  return nullptr;
}

const AVStream* firstVideo(const AVFormatContext* ctx) {
  for (unsigned i = 0; i < ctx->nb_streams; ++i) {
    const AVStream* s = ctx->streams[i];
    if (s->codecpar->codec_type == AVMEDIA_TYPE_VIDEO &&
        (s->disposition & AV_DISPOSITION_ATTACHED_PIC) == 0)
      return s;
  }
  return nullptr;
}

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

struct FormatContext {
  AVFormatContext* ctx = nullptr;
  ~FormatContext() {
    if (ctx != nullptr) avformat_close_input(&ctx);
  }
};

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

std::optional<std::int32_t> read(const std::filesystem::path& path, const icu::TimeZone& zone,
                                 MetadataMap& out) {
  // "file:" keeps a colon in the name from being read as a protocol.
  std::string url = "file:";
  url += path.native();
  FormatContext f;
  if (avformat_open_input(&f.ctx, url.c_str(), nullptr, nullptr) < 0) return std::nullopt;
  // A still picture under a video's name: not ours to decode.
  const std::string_view format = f.ctx->iformat->name;
  if (format.ends_with("_pipe") || format == "image2") return std::nullopt;

  const AVStream* video = firstVideo(f.ctx);
  const bool headerEnough = video != nullptr && video->codecpar->width > 0 &&
                            video->codecpar->height > 0 &&
                            video->codecpar->codec_id != AV_CODEC_ID_NONE;
  if (!headerEnough || f.ctx->duration == AV_NOPTS_VALUE) {
    f.ctx->probesize = 5'000'000;
    f.ctx->max_analyze_duration = 5 * AV_TIME_BASE;
    avformat_find_stream_info(f.ctx, nullptr);
    video = firstVideo(f.ctx);
  }

  std::optional<std::int32_t> shotOffset;
  const AVDictionary* meta = f.ctx->metadata;
  for (const char* key : {"com.apple.quicktime.creationdate", "creation_time"}) {
    const char* text = tag(meta, key);
    if (text == nullptr) continue;
    if (const auto parsed = TimeParsing::isoDate(text, zone)) {
      out.set(MetadataKey::date, MetadataValue::date(parsed->date));
      shotOffset = parsed->offsetSeconds;
      break;
    }
  }
  if (const char* v = firstTag(meta, {"com.apple.quicktime.make", "make"})) {
    MetadataText::setText(out, MetadataKey::make, v);
  }
  if (const char* v = firstTag(meta, {"com.apple.quicktime.model", "model"})) {
    MetadataText::setText(out, MetadataKey::model, v);
  }
  if (const char* v = firstTag(meta, {"title", "com.apple.quicktime.title"})) {
    MetadataText::setText(out, MetadataKey::title, v);
  }
  if (f.ctx->duration != AV_NOPTS_VALUE && f.ctx->duration > 0) {
    out.set(MetadataKey::duration, MetadataValue::number(static_cast<double>(f.ctx->duration) /
                                                         static_cast<double>(AV_TIME_BASE)));
  }
  if (video != nullptr) {
    const AVCodecParameters* p = video->codecpar;
    if (p->width > 0 && p->height > 0) {
      out.set(MetadataKey::width, MetadataValue::integer(p->width));
      out.set(MetadataKey::height, MetadataValue::integer(p->height));
    }
    AVRational rate = video->avg_frame_rate;
    if (rate.num <= 0 || rate.den <= 0) rate = video->r_frame_rate;
    if (rate.num > 0 && rate.den > 0) {
      const double fps = av_q2d(rate);
      if (std::isfinite(fps) && fps > 0 && fps < 10000) {
        out.set(MetadataKey::fps, MetadataValue::number(fps));
      }
    }
    const std::string fourcc = fourccOf(p->codec_tag);
    if (const auto name = codecName(fourcc)) {
      out.set(MetadataKey::codec, MetadataValue::text(std::string(*name)));
    } else if (p->codec_tag != 0 && printable(fourcc)) {
      MetadataText::setText(out, MetadataKey::codec, fourcc);
    } else if (p->codec_id != AV_CODEC_ID_NONE) {
      MetadataText::setText(out, MetadataKey::codec, avcodec_get_name(p->codec_id));
    }
  }
  return shotOffset;
}

}  // namespace tessane::VideoReader
