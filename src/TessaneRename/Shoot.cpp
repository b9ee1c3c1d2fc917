#include "Shoot.h"

#include <unicode/timezone.h>

#include <numeric>
#include <set>

#include "MediaMetadata/MetadataBatch.h"
#include "RenameEngine/Unicode.h"
#include "RenameIO/FolderListing.h"
#include "RenameIO/OriginalName.h"

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

bool readShootMetadata(Shoot& shoot, const ShootRequest& request,
                       std::vector<ShootNotice>& notices) {
  const std::size_t count = shoot.subjects.size();
  if (request.readMetadata && count > 0) {
    const std::vector<std::size_t> source = metadataSources(shoot, request.twins);
    std::vector<BatchFile> files;
    std::vector<std::size_t> readAt(count, 0);  // a primary's place among the files read
    for (std::size_t i = 0; i < count; ++i) {
      if (source[i] != i) continue;
      readAt[i] = files.size();
      files.push_back(
          BatchFile{shoot.paths[i], fileKindOf(FileName::parse(shoot.subjects[i].name).ext)});
    }
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
    for (std::size_t i = 0; i < count; ++i) {
      std::optional<FileMetadata>& values = read.files[readAt[source[i]]];
      if (!values) continue;
      shoot.subjects[i].metadata = values->values;
    }
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

GatheredShoot gatherShoot(const ShootRequest& request) {
  GatheredShoot out;
  Shoot shoot;
  std::set<std::string> seen;  // the same file given twice counts once
  auto add = [&](const ListedFile& file, const std::filesystem::path& folder) {
    if (!file.nameIsText) {
      out.notices.push_back(ShootNotice{ShootNotice::Kind::nameNotText, file.path, {}});
      return;
    }
    if (!seen.insert((folder / file.name).native()).second) return;
    RenameSubject subject;
    subject.name = file.name;
    subject.folder = folder;
    shoot.subjects.push_back(std::move(subject));
    shoot.paths.push_back(file.path);
  };
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
      for (const ListedFile& f : files.value())
        add(f, folder);
      if (shoot.folders.count(folder.native()) == 0) {
        addFolderContents(shoot, folder, &files.value());
      }
      continue;
    }
    if (!std::filesystem::is_regular_file(status)) {
      return fail(ShootProblem::Kind::notRenamable, path, 0);
    }
    const std::filesystem::path folder = FolderListing::resolvedFolder(path.parent_path());
    const std::string name = path.filename().native();
    add(ListedFile{path, name, unicode::isValidUtf8(name)}, folder);
    if (shoot.folders.count(folder.native()) == 0) addFolderContents(shoot, folder, nullptr);
  }

  if (!readShootMetadata(shoot, request, out.notices)) {
    return fail(ShootProblem::Kind::stopped, {}, 0);
  }
  out.shoot = std::move(shoot);
  return out;
}

}  // namespace tessane
