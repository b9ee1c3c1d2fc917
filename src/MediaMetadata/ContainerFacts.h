// What a video container or a PDF document says of itself, as the library reading it gives it:
// texts as they stand and numbers, nothing interpreted. This is the whole of what the modules
// that hold FFmpeg and poppler (tessane-video, tessane-pdf) hand back; VideoReader and PdfReader
// make metadata values of it.
//
// Each module exports one C entry point of the type below. It never throws, and it leaves the
// facts as they were made when the file can't be opened.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tessane {

struct VideoFacts {
  bool opened = false;
  bool stillPicture = false;  // an image format under a video's name: nothing of it is read
  std::optional<std::string> quickTimeCreationDate;  // com.apple.quicktime.creationdate
  std::optional<std::string> creationTime;           // the container's creation_time
  std::optional<std::string> make, model, title;
  std::optional<double> durationSeconds;
  // The first video track (cover pictures aside), when there is one.
  bool hasVideoTrack = false;
  int width = 0, height = 0;
  double framesPerSecond = 0;  // 0: the track doesn't say
  std::uint32_t codecTag = 0;  // the four-character code, first character in the low byte
  // Whether that code names the track's codec as QuickTime or AVI files name codecs; a transport
  // stream's code is its stream type or a registration ("HDMV"), which name no codec.
  bool codecTagNamesCodec = false;
  std::string codecLibraryName;  // the library's name for the codec; empty when unknown
};

struct PdfFacts {
  bool opened = false;
  std::string title, author, creationDate;  // UTF-8; the date as the document writes it
  int pages = 0;
};

}  // namespace tessane

extern "C" {
using TessaneReadVideoFacts = void (*)(const char* path, tessane::VideoFacts* out) noexcept;
using TessaneReadPdfFacts = void (*)(const char* path, tessane::PdfFacts* out) noexcept;
}
