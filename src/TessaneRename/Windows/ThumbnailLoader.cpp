#include "TessaneRename/Windows/ThumbnailLoader.h"

#include <QBuffer>
#include <QImageReader>
#include <QTransform>

#include <exiv2/exiv2.hpp>

#include <memory>

#include "MediaMetadata/MediaLibraries.h"
#include "RenameEngine/FileKind.h"

namespace tessane::ThumbnailLoader {

namespace {

// Reads through QImageReader, asking the decoder for a reduced size (JPEG decodes at 1/2, 1/4,
// 1/8 directly, which is most of the speed).
QImage readScaled(QImageReader& reader, int maxSide) {
  reader.setAutoTransform(true);
  const QSize full = reader.size();
  if (full.isValid() && (full.width() > maxSide || full.height() > maxSide)) {
    reader.setScaledSize(full.scaled(maxSide, maxSide, Qt::KeepAspectRatio));
  }
  QImage image = reader.read();
  if (image.isNull()) return {};
  if (image.width() > maxSide || image.height() > maxSide) {
    image = image.scaled(maxSide, maxSide, Qt::KeepAspectRatio, Qt::SmoothTransformation);
  }
  return image;
}

// The EXIF orientation (1 to 8) as the transform that shows the picture upright.
QTransform upright(long orientation) {
  QTransform t;
  switch (orientation) {
    case 2:
      return t.scale(-1, 1);
    case 3:
      return t.rotate(180);
    case 4:
      return t.scale(1, -1);
    case 5:
      return t.rotate(90).scale(-1, 1);
    case 6:
      return t.rotate(90);
    case 7:
      return t.rotate(-90).scale(-1, 1);
    case 8:
      return t.rotate(-90);
    default:
      return t;
  }
}

QImage embeddedPreview(const std::filesystem::path& file, int maxSide) {
  try {
    std::unique_ptr<Exiv2::Image> image(Exiv2::ImageFactory::open(file.string()).release());
    if (!image) return {};
    image->readMetadata();
    Exiv2::PreviewManager previews(*image);
    const Exiv2::PreviewPropertiesList list = previews.getPreviewProperties();  // smallest first
    if (list.empty()) return {};
    const Exiv2::PreviewProperties* chosen = &list.back();
    for (const Exiv2::PreviewProperties& p : list) {
      if (p.width_ >= static_cast<std::uint32_t>(maxSide) ||
          p.height_ >= static_cast<std::uint32_t>(maxSide)) {
        chosen = &p;
        break;
      }
    }
    const Exiv2::PreviewImage preview = previews.getPreviewImage(*chosen);
    QByteArray bytes(reinterpret_cast<const char*>(preview.pData()),
                     static_cast<qsizetype>(preview.size()));
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer);
    QImage picture = readScaled(reader, maxSide);
    if (picture.isNull()) return {};
    const Exiv2::ExifData& exif = image->exifData();
    const auto orientation = exif.findKey(Exiv2::ExifKey("Exif.Image.Orientation"));
    if (orientation != exif.end() && orientation->count() > 0) {
      picture = picture.transformed(upright(orientation->toLong()));
    }
    return picture;
  } catch (...) {
    return {};  // a damaged file, or one Exiv2 doesn't know: the reader below may still manage
  }
}

}  // namespace

QImage load(const std::filesystem::path& file, int maxSide) {
  const FileKind kind = fileKindOf(file.filename().string());
  if (kind != FileKind::raw && kind != FileKind::image) return {};
  MediaLibraries::initialize();
  QImage picture = embeddedPreview(file, maxSide);
  if (!picture.isNull() || kind == FileKind::raw) return picture;
  QImageReader reader(QString::fromStdString(file.string()));
  return readScaled(reader, maxSide);
}

}  // namespace tessane::ThumbnailLoader
