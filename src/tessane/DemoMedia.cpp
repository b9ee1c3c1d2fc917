// The module tessane-demo: the demo shoot's pictures, drawn with Qt, and its video, written with
// libavformat.
#include "DemoMedia.h"

#include <QColor>
#include <QImage>
#include <QImageWriter>
#include <QPainter>

#include <algorithm>
#include <cstdint>
#include <vector>

extern "C" {
#include <libavformat/avformat.h>
#include <libavutil/dict.h>
}

namespace {

using tessane::cli::kDemoPictureHeight;
using tessane::cli::kDemoPictureWidth;

std::string picture(const char* path, int seed) {
  QImage image(kDemoPictureWidth, kDemoPictureHeight, QImage::Format_RGB32);
  QPainter painter(&image);
  QLinearGradient sky(0, 0, 0, 200);
  sky.setColorAt(0, QColor::fromHsv(200 + seed % 30, 120, 230));
  sky.setColorAt(1, QColor::fromHsv(40, 60, 250));
  painter.fillRect(0, 0, kDemoPictureWidth, 200, sky);
  painter.fillRect(0, 200, kDemoPictureWidth, kDemoPictureHeight - 200,
                   QColor::fromHsv(100, 150, 140 + seed % 40));
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  for (int i = 0; i < 5; ++i) {
    painter.setBrush(QColor::fromHsv((seed * (i + 3)) % 360, 160, 220));
    painter.drawEllipse(40 + ((seed + i * 91) % 380), 150 + ((seed * (i + 1)) % 110), 30 + i * 6,
                        50 + i * 8);
  }
  painter.end();
  QImageWriter writer(QString::fromLocal8Bit(path), "jpeg");
  writer.setQuality(80);
  if (writer.write(image)) return {};
  return "couldn’t write the picture: " + writer.errorString().toStdString();
}

std::string movie(const char* path, const char* creationTime, const char* make, const char* model) {
  AVFormatContext* ctx = nullptr;
  if (avformat_alloc_output_context2(&ctx, nullptr, "mp4", path) < 0 || ctx == nullptr) {
    return "no MP4 writer in libavformat";
  }
  const auto fail = [&ctx](const char* what) {
    if (ctx->pb != nullptr) avio_closep(&ctx->pb);
    avformat_free_context(ctx);
    return std::string("couldn’t ") + what + " the video";
  };
  AVStream* stream = avformat_new_stream(ctx, nullptr);
  if (stream == nullptr) return fail("make a track for");
  constexpr int fps = 25;
  stream->codecpar->codec_type = AVMEDIA_TYPE_VIDEO;
  stream->codecpar->codec_id = AV_CODEC_ID_MPEG4;
  stream->codecpar->width = 640;
  stream->codecpar->height = 360;
  stream->time_base = AVRational{1, fps};
  stream->avg_frame_rate = AVRational{fps, 1};
  av_dict_set(&ctx->metadata, "creation_time", creationTime, 0);
  av_dict_set(&ctx->metadata, "make", make, 0);
  av_dict_set(&ctx->metadata, "model", model, 0);
  if (avio_open(&ctx->pb, path, AVIO_FLAG_WRITE) < 0) return fail("create");
  AVDictionary* options = nullptr;
  av_dict_set(&options, "movflags", "use_metadata_tags", 0);  // keeps the make and model
  const int header = avformat_write_header(ctx, &options);
  av_dict_free(&options);
  if (header < 0) return fail("write");
  const std::vector<std::uint8_t> frame(64, 0x11);
  for (int i = 0; i < 2 * fps; ++i) {
    AVPacket* packet = av_packet_alloc();
    if (packet == nullptr || av_new_packet(packet, static_cast<int>(frame.size())) < 0) {
      av_packet_free(&packet);
      return fail("write");
    }
    std::copy(frame.begin(), frame.end(), packet->data);
    packet->stream_index = 0;
    packet->pts = packet->dts = av_rescale_q(i, AVRational{1, fps}, stream->time_base);
    packet->duration = av_rescale_q(1, AVRational{1, fps}, stream->time_base);
    packet->flags |= AV_PKT_FLAG_KEY;
    const int written = av_interleaved_write_frame(ctx, packet);
    av_packet_free(&packet);
    if (written < 0) return fail("write");
  }
  if (av_write_trailer(ctx) < 0) return fail("finish");
  avio_closep(&ctx->pb);
  avformat_free_context(ctx);
  return {};
}

}  // namespace

extern "C" __attribute__((visibility("default"))) std::string tessaneDemoPicture(
    const char* path, int seed) noexcept {
  try {
    return picture(path, seed);
  } catch (...) {
    return "couldn’t draw the picture";
  }
}

extern "C" __attribute__((visibility("default"))) std::string tessaneDemoMovie(
    const char* path, const char* creationTime, const char* make, const char* model) noexcept {
  try {
    return movie(path, creationTime, make, model);
  } catch (...) {
    return "couldn’t write the video";
  }
}
