#include "Shoot.h"

#include <unicode/timezone.h>

#include <cstdint>
#include <numeric>
#include <set>

#include "MediaMetadata/MetadataBatch.h"
#include "RenameEngine/Unicode.h"
#include "RenameIO/FolderListing.h"
#include "RenameIO/OriginalName.h"
#include "RenameIO/RenameAccess.h"

namespace tessane {
namespace {

void addFolderContents(Shoot& shoot, const std::filesystem::path& folder,
                       const std::vector<ListedFile>* files) {
  FolderContents& contents = shoot.folders[folder.native()];
  Result<std::vector<std::string>> names = FolderListing::names(folder);
  contents.listed = names.ok();
  if (names) contents.names = std::move(names.value());
  if (files != nullptr) {
    for (const ListedFile& f : *files)
      contents.files.push_back(f.name);
  } else if (Result<std::vector<ListedFile>> listed = FolderListing::files(folder)) {
    for (const ListedFile& f : listed.value())
      contents.files.push_back(f.name);
  }
  RenameAccess::describe(folder, contents);
}

// Which file's metadata each file takes: its own, or its twin group's primary's.
std::vector<std::size_t> metadataSources(const Shoot& shoot, const TwinOptions* twins) {
  const std::size_t count = shoot.subjects.size();
  std::vector<std::size_t> source(count);
  std::iota(source.begin(), source.end(), 0);
  if (twins == nullptr || !twins->isEnabled) return source;
  std::vector<std::optional<std::string>> keys(count);
  std::vector<FileName> names(count);
  for (std::size_t i = 0; i < count; ++i) {
    keys[i] = twinKey(shoot.subjects[i].name, shoot.subjects[i].folder.native(), *twins);
    names[i] = FileName::parse(shoot.subjects[i].name);
  }
  for (const TwinGroup& g : groupTwins(keys, names, source)) {
    for (std::size_t m : g.members)
      source[m] = g.primary;
  }
  return source;
}

}  // namespace

namespace {

// The files to read, one per twin group's primary; `readAt` is each subject's place among them.
std::vector<BatchFile> filesToRead(const Shoot& shoot, const std::vector<std::size_t>& source,
                                   std::vector<std::size_t>& readAt) {
  const std::size_t count = shoot.subjects.size();
  std::vector<BatchFile> files;
  files.reserve(count);
  readAt.assign(count, 0);
  for (std::size_t i = 0; i < count; ++i) {
    if (source[i] != i) continue;
    readAt[i] = files.size();
    files.push_back(
        BatchFile{shoot.paths[i], fileKindOf(FileName::parse(shoot.subjects[i].name).ext)});
  }
  for (std::size_t i = 0; i < count; ++i)
    readAt[i] = readAt[source[i]];
  return files;
}

// Each read's values to the subjects that take them: copied to all but the last, moved there.
void handOut(Shoot& shoot, BatchResult& read, const std::vector<std::size_t>& readAt) {
  std::vector<std::uint32_t> users(read.files.size(), 0);
  for (const std::size_t at : readAt)
    ++users[at];
  for (std::size_t i = 0; i < shoot.subjects.size(); ++i) {
    std::optional<FileMetadata>& values = read.files[readAt[i]];
    if (!values) continue;
    if (--users[readAt[i]] == 0) {
      shoot.subjects[i].metadata = std::move(values->values);
    } else {
      shoot.subjects[i].metadata = values->values;
    }
  }
}

// A primary without a capture time (a RAW from a body newer than the reader) takes one from a
// twin that has it, for its whole group: the shot keeps its place in the order and its date in
// the names. Only such groups' twins are read, one after the other until one has a date.
void datesFromTwins(Shoot& shoot, const std::vector<std::size_t>& source,
                    const MetadataProvider& provider, const std::stop_token& stop) {
  std::unordered_map<std::size_t, std::vector<std::size_t>> twinsOf;
  for (std::size_t i = 0; i < source.size(); ++i) {
    if (source[i] != i && !shoot.subjects[source[i]].metadata.find(MetadataKey::date)) {
      twinsOf[source[i]].push_back(i);
    }
  }
  for (auto& [primary, twins] : twinsOf) {
    for (const std::size_t twin : twins) {
      if (stop.stop_requested()) return;
      const FileKind kind = fileKindOf(FileName::parse(shoot.subjects[twin].name).ext);
      const MetadataMap own = provider.read(shoot.paths[twin], kind).values;
      const MetadataValue* date = own.find(MetadataKey::date);
      if (date == nullptr) continue;
      // With the date, the camera it came from when the primary doesn't name one, so that the
      // body's tag and clock correction apply to it as to the twin.
      const bool bodyToo = !shoot.subjects[primary].metadata.find(MetadataKey::model);
      std::vector<std::size_t> group = twins;
      group.push_back(primary);
      for (const std::size_t member : group) {
        MetadataMap& values = shoot.subjects[member].metadata;
        values.set(MetadataKey::date, *date);
        values.setShotOffset(own.shotOffset());
        if (!bodyToo) continue;
        for (const MetadataKey key : {MetadataKey::make, MetadataKey::model, MetadataKey::serial}) {
          if (const MetadataValue* v = own.find(key)) values.set(key, *v);
        }
      }
      break;
    }
  }
}

}  // namespace

bool readShootMetadata(Shoot& shoot, const ShootRequest& request,
                       std::vector<ShootNotice>& notices) {
  const std::size_t count = shoot.subjects.size();
  if (request.readMetadata && count > 0) {
    std::vector<std::size_t> readAt;
    const std::vector<std::size_t> source = metadataSources(shoot, request.twins);
    const std::vector<BatchFile> files = filesToRead(shoot, source, readAt);
    std::unique_ptr<icu::TimeZone> systemZone;
    if (request.zone == nullptr) systemZone.reset(icu::TimeZone::createDefault());
    const MetadataProvider provider(request.zone ? *request.zone : *systemZone, nullptr,
                                    request.scope);
    BatchOptions options;
    options.stop = request.stop;
    options.progress = request.progress;
    BatchResult read = MetadataBatch::read(provider, files, options);
    if (read.stopped || request.stop.stop_requested()) return false;
    for (const std::string& problem : MetadataProvider::unavailableReaders())
      notices.push_back(ShootNotice{ShootNotice::Kind::readerUnavailable, {}, problem});
    handOut(shoot, read, readAt);
    datesFromTwins(shoot, source, provider, request.stop);
    if (request.stop.stop_requested()) return false;
  }
  for (std::size_t i = 0; i < count; ++i) {
    RenameSubject& s = shoot.subjects[i];
    if (const MetadataValue* model = s.metadata.find(MetadataKey::model);
        model && model->asText()) {
      s.cameraModel = *model->asText();
    }
    if (request.bodies != nullptr) {
      s.bodyTag = request.bodies->tag(s.metadata);
      s.captureDate = request.bodies->correctedCaptureTime(s.metadata);
    }
    if (request.readOriginalNames) s.originalName = OriginalName::read(shoot.paths[i]);
  }
  return true;
}

namespace {

// Adds listed files to the shoot, each file once however often it was given. A folder's listing
// names each file once, so only the files given one by one, and folders given twice, are looked
// up: a large folder costs no set of every path.
class Gathering {
 public:
  explicit Gathering(GatheredShoot& out) : out_(out) {}

