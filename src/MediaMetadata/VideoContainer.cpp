// The module tessane-video: a video container's header read through libavformat, as VideoFacts.
// The header is read without the slow stream probe; the probe runs only when the header leaves
// the video track's size or codec unknown (MPEG transport streams, for one), or the duration.
#include <cmath>
#include <mutex>
#include <string>
#include <string_view>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/dict.h>
#include <libavutil/log.h>
}

#include "ContainerFacts.h"

namespace {

const char* tag(const AVDictionary* dict, const char* key) {
  const AVDictionaryEntry* e = av_dict_get(dict, key, nullptr, 0);
  return e != nullptr ? e->value : nullptr;
}

std::optional<std::string> firstTag(const AVDictionary* dict,
                                    std::initializer_list<const char*> keys) {
  for (const char* key : keys) {
    if (const char* v = tag(dict, key)) return std::string(v);
  }
  return std::nullopt;
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

struct FormatContext {
  AVFormatContext* ctx = nullptr;
  ~FormatContext() {
    if (ctx != nullptr) avformat_close_input(&ctx);
  }
};

void read(const char* path, tessane::VideoFacts& out) {
  // FFmpeg's log goes nowhere near the user.
  static std::once_flag quiet;
  std::call_once(quiet, [] { av_log_set_level(AV_LOG_QUIET); });

  // "file:" keeps a colon in the name from being read as a protocol.
  std::string url = "file:";
  url += path;
  FormatContext f;
  if (avformat_open_input(&f.ctx, url.c_str(), nullptr, nullptr) < 0) return;
  out.opened = true;
  const std::string_view format = f.ctx->iformat->name;
  if (format.ends_with("_pipe") || format == "image2") {
    out.stillPicture = true;
    return;
  }

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

  const AVDictionary* meta = f.ctx->metadata;
  out.quickTimeCreationDate = firstTag(meta, {"com.apple.quicktime.creationdate"});
  out.creationTime = firstTag(meta, {"creation_time"});
  out.make = firstTag(meta, {"com.apple.quicktime.make", "make"});
  out.model = firstTag(meta, {"com.apple.quicktime.model", "model"});
  out.title = firstTag(meta, {"title", "com.apple.quicktime.title"});
  if (f.ctx->duration != AV_NOPTS_VALUE && f.ctx->duration > 0) {
    out.durationSeconds = static_cast<double>(f.ctx->duration) / static_cast<double>(AV_TIME_BASE);
  }
  if (video == nullptr) return;
  out.hasVideoTrack = true;
  const AVCodecParameters* p = video->codecpar;
  out.width = p->width;
  out.height = p->height;
  AVRational rate = video->avg_frame_rate;
  if (rate.num <= 0 || rate.den <= 0) rate = video->r_frame_rate;
  if (rate.num > 0 && rate.den > 0) out.framesPerSecond = av_q2d(rate);
  out.codecTag = p->codec_tag;
  if (p->codec_id != AV_CODEC_ID_NONE) {
    out.codecLibraryName = avcodec_get_name(p->codec_id);
    const AVCodecTag* const tables[] = {avformat_get_mov_video_tags(),
                                        avformat_get_riff_video_tags(), nullptr};
    out.codecTagNamesCodec =
        p->codec_tag != 0 && av_codec_get_id(tables, p->codec_tag) == p->codec_id;
  }
}

}  // namespace

extern "C" __attribute__((visibility("default"))) void tessaneReadVideoFacts(
    const char* path, tessane::VideoFacts* out) noexcept {
  try {
    read(path, *out);
  } catch (...) {
    // Only an allocation can throw here; the facts read so far stand.
  }
}
