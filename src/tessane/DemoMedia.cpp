// The module tessane-demo: the demo shoot's pictures, drawn with Qt, and its video, written with
// libavformat.
#include "DemoMedia.h"

#include <QColor>
#include <QImage>
#include <QImageWriter>
#include <QPainter>

#include <cstdint>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/dict.h>
#include <libavutil/frame.h>
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

// Frames of a slow colour sweep, encoded as MPEG-4 part 2 (FFmpeg's own encoder, always built
// in), so that the clip is a real video whose size and codec any reader can tell.
class Encoder {
 public:
  ~Encoder() {
    av_frame_free(&frame_);
    av_packet_free(&packet_);
    avcodec_free_context(&codec_);
  }
  bool open(int width, int height, int fps) {
    const AVCodec* mpeg4 = avcodec_find_encoder(AV_CODEC_ID_MPEG4);
    if (mpeg4 == nullptr || (codec_ = avcodec_alloc_context3(mpeg4)) == nullptr) return false;
    codec_->width = width;
    codec_->height = height;
    codec_->time_base = AVRational{1, fps};
    codec_->framerate = AVRational{fps, 1};
    codec_->pix_fmt = AV_PIX_FMT_YUV420P;
    codec_->gop_size = fps;
    codec_->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;  // the MP4 keeps the decoder set-up in its header
    frame_ = av_frame_alloc();
    packet_ = av_packet_alloc();
    if (frame_ == nullptr || packet_ == nullptr || avcodec_open2(codec_, mpeg4, nullptr) < 0) {
      return false;
    }
    frame_->format = codec_->pix_fmt;
    frame_->width = width;
    frame_->height = height;
    return av_frame_get_buffer(frame_, 0) >= 0;
  }
  AVCodecContext* context() const { return codec_; }
  // Encodes frame `index` (or, with a negative index, flushes) and writes what comes out.
  bool encode(int index, AVFormatContext* out, AVStream* stream) {
    if (index >= 0) {
      if (av_frame_make_writable(frame_) < 0) return false;
      for (int y = 0; y < codec_->height; ++y) {
        for (int x = 0; x < codec_->width; ++x)
          frame_->data[0][y * frame_->linesize[0] + x] =
              static_cast<std::uint8_t>(x + y + index * 3);
      }
      for (int y = 0; y < codec_->height / 2; ++y) {
        for (int x = 0; x < codec_->width / 2; ++x) {
          frame_->data[1][y * frame_->linesize[1] + x] = static_cast<std::uint8_t>(128 + y + index);
          frame_->data[2][y * frame_->linesize[2] + x] =
              static_cast<std::uint8_t>(64 + x + index * 5);
        }
      }
      frame_->pts = index;
    }
    if (avcodec_send_frame(codec_, index >= 0 ? frame_ : nullptr) < 0) return false;
    while (true) {
      const int got = avcodec_receive_packet(codec_, packet_);
      if (got == AVERROR(EAGAIN) || got == AVERROR_EOF) return true;
      if (got < 0) return false;
      av_packet_rescale_ts(packet_, codec_->time_base, stream->time_base);
      packet_->stream_index = stream->index;
      if (av_interleaved_write_frame(out, packet_) < 0) return false;
    }
  }

 private:
  AVCodecContext* codec_ = nullptr;
  AVFrame* frame_ = nullptr;
  AVPacket* packet_ = nullptr;
};

std::string movie(const char* path, const char* creationTime, const char* make, const char* model) {
  constexpr int kWidth = 640, kHeight = 360, kFps = 25;
  Encoder encoder;
  if (!encoder.open(kWidth, kHeight, kFps)) return "no MPEG-4 encoder in libavcodec";
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
  if (avcodec_parameters_from_context(stream->codecpar, encoder.context()) < 0) {
    return fail("set up");
  }
  stream->time_base = AVRational{1, kFps};
  stream->avg_frame_rate = AVRational{kFps, 1};
  av_dict_set(&ctx->metadata, "creation_time", creationTime, 0);
  av_dict_set(&ctx->metadata, "make", make, 0);
  av_dict_set(&ctx->metadata, "model", model, 0);
  if (avio_open(&ctx->pb, path, AVIO_FLAG_WRITE) < 0) return fail("create");
  AVDictionary* options = nullptr;
  av_dict_set(&options, "movflags", "use_metadata_tags", 0);  // keeps the make and model
  const int header = avformat_write_header(ctx, &options);
  av_dict_free(&options);
  if (header < 0) return fail("write");
  for (int i = 0; i < 2 * kFps; ++i) {
    if (!encoder.encode(i, ctx, stream)) return fail("encode");
  }
  if (!encoder.encode(-1, ctx, stream) || av_write_trailer(ctx) < 0) return fail("finish");
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
