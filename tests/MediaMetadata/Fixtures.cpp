#include "Fixtures.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <stdexcept>
#include <vector>

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
#include <exiv2/exiv2.hpp>
#pragma GCC diagnostic pop

extern "C" {
#include <libavformat/avformat.h>
#include <libavutil/dict.h>
}

namespace tessane::testing {

std::string tinyJpeg(int width, int height) {
  std::string j;
  const auto put = [&](std::initializer_list<int> bytes) {
    for (const int b : bytes)
      j.push_back(static_cast<char>(b));
  };
  put({0xFF, 0xD8});                    // start of image
  put({0xFF, 0xDB, 0x00, 0x43, 0x00});  // quantisation table 0, all ones
  for (int i = 0; i < 64; ++i)
    put({0x01});
  put({0xFF, 0xC0, 0x00, 0x0B, 0x08, (height >> 8) & 0xFF, height & 0xFF, (width >> 8) & 0xFF,
       width & 0xFF, 0x01, 0x01, 0x11, 0x00});                        // frame header
  put({0xFF, 0xDA, 0x00, 0x08, 0x01, 0x01, 0x00, 0x00, 0x3F, 0x00});  // scan header
  put({0x00, 0x00, 0xFF, 0xD9});                                      // scan data, end
  return j;
}

void writeMetadata(const std::filesystem::path& path,
                   const std::map<std::string, std::string>& values) {
  auto image = Exiv2::ImageFactory::open(path.string());
  image->readMetadata();
  Exiv2::ExifData exif = image->exifData();
  Exiv2::IptcData iptc = image->iptcData();
  Exiv2::XmpData xmp = image->xmpData();
  for (const auto& [key, value] : values) {
    if (key.rfind("Iptc.", 0) == 0) {
      iptc[key] = value;
    } else if (key.rfind("Xmp.", 0) == 0) {
      xmp[key] = value;
    } else {
      const Exiv2::ExifKey k(key);
      auto v = Exiv2::Value::create(k.defaultTypeId());
      v->read(value);
      exif.add(k, v.get());
    }
  }
  image->setExifData(exif);
  image->setIptcData(iptc);
  image->setXmpData(xmp);
  image->writeMetadata();
}

void writeMovie(const std::filesystem::path& path, const std::string& fourcc, int width, int height,
                int fps, const std::map<std::string, std::string>& tags) {
  AVFormatContext* ctx = nullptr;
  if (avformat_alloc_output_context2(&ctx, nullptr, nullptr, path.c_str()) < 0) {
    throw std::runtime_error("no muxer");
  }
  AVStream* st = avformat_new_stream(ctx, nullptr);
  st->codecpar->codec_type = AVMEDIA_TYPE_VIDEO;
  st->codecpar->codec_id = AV_CODEC_ID_PRORES;
  std::uint32_t tag = 0;
  for (int i = 3; i >= 0; --i)
    tag = (tag << 8) | static_cast<unsigned char>(fourcc[static_cast<std::size_t>(i)]);
  st->codecpar->codec_tag = tag;
  st->codecpar->width = width;
  st->codecpar->height = height;
  st->time_base = AVRational{1, fps};
  st->avg_frame_rate = AVRational{fps, 1};
  for (const auto& [key, value] : tags)
    av_dict_set(&ctx->metadata, key.c_str(), value.c_str(), 0);
  AVDictionary* options = nullptr;
  av_dict_set(&options, "movflags", "use_metadata_tags", 0);
  if (avio_open(&ctx->pb, path.c_str(), AVIO_FLAG_WRITE) < 0 ||
      avformat_write_header(ctx, &options) < 0) {
    throw std::runtime_error("can't write header");
  }
  av_dict_free(&options);
  std::vector<std::uint8_t> frame(64, 0x11);
  for (int i = 0; i < 2 * fps; ++i) {
    AVPacket* pkt = av_packet_alloc();
    av_new_packet(pkt, static_cast<int>(frame.size()));
    std::copy(frame.begin(), frame.end(), pkt->data);
    pkt->stream_index = 0;
    pkt->pts = pkt->dts = av_rescale_q(i, AVRational{1, fps}, st->time_base);
    pkt->duration = av_rescale_q(1, AVRational{1, fps}, st->time_base);
    pkt->flags |= AV_PKT_FLAG_KEY;
    av_interleaved_write_frame(ctx, pkt);
    av_packet_free(&pkt);
  }
  av_write_trailer(ctx);
  avio_closep(&ctx->pb);
  avformat_free_context(ctx);
}

void writeH264Clip(const std::filesystem::path& path) {
  AVFormatContext* ctx = nullptr;
  if (avformat_alloc_output_context2(&ctx, nullptr, nullptr, path.c_str()) < 0) {
    throw std::runtime_error("no muxer");
  }
  AVStream* st = avformat_new_stream(ctx, nullptr);
  st->codecpar->codec_type = AVMEDIA_TYPE_VIDEO;
  st->codecpar->codec_id = AV_CODEC_ID_H264;
  st->codecpar->width = 64;
  st->codecpar->height = 48;
  st->time_base = AVRational{1, 25};
  if (avio_open(&ctx->pb, path.c_str(), AVIO_FLAG_WRITE) < 0 ||
      avformat_write_header(ctx, nullptr) < 0) {
    throw std::runtime_error("can't write header");
  }
  // Access units in Annex B form: a start code, then a NAL unit of a coded slice.
  const std::uint8_t unit[] = {0, 0, 0, 1, 0x09, 0xf0, 0, 0, 0, 1, 0x65, 0x88, 0x84, 0x00, 0x33};
  for (int i = 0; i < 25; ++i) {
    AVPacket* pkt = av_packet_alloc();
    av_new_packet(pkt, static_cast<int>(sizeof unit));
    std::copy(std::begin(unit), std::end(unit), pkt->data);
    pkt->stream_index = 0;
    pkt->pts = pkt->dts = av_rescale_q(i, AVRational{1, 25}, st->time_base);
    pkt->duration = av_rescale_q(1, AVRational{1, 25}, st->time_base);
    pkt->flags |= AV_PKT_FLAG_KEY;
    av_interleaved_write_frame(ctx, pkt);
    av_packet_free(&pkt);
  }
  av_write_trailer(ctx);
  avio_closep(&ctx->pb);
  avformat_free_context(ctx);
}

std::filesystem::path samplesFolder() {
  const char* env = std::getenv("TESSANE_SAMPLES");
  if (env == nullptr || *env == '\0') return {};
  std::error_code ec;
  if (!std::filesystem::is_directory(env, ec)) return {};
  return std::filesystem::path(env);
}

}  // namespace tessane::testing
