#include "Shoot.h"

#include <unistd.h>

#include <unicode/timezone.h>
#include <cstdio>
#include <numeric>
#include <set>

#include "MediaMetadata/MetadataBatch.h"
#include "RenameEngine/Unicode.h"
#include "RenameIO/FolderListing.h"
#include "RenameIO/OriginalName.h"

namespace tessane::cli {
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

}  // namespace

std::optional<Shoot> gatherShoot(const ShootRequest& request, const Tool& tool) {
  Shoot shoot;
  std::set<std::string> seen;  // the same file given twice counts once
  auto add = [&](const ListedFile& file, const std::filesystem::path& folder) {
    if (!file.nameIsText) {
      tool.error(inQuotes(file.path.filename().native()) + ": " +
                 std::string(FolderListing::kNameNotTextWarning));
      return;
    }
    if (!seen.insert((folder / file.name).native()).second) return;
    RenameSubject subject;
    subject.name = file.name;
    subject.folder = folder;
    shoot.subjects.push_back(std::move(subject));
    shoot.paths.push_back(file.path);
  };

  for (const std::string& given : request.paths) {
    std::filesystem::path path(given);
    std::error_code error;
    const auto status = std::filesystem::symlink_status(path, error);
    if (error || !std::filesystem::exists(status)) {
      tool.error(inQuotes(path.native()) + " doesn’t exist.");
      return std::nullopt;
    }
    if (std::filesystem::is_directory(std::filesystem::status(path, error))) {
      Result<std::vector<ListedFile>> files = FolderListing::files(path);
      if (!files) {
        tool.error("Couldn’t open the folder " +
                   inQuotes((path.filename().empty() ? path : path.filename()).native()) + ". " +
                   std::generic_category().message(files.error().code));
        return std::nullopt;
      }
      const std::filesystem::path folder = FolderListing::resolvedFolder(path);
      for (const ListedFile& f : files.value())
        add(f, folder);
      if (shoot.folders.count(folder.native()) == 0)
        addFolderContents(shoot, folder, &files.value());
      continue;
    }
    if (!std::filesystem::is_regular_file(status)) {
      tool.error(inQuotes(path.native()) + " isn’t a file or a folder that can be renamed.");
      return std::nullopt;
    }
    const std::filesystem::path folder = FolderListing::resolvedFolder(path.parent_path());
    const std::string name = path.filename().native();
    add(ListedFile{path, name, unicode::isValidUtf8(name)}, folder);
    if (shoot.folders.count(folder.native()) == 0) addFolderContents(shoot, folder, nullptr);
  }

  if (request.readMetadata && !shoot.subjects.empty()) {
    // Which file's metadata each file takes: its own, or its twin group's primary's.
    const std::size_t count = shoot.subjects.size();
    std::vector<std::size_t> source(count);
    std::iota(source.begin(), source.end(), 0);
    if (request.twins != nullptr && request.twins->isEnabled) {
      std::vector<std::optional<std::string>> keys(count);
      std::vector<FileName> names(count);
      for (std::size_t i = 0; i < count; ++i) {
        keys[i] =
            twinKey(shoot.subjects[i].name, shoot.subjects[i].folder.native(), *request.twins);
        names[i] = FileName::parse(shoot.subjects[i].name);
      }
      for (const TwinGroup& g : groupTwins(keys, names, source)) {
        for (std::size_t m : g.members)
          source[m] = g.primary;
      }
    }
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
    InterruptWatch watch;
    BatchOptions options;
    options.stop = watch.token();
    const bool showProgress = tool.terminal().errIsTerminal && files.size() >= 200;
    options.progress = [&](std::size_t done, std::size_t total) {
      if (showProgress && (done % 100 == 0 || done == total)) {
        std::fprintf(stderr, "\rReading metadata: %zu of %zu", done, total);
        if (done == total) std::fputs("\r\x1b[K", stderr);
      }
    };
    BatchResult read = MetadataBatch::read(provider, files, options);
    if (read.stopped || watch.interrupted()) {
      if (showProgress) std::fputs("\r\x1b[K", stderr);
      tool.error("Stopped: nothing was renamed.");
      return std::nullopt;
    }
    for (const std::string& problem : MetadataProvider::unavailableReaders())
      tool.error(problem);
    for (std::size_t i = 0; i < count; ++i) {
      const std::optional<FileMetadata>& values = read.files[readAt[source[i]]];
      if (values) shoot.subjects[i].metadata = values->values;
    }
  }

  for (std::size_t i = 0; i < shoot.subjects.size(); ++i) {
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
  return shoot;
}

}  // namespace tessane::cli
