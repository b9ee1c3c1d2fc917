#include "MediaMetadata/MetadataProvider.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <taglib/id3v2tag.h>
#include <taglib/mpegfile.h>
#include <unicode/timezone.h>

#include <chrono>
#include <memory>
#include <span>

#include "FileContents.h"
#include "FinishesInTime.h"
#include "Fixtures.h"
#include "MediaMetadata/ImageReader.h"
#include "Rules.h"
#include "TempFolder.h"

namespace tessane {
namespace {

using testing::utc;

using namespace std::chrono;
using testing::TempFolder;

std::unique_ptr<icu::TimeZone> rome() {
  return std::unique_ptr<icu::TimeZone>(icu::TimeZone::createTimeZone("Europe/Rome"));
}

std::string textOf(const MetadataMap& m, MetadataKey k) {
  const MetadataValue* v = m.find(k);
  return v != nullptr && v->asText() != nullptr ? *v->asText() : std::string("<none>");
}

class Provider : public ::testing::Test {
 protected:
  MetadataMap read(const std::filesystem::path& p, FileKind kind) const {
    return provider.metadata(p, kind);
  }
  std::filesystem::path jpeg(const std::string& name,
                             const std::map<std::string, std::string>& values, int w = 64,
                             int h = 48) const {
    const auto p = dir.file(name, testing::tinyJpeg(w, h));
    testing::writeMetadata(p, values);
    return p;
  }