  // False when the folder was gathered already.
  bool firstTimeFolder(const std::filesystem::path& folder) {
    return folders_.insert(folder.native()).second;
  }

  void addFromFolder(ListedFile&& file, const std::filesystem::path& folder) {
    if (!singles_.empty() && singles_.count((folder / file.name).native()) > 0) return;
    add(std::move(file), folder);
  }

  void addSingle(ListedFile&& file, const std::filesystem::path& folder) {
    if (folders_.count(folder.native()) > 0) return;  // its folder is gathered whole
    if (!singles_.insert((folder / file.name).native()).second) return;
    add(std::move(file), folder);
  }

  Shoot shoot;

 private:
  void add(ListedFile&& file, const std::filesystem::path& folder) {
    if (!file.nameIsText) {
      out_.notices.push_back(ShootNotice{ShootNotice::Kind::nameNotText, file.path, {}});
      return;
    }
    RenameSubject subject;
    subject.name = std::move(file.name);
    subject.folder = folder;
    shoot.subjects.push_back(std::move(subject));
    shoot.paths.push_back(std::move(file.path));
  }

  GatheredShoot& out_;
  std::set<std::string> folders_;  // gathered whole
  std::set<std::string> singles_;  // given one by one
};

}  // namespace

GatheredShoot gatherShoot(const ShootRequest& request) {
  GatheredShoot out;
  Gathering gathering(out);
  Shoot& shoot = gathering.shoot;
  auto fail = [&](ShootProblem::Kind kind, const std::filesystem::path& path, int code) {
    out.problem = ShootProblem{kind, path, code};
    return std::move(out);
  };

  for (const std::filesystem::path& path : request.paths) {
    std::error_code error;
    const auto status = std::filesystem::symlink_status(path, error);
    if (error || !std::filesystem::exists(status)) {
      return fail(ShootProblem::Kind::pathMissing, path, 0);
    }
    if (std::filesystem::is_directory(std::filesystem::status(path, error))) {
      Result<std::vector<ListedFile>> files = FolderListing::files(path);
      if (!files) return fail(ShootProblem::Kind::folderUnreadable, path, files.error().code);
      const std::filesystem::path folder = FolderListing::resolvedFolder(path);
      if (!gathering.firstTimeFolder(folder)) continue;
      if (shoot.folders.count(folder.native()) == 0) {
        addFolderContents(shoot, folder, &files.value());
      }
      shoot.subjects.reserve(shoot.subjects.size() + files.value().size());
      shoot.paths.reserve(shoot.paths.size() + files.value().size());
      for (ListedFile& f : files.value())
        gathering.addFromFolder(std::move(f), folder);
      continue;
    }
    if (!std::filesystem::is_regular_file(status)) {
      return fail(ShootProblem::Kind::notRenamable, path, 0);
    }
    const std::filesystem::path folder = FolderListing::resolvedFolder(path.parent_path());
    std::string name = path.filename().native();
    const bool text = unicode::isValidUtf8(name);
    gathering.addSingle(ListedFile{path, std::move(name), text}, folder);
    if (shoot.folders.count(folder.native()) == 0) addFolderContents(shoot, folder, nullptr);
  }

  if (!readShootMetadata(shoot, request, out.notices)) {
    return fail(ShootProblem::Kind::stopped, {}, 0);
  }
  out.shoot = std::move(shoot);
  return out;
}

}  // namespace tessane
