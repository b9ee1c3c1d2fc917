#include "PresetStore.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

#include "RenameEngine/NaturalOrder.h"
#include "RenameEngine/Unicode.h"
#include "RenameIO/DataFolder.h"
#include "RenameIO/DurableFile.h"
#include "RenameIO/FolderListing.h"

namespace tessane {
namespace {

// A preset is a few kilobytes; anything past this is not one.
constexpr off_t kMaxPresetBytes = 16 * 1024 * 1024;
constexpr int kMaxNumber = 10000;

std::variant<std::string, IOError> readWhole(const std::filesystem::path& file) {
  // Without waiting: a pipe named like a preset would never answer (refused below).
  const int fd = ::open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (fd < 0) return IOError::fromErrno(errno, IOError::Operation::readPreset, file);
  struct stat st;
  int error = 0;
  if (::fstat(fd, &st) != 0) {
    error = errno;
  } else if (S_ISDIR(st.st_mode)) {
    error = EISDIR;
  } else if (!S_ISREG(st.st_mode)) {
    error = EINVAL;
  } else if (st.st_size > kMaxPresetBytes) {
    error = EFBIG;
  }
  if (error != 0) {
    ::close(fd);
    return IOError::fromErrno(error, IOError::Operation::readPreset, file);
  }
  std::string data(static_cast<std::size_t>(st.st_size), '\0');
  std::size_t got = 0;
  while (got < data.size()) {
    const ssize_t n = ::read(fd, data.data() + got, data.size() - got);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) break;
    got += static_cast<std::size_t>(n);
  }
  ::close(fd);
  data.resize(got);
  return data;
}

std::optional<IOError> makeFolder(const std::filesystem::path& folder) {
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (error) return IOError::fromErrno(error.value(), IOError::Operation::createFolder, folder);
  return std::nullopt;
}

bool hasPresetExtension(std::string_view name) {
  const std::size_t dot = name.rfind('.');
  return dot != std::string_view::npos && dot > 0 && name.substr(dot + 1) == Preset::kExtension;
}

}  // namespace

Result<PresetStore::Found, PresetStore::LookupError> PresetStore::find(
    std::string_view nameOrFile) const {
  const std::string name(nameOrFile);
  Result<Listing> listed = list();
  if (!listed) return LookupError{LookupError::Kind::listingFailed, listed.error()};
  for (const Entry& entry : listed.value().presets) {
    if (entry.preset.name == name) return Found{entry.preset, entry.file, std::nullopt};
  }
  const std::string folded = unicode::foldCase(name);
  for (const Entry& entry : listed.value().presets) {
    if (unicode::foldCase(entry.preset.name) == folded) {
      return Found{entry.preset, entry.file, std::nullopt};
    }
  }
  for (const Failure& failure : listed.value().failures) {
    if (failure.file.stem() == name || failure.file.filename() == name) {
      return Found{std::nullopt, failure.file, failure};
    }
  }
  const std::filesystem::path file(name);
  std::error_code error;
  if (name.empty() || !std::filesystem::exists(file, error)) {
    return LookupError{LookupError::Kind::notFound, {}};
  }
  auto read = PresetStore::read(file);
  if (Preset* preset = std::get_if<Preset>(&read)) return Found{std::move(*preset), file, {}};
  Failure failure{file, std::get_if<PresetError>(&read)
                            ? std::variant<PresetError, IOError>(std::get<PresetError>(read))
                            : std::variant<PresetError, IOError>(std::get<IOError>(read))};
  return Found{std::nullopt, file, std::move(failure)};
}

PresetStore PresetStore::standard() {
  return PresetStore(DataFolder::presetFolder());
}

std::variant<Preset, PresetError, IOError> PresetStore::read(const std::filesystem::path& file) {
  auto bytes = readWhole(file);
  if (auto* error = std::get_if<IOError>(&bytes)) return *error;
  auto decoded = decodePreset(std::get<std::string>(bytes));
  if (auto* error = std::get_if<PresetError>(&decoded)) return *error;
  return std::move(std::get<Preset>(decoded));
}

Result<PresetStore::Listing> PresetStore::list() const {
  if (auto error = makeFolder(directory_)) return *error;
  Result<std::vector<std::string>> names = FolderListing::names(directory_);
  if (!names) return names.error();
  Listing listing;
  for (const std::string& name : names.value()) {
    if (!hasPresetExtension(name)) continue;
    const std::filesystem::path file = directory_ / name;
    auto result = read(file);
    if (auto* preset = std::get_if<Preset>(&result)) {
      listing.presets.push_back(Entry{std::move(*preset), file});
    } else if (auto* error = std::get_if<PresetError>(&result)) {
      listing.failures.push_back(Failure{file, *error});
    } else {
      listing.failures.push_back(Failure{file, std::get<IOError>(result)});
    }
  }
  std::vector<std::pair<std::string, Entry>> keyed;
  for (Entry& e : listing.presets)
    keyed.emplace_back(unicode::naturalSortKey(e.preset.name), std::move(e));
  std::stable_sort(keyed.begin(), keyed.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  listing.presets.clear();
  for (auto& [key, entry] : keyed)
    listing.presets.push_back(std::move(entry));
  std::sort(listing.failures.begin(), listing.failures.end(),
            [](const Failure& a, const Failure& b) { return a.file < b.file; });
  return listing;
}

Result<std::filesystem::path> PresetStore::save(const Preset& preset) const {
  if (auto error = makeFolder(directory_)) return *error;
  const std::string stem = presetFileStem(preset.name);
  for (int n = 1; n <= kMaxNumber; ++n) {
    std::string name = stem;
    if (n > 1) name.append(" ").append(std::to_string(n));
    name.append(".").append(Preset::kExtension);
    const std::filesystem::path file = directory_ / name;
    struct stat st;
    if (::lstat(file.c_str(), &st) != 0) {
      if (errno != ENOENT) return IOError::fromErrno(errno, IOError::Operation::savePreset, file);
    } else {
      // Taken: only the preset's own earlier file may be replaced.
      auto existing = read(file);
      const auto* other = std::get_if<Preset>(&existing);
      if (other == nullptr || other->name != preset.name) continue;
    }
    if (auto error = DurableFile::write(file, encodePreset(preset))) return *error;
    return file;
  }
  return IOError::fromErrno(EEXIST, IOError::Operation::savePreset,
                            directory_ / (stem + ".tessanepreset"));
}

std::optional<IOError> PresetStore::remove(const std::filesystem::path& file) const {
  if (::unlink(file.c_str()) != 0)
    return IOError::fromErrno(errno, IOError::Operation::deletePreset, file);
  return DurableFile::syncFolder(file.parent_path());
}

}  // namespace tessane