  TempFolder dir;
  MetadataProvider provider{*rome()};
};

TEST_F(Provider, ReadsTheCameraExposureAndCaptureTimeOfAnImage) {
  const auto p = jpeg("DSC_0001.JPG",
                      {
                          {"Exif.Image.Make", "  NIKON CORPORATION  "},
                          {"Exif.Image.Model", "NIKON Z 6"},
                          {"Exif.Photo.BodySerialNumber", "3012345"},
                          {"Exif.Photo.LensModel", "NIKKOR Z 24-70mm f/4 S"},
                          {"Exif.Photo.ISOSpeedRatings", "400"},
                          {"Exif.Photo.ExposureTime", "1/250"},
                          {"Exif.Photo.FNumber", "28/10"},
                          {"Exif.Photo.FocalLength", "35/1"},
                          {"Exif.Photo.DateTimeOriginal", "2024:05:01 14:03:22"},
                          {"Exif.Photo.SubSecTimeOriginal", "25"},
                          {"Exif.Photo.DateTimeDigitized", "2020:01:01 00:00:00"},
                          {"Exif.Image.Artist", "Ada Rossi"},
                          {"Iptc.Application2.Byline", "Someone Else"},
                          {"Iptc.Application2.City", "Roma"},
                          {"Iptc.Application2.SubLocation", "Trastevere"},
                          {"Iptc.Application2.ObjectName", "Ponte Sisto"},
                          {"Iptc.Application2.Headline", "Evening light"},
                      },
                      640, 480);
  const MetadataMap m = read(p, FileKind::image);
  EXPECT_EQ(textOf(m, MetadataKey::make), "NIKON CORPORATION");
  EXPECT_EQ(textOf(m, MetadataKey::model), "NIKON Z 6");
  EXPECT_EQ(textOf(m, MetadataKey::serial), "3012345");
  EXPECT_EQ(textOf(m, MetadataKey::lens), "NIKKOR Z 24-70mm f/4 S");
  EXPECT_EQ(*m.find(MetadataKey::iso), MetadataValue::integer(400));
  EXPECT_EQ(*m.find(MetadataKey::shutter), MetadataValue::number(0.004));
  EXPECT_EQ(*m.find(MetadataKey::aperture), MetadataValue::number(2.8));
  EXPECT_EQ(*m.find(MetadataKey::focal), MetadataValue::number(35.0));
  EXPECT_EQ(*m.find(MetadataKey::width), MetadataValue::integer(640));
  EXPECT_EQ(*m.find(MetadataKey::height), MetadataValue::integer(480));
  // 14:03:22.25 in Rome (summer time) is 12:03:22.25 UTC.
  EXPECT_EQ(*m.find(MetadataKey::date),
            MetadataValue::date(utc(2024, 5, 1, 12, 3, 22) + milliseconds{250}));
  EXPECT_EQ(textOf(m, MetadataKey::author), "Ada Rossi");  // Artist before By-line
  EXPECT_EQ(textOf(m, MetadataKey::city), "Roma");
  EXPECT_EQ(textOf(m, MetadataKey::location), "Trastevere");
  EXPECT_EQ(textOf(m, MetadataKey::title), "Ponte Sisto");
  EXPECT_EQ(textOf(m, MetadataKey::headline), "Evening light");
  EXPECT_NE(m.find(MetadataKey::modified), nullptr);
}

TEST_F(Provider, CaptureTimeFallsBackAndStaysStrict) {
  const auto digitized = jpeg("a.jpg", {{"Exif.Photo.DateTimeDigitized", "2024:01:15 08:00:00"},
                                        {"Exif.Image.DateTime", "2023:01:01 00:00:00"}});
  EXPECT_EQ(*read(digitized, FileKind::image).find(MetadataKey::date),
            MetadataValue::date(utc(2024, 1, 15, 7, 0, 0)));

  const auto onlyDateTime = jpeg("b.jpg", {{"Exif.Image.DateTime", "2023:07:01 12:00:00"},
                                           {"Exif.Photo.SubSecTimeOriginal", "5"}});
  EXPECT_EQ(*read(onlyDateTime, FileKind::image).find(MetadataKey::date),
            MetadataValue::date(utc(2023, 7, 1, 10, 0, 0)));

  // A malformed capture time gives no date: the digitized time is not taken in its place.
  const auto malformed = jpeg("c.jpg", {{"Exif.Photo.DateTimeOriginal", "2024:13:45 99:00:00"},
                                        {"Exif.Photo.DateTimeDigitized", "2024:01:15 08:00:00"},
                                        {"Exif.Image.Make", "Canon"}});
  const MetadataMap m = read(malformed, FileKind::image);
  EXPECT_EQ(m.find(MetadataKey::date), nullptr);
  EXPECT_EQ(textOf(m, MetadataKey::make), "Canon");
  EXPECT_NE(m.find(MetadataKey::modified), nullptr);

  // Blanks are how EXIF says "unknown": that is no capture time, and the next source is read.
  const auto blank = jpeg("g.jpg", {{"Exif.Photo.DateTimeOriginal", "    :  :     :  :  "},
                                    {"Exif.Photo.DateTimeDigitized", "2024:01:15 08:00:00"}});
  EXPECT_EQ(*read(blank, FileKind::image).find(MetadataKey::date),
            MetadataValue::date(utc(2024, 1, 15, 7, 0, 0)));
}

TEST_F(Provider, ACaptureTimeWithItsOwnOffsetIsReadAtThatOffset) {
  const auto phone = jpeg("IMG_0001.JPG", {{"Exif.Photo.DateTimeOriginal", "2025:06:14 11:25:40"},
                                           {"Exif.Photo.OffsetTimeOriginal", "+03:00"},
                                           {"Exif.Photo.OffsetTime", "+01:00"}});
  const FileMetadata m = provider.read(phone, FileKind::image);
  EXPECT_EQ(*m.values.find(MetadataKey::date), MetadataValue::date(utc(2025, 6, 14, 8, 25, 40)));
  EXPECT_EQ(m.values.shotOffset(), 3 * 3600);
  EXPECT_EQ(m.shotUtcOffset, 3 * 3600);
  // A blank or malformed offset says nothing: the naming zone reads the time.
  const auto blank = jpeg("b.jpg", {{"Exif.Photo.DateTimeOriginal", "2025:06:14 11:25:40"},
                                    {"Exif.Photo.OffsetTimeOriginal", "   :  "}});
  const MetadataMap b = read(blank, FileKind::image);
  EXPECT_EQ(*b.find(MetadataKey::date), MetadataValue::date(utc(2025, 6, 14, 9, 25, 40)));
  EXPECT_EQ(b.shotOffset(), std::nullopt);
}

TEST_F(Provider, IsoFallsBackToIsoSpeedAndBylineToAuthor) {
  const auto p = jpeg(
      "d.jpg", {{"Exif.Photo.ISOSpeed", "12800"}, {"Iptc.Application2.Byline", "  Bo Berg\n"}});
  const MetadataMap m = read(p, FileKind::image);
  EXPECT_EQ(*m.find(MetadataKey::iso), MetadataValue::integer(12800));
  EXPECT_EQ(textOf(m, MetadataKey::author), "Bo Berg");
}

TEST_F(Provider, RawSizeIsThePhotosNotTheContainers) {
  // A RAW file whose decodable image is a small preview: the EXIF size is the photo's.
  const auto p = jpeg(
      "IMG_0001.CR2",
      {{"Exif.Photo.PixelXDimension", "6000"}, {"Exif.Photo.PixelYDimension", "4000"}}, 160, 120);
  const MetadataMap m = read(p, FileKind::raw);
  EXPECT_EQ(*m.find(MetadataKey::width), MetadataValue::integer(6000));
  EXPECT_EQ(*m.find(MetadataKey::height), MetadataValue::integer(4000));
  // The same bytes as an ordinary image give the decoded size.
  EXPECT_EQ(*read(p, FileKind::image).find(MetadataKey::width), MetadataValue::integer(160));
}

TEST_F(Provider, TheSidecarIsReadLastAndItsEmptyValuesAreSkipped) {
  const auto p = jpeg("DSC_0002.JPG", {{"Iptc.Application2.City", "Milano"},
                                       {"Iptc.Application2.Headline", "From the file"}});
  dir.file("DSC_0002.xmp", R"(<x:xmpmeta xmlns:x="adobe:ns:meta/">
 <rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
  <rdf:Description rdf:about=""
    xmlns:photoshop="http://ns.adobe.com/photoshop/1.0/"
    xmlns:Iptc4xmpCore="http://iptc.org/std/Iptc4xmpCore/1.0/xmlns/"
    xmlns:dc="http://purl.org/dc/elements/1.1/" xmlns:exif="http://ns.adobe.com/exif/1.0/"
    exif:DateTimeOriginal="2025-06-14T11:25:40+03:00"
    photoshop:City="  Venezia
 " photoshop:Headline="   " Iptc4xmpCore:Location="Rialto">
   <dc:title><rdf:Alt><rdf:li xml:lang="it">Ponte</rdf:li><rdf:li xml:lang="x-default">Bridge</rdf:li></rdf:Alt></dc:title>
   <dc:creator><rdf:Seq><rdf:li>Ada Rossi</rdf:li><rdf:li>Bo Berg</rdf:li></rdf:Seq></dc:creator>
  </rdf:Description>
 </rdf:RDF>
</x:xmpmeta>)");
  const MetadataMap m = read(p, FileKind::image);
  EXPECT_EQ(textOf(m, MetadataKey::city), "Venezia");
  EXPECT_EQ(textOf(m, MetadataKey::headline), "From the file");
  EXPECT_EQ(textOf(m, MetadataKey::location), "Rialto");
  EXPECT_EQ(textOf(m, MetadataKey::title), "Bridge");
  EXPECT_EQ(textOf(m, MetadataKey::author), "Ada Rossi");
  // A photo without a capture time of its own takes the sidecar's, on the clock it names.
  ASSERT_NE(m.find(MetadataKey::date), nullptr);
  EXPECT_EQ(*m.find(MetadataKey::date), MetadataValue::date(utc(2025, 6, 14, 8, 25, 40)));
  EXPECT_EQ(m.shotOffset(), 3 * 3600);
}

TEST_F(Provider, AnXmpFileReadsItsOwnFields) {
  // Alone in its folder, or beside the photo it describes: either way its own fields are its.
  const std::string packet = R"(<x:xmpmeta xmlns:x="adobe:ns:meta/">
 <rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
  <rdf:Description rdf:about="" xmlns:dc="http://purl.org/dc/elements/1.1/"
    xmlns:photoshop="http://ns.adobe.com/photoshop/1.0/" photoshop:City="Napoli">
   <dc:title><rdf:Alt><rdf:li xml:lang="x-default">Vesuvio</rdf:li></rdf:Alt></dc:title>
  </rdf:Description>
 </rdf:RDF>
</x:xmpmeta>)";
  for (const char* name : {"orphan.xmp", "IMG_0003.CR2.xmp"}) {
    const MetadataMap m = read(dir.file(name, packet), FileKind::sidecar);
    EXPECT_EQ(textOf(m, MetadataKey::title), "Vesuvio") << name;
    EXPECT_EQ(textOf(m, MetadataKey::city), "Napoli") << name;
  }
  // A read that leaves the sidecars out leaves out the sidecar's own fields too.
  const MetadataProvider datesOnly(*rome(), nullptr, MetadataScope{true, false});
  EXPECT_EQ(
      datesOnly.metadata(dir.path() / "orphan.xmp", FileKind::sidecar).find(MetadataKey::title),
      nullptr);
}

TEST_F(Provider, ABrokenSidecarAddsNothing) {
  const auto p = jpeg("e.jpg", {{"Iptc.Application2.City", "Milano"}});
  dir.file("e.xmp", "<x:xmpmeta><rdf:RDF broken");
  const MetadataMap m = read(p, FileKind::image);
  EXPECT_EQ(textOf(m, MetadataKey::city), "Milano");
}

TEST_F(Provider, FilesThatCantBeReadGiveTheirDatesOrNothing) {
  const auto missing = dir.path() / "gone.jpg";
  EXPECT_TRUE(read(missing, FileKind::image).empty());
  const auto text = dir.file("notes.jpg", "just some text, not a picture");
  const MetadataMap m = read(text, FileKind::image);
  EXPECT_EQ(m.size(), m.find(MetadataKey::created) != nullptr ? 2u : 1u);
  EXPECT_NE(m.find(MetadataKey::modified), nullptr);
}

// A pipe named like a photo, a video, a song, a document or a sidecar is never opened to be read:
// opening it would wait for a writer that never comes. Each read runs in a child that an alarm
// stops, so a regression fails here instead of hanging.
TEST_F(Provider, PipesNamedLikeMediaFilesAreNotReadAndNeverBlock) {
  const auto photo = jpeg("a.jpg", {{"Iptc.Application2.City", "Milano"}});
  ASSERT_EQ(::mkfifo((dir.path() / "a.xmp").c_str(), 0600), 0);
  const std::pair<const char*, FileKind> pipes[] = {{"p.jpg", FileKind::image},
                                                    {"p.CR2", FileKind::raw},
                                                    {"p.mov", FileKind::video},
                                                    {"p.mp3", FileKind::audio},
                                                    {"p.pdf", FileKind::pdf}};
  for (const auto& [name, kind] : pipes)
    ASSERT_EQ(::mkfifo((dir.path() / name).c_str(), 0600), 0) << name;

  const MetadataProvider everything(*rome(), nullptr, MetadataScope{});
  for (const auto& [name, kind] : pipes) {
    const std::filesystem::path pipe = dir.path() / name;
    EXPECT_EQ(testing::finishesInTime(std::chrono::seconds(5),
                                      [&, kind = kind] {
                                        const MetadataMap m = everything.metadata(pipe, kind);
                                        return m.find(MetadataKey::modified) != nullptr &&
                                               m.find(MetadataKey::date) == nullptr;
                                      }),
              testing::Finished::inTime)
        << name << ": only its file dates";
  }
  EXPECT_EQ(testing::finishesInTime(std::chrono::seconds(5),
                                    [&] {
                                      const MetadataMap m =
                                          everything.metadata(photo, FileKind::image);
                                      return textOf(m, MetadataKey::city) == "Milano";
                                    }),
            testing::Finished::inTime)
      << "the photo is read without its sidecar, which is a pipe";
}

TEST_F(Provider, TextsThatAreNotUtf8AreReadAsLatin1) {
  const auto p = dir.file("f.jpg", testing::tinyJpeg(8, 8));
  testing::writeMetadata(p, {{"Exif.Image.Artist", "Jos\xe9"}});
  EXPECT_EQ(textOf(read(p, FileKind::image), MetadataKey::author), "Jos\xc3\xa9");
}

TEST_F(Provider, IptcTextsInTheirCharacterSetAndTheImagesOwnXmpBeforeThem) {
  const auto span = [](const std::string& bytes) {
    return std::span(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  };
  // Record 1:90 names ISO 8859-5: "Москва", not the Latin-1 reading of its bytes.
  const auto cyrillic = jpeg("h.jpg", {{"Iptc.Envelope.CharacterSet", "\x1b-L"},
                                       {"Iptc.Application2.City", "\xbc\xde\xe1\xda\xd2\xd0"}});
  EXPECT_EQ(textOf(read(cyrillic, FileKind::image), MetadataKey::city),
            "\xd0\x9c\xd0\xbe\xd1\x81\xd0\xba\xd0\xb2\xd0\xb0");

  // IPTC that names no character set and isn't ASCII ("Z\xfcrich" in Latin-1, or in some other
  // set?) gives way to the image's XMP, field by field; IFD0's Artist still comes before any
  // creator.
  const auto both = jpeg("i.jpg", {{"Iptc.Application2.City", "Z\xfcrich"},
                                   {"Iptc.Application2.Headline", "From the IPTC"},
                                   {"Iptc.Application2.Byline", "Bo Berg"},
                                   {"Xmp.photoshop.City", "Z\xc3\xbcrich \xe2\x80\x93 Kreis 1"},
                                   {"Xmp.dc.creator", "Ada Rossi"},
                                   {"Xmp.dc.title", "lang=x-default Ponte"}});
  const MetadataMap m = read(both, FileKind::image);
  EXPECT_EQ(textOf(m, MetadataKey::city), "Z\xc3\xbcrich \xe2\x80\x93 Kreis 1");
  EXPECT_EQ(textOf(m, MetadataKey::headline), "From the IPTC");
  EXPECT_EQ(textOf(m, MetadataKey::author), "Ada Rossi");
  EXPECT_EQ(textOf(m, MetadataKey::title), "Ponte");
  const auto artist = jpeg("j.jpg", {{"Exif.Image.Artist", "Cy Twombly"},
                                     {"Iptc.Application2.Byline", "Bj\xf6rk"},
                                     {"Xmp.dc.creator", "Ada Rossi"}});
  EXPECT_EQ(textOf(read(artist, FileKind::image), MetadataKey::author), "Cy Twombly");
  // IPTC in ASCII, or in a named set, reads as it stands.
  const auto plain = jpeg("k.jpg", {{"Iptc.Application2.City", "Milano"},
                                    {"Xmp.photoshop.City", "Milano \xe2\x80\x93 Brera"}});
  EXPECT_EQ(textOf(read(plain, FileKind::image), MetadataKey::city), "Milano");

  // The quick path reads them as Exiv2's whole parse does.
  for (const auto& file : {cyrillic, both, artist, plain}) {
    const std::string bytes = testing::contentsOf(file);
    MetadataMap quick;
    MetadataMap whole;
    ImageReader::readBytes(span(bytes), FileKind::image, *rome(), quick, true);
    ImageReader::readBytes(span(bytes), FileKind::image, *rome(), whole, false);
    EXPECT_EQ(quick, whole) << file;
  }
}

TEST_F(Provider, AudioTagsThroughTagLib) {
  const auto p = dir.file("song.mp3");
  {
    TagLib::MPEG::File f(p.c_str());
    TagLib::ID3v2::Tag* tag = f.ID3v2Tag(true);
    tag->setArtist("Nina Simone");
    tag->setAlbum("Pastel Blues");
    tag->setTitle("Sinnerman");
    tag->setTrack(9);
    tag->setYear(1965);
    f.save();
  }
  const MetadataMap m = read(p, FileKind::audio);
  EXPECT_EQ(textOf(m, MetadataKey::artist), "Nina Simone");
  EXPECT_EQ(textOf(m, MetadataKey::album), "Pastel Blues");
  EXPECT_EQ(textOf(m, MetadataKey::title), "Sinnerman");
  EXPECT_EQ(*m.find(MetadataKey::track), MetadataValue::integer(9));
  EXPECT_EQ(*m.find(MetadataKey::year), MetadataValue::integer(1965));
}

TEST_F(Provider, PdfInfoKeepsTheCreationDatesOffset) {
  const std::string pdf =
      "%PDF-1.4\n"
      "1 0 obj << /Type /Catalog /Pages 2 0 R >> endobj\n"
      "2 0 obj << /Type /Pages /Kids [3 0 R 4 0 R] /Count 2 >> endobj\n"
      "3 0 obj << /Type /Page /Parent 2 0 R /MediaBox [0 0 10 10] >> endobj\n"
      "4 0 obj << /Type /Page /Parent 2 0 R /MediaBox [0 0 10 10] >> endobj\n"
      "5 0 obj << /Title (Contact sheet) /Author (  Ada Rossi ) "
      "/CreationDate (D:20240501140322-05'00') >> endobj\n"
      "trailer << /Root 1 0 R /Info 5 0 R >>\n%%EOF\n";
  const auto p = dir.file("sheet.pdf", pdf);
  const FileMetadata r = provider.read(p, FileKind::pdf);
  EXPECT_EQ(textOf(r.values, MetadataKey::title), "Contact sheet");
  EXPECT_EQ(textOf(r.values, MetadataKey::author), "Ada Rossi");
  EXPECT_EQ(*r.values.find(MetadataKey::pages), MetadataValue::integer(2));
  EXPECT_EQ(*r.values.find(MetadataKey::date), MetadataValue::date(utc(2024, 5, 1, 19, 3, 22)));
  EXPECT_EQ(r.shotUtcOffset, -5 * 3600);
  EXPECT_EQ(r.shotUtcOffsetText(), "-05:00");
  EXPECT_EQ((FileMetadata{{}, 5 * 3600 + 45 * 60}.shotUtcOffsetText()), "+05:45");
  EXPECT_EQ(FileMetadata{}.shotUtcOffsetText(), std::nullopt);
}

TEST_F(Provider, ContentsThatLieAboutTheirKindNeverCrash) {
  const std::string jpegBytes = testing::tinyJpeg(16, 16);
  for (const char* name : {"a.mp3", "a.flac", "a.m4a", "a.ogg", "a.wav", "a.aiff", "a.mp4", "a.mov",
                           "a.mts", "a.pdf", "a.CR3", "a.heic", "a.xmp"}) {
    const auto p = dir.file(name, jpegBytes);
    const FileKind kind = fileKindOf(name);
    const MetadataMap m = read(p, kind);
    EXPECT_NE(m.find(MetadataKey::modified), nullptr) << name;
  }
  // A JPEG read as a RAW file is still a JPEG to Exiv2: its size is found.
  const auto raw = dir.file("b.NEF", jpegBytes);
  EXPECT_EQ(*read(raw, FileKind::raw).find(MetadataKey::width), MetadataValue::integer(16));
}

TEST_F(Provider, EmptyAndTruncatedFilesGiveWhatTheyCan) {
  const auto full = jpeg("full.jpg", {{"Exif.Image.Make", "Canon"},
                                      {"Exif.Photo.DateTimeOriginal", "2024:05:01 14:03:22"}});
  const std::string bytes = testing::contentsOf(full);
  for (std::size_t cut = 0; cut < bytes.size(); cut += 7) {
    for (const char* name : {"cut.jpg", "cut.CR2", "cut.mp4", "cut.mp3", "cut.pdf"}) {
      const auto p = dir.file(name, bytes.substr(0, cut));
      read(p, fileKindOf(name));
    }
  }
  EXPECT_EQ(textOf(read(full, FileKind::image), MetadataKey::make), "Canon");
}

}  // namespace
}  // namespace tessane
