#include "BatchJournal.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <exception>
#include <nlohmann/json.hpp>
#include <system_error>
#include <utility>

#include "RenameIO/DurableFile.h"
#include "RenameIO/FileUrl.h"
#include "RenameIO/SafeRenamer.h"

namespace tessane {
namespace {

using Json = nlohmann::ordered_json;

std::optional<std::filesystem::path> urlAt(const Json& object, const char* key) {
  auto it = object.find(key);
  if (it == object.end() || !it->is_string()) return std::nullopt;
  return FileUrl::toPath(it->get_ref<const std::string&>());
}

}  // namespace

std::string JournalRecord::encode() const {
  // Written by hand rather than through a JSON tree: a batch of ten thousand files is written
  // before its first move, so this is on the hot path. Every text is a UUID or a file URL, and
  // neither holds a character that JSON escapes. The temporary locations are not written: they
  // follow from the batch's id, each move's index and its source.
  std::string out;
  out.reserve(64 + items.size() * 200);
  out.append("{\"batch\":\"").append(batch.string()).append("\",\"date\":");
  out.append(std::to_string(date.time_since_epoch().count())).append(",\"moves\":[");
  for (std::size_t i = 0; i < items.size(); ++i) {
    const Item& item = items[i];
    if (i > 0) out.push_back(',');
    out.append("{\"source\":\"");
    FileUrl::append(out, item.move.source);
    out.append("\",\"destination\":\"");
    FileUrl::append(out, item.move.destination);
    out.append("\",\"device\":");
    out.append(std::to_string(static_cast<std::uint64_t>(item.identity.device)));
    out.append(",\"inode\":");
    out.append(std::to_string(static_cast<std::uint64_t>(item.identity.inode)));
    out.push_back('}');
  }
  out.append("]}");
  return out;
}

std::optional<JournalRecord> JournalRecord::decode(std::string_view json) {
  try {
    const Json j = Json::parse(json.begin(), json.end(), nullptr, false);
    if (!j.is_object()) return std::nullopt;
    const auto batch = j.find("batch");
    const auto date = j.find("date");
    const auto moves = j.find("moves");
    if (batch == j.end() || !batch->is_string() || date == j.end() || !date->is_number_integer() ||
        moves == j.end() || !moves->is_array()) {
      return std::nullopt;
    }
    JournalRecord r;
    std::optional<Uuid> id = Uuid::parse(batch->get_ref<const std::string&>());
    if (!id) return std::nullopt;
    r.batch = *id;
    const std::string tag = id->string().substr(0, 8);
    r.date = Date(std::chrono::microseconds(date->get<std::int64_t>()));
    for (const Json& m : *moves) {
      if (!m.is_object()) return std::nullopt;
      std::optional<std::filesystem::path> source = urlAt(m, "source");
      std::optional<std::filesystem::path> destination = urlAt(m, "destination");
      const auto device = m.find("device");
      const auto inode = m.find("inode");
      if (!source || !destination || device == m.end() || !device->is_number_unsigned() ||
          inode == m.end() || !inode->is_number_unsigned()) {
        return std::nullopt;
      }
      FileMove move{std::move(*source), std::move(*destination)};
      std::filesystem::path temporary = SafeRenamer::temporaryLocation(move, tag, r.items.size());
      r.items.push_back(Item{std::move(move), std::move(temporary),
                             FileIdentity{static_cast<dev_t>(device->get<std::uint64_t>()),
                                          static_cast<ino_t>(inode->get<std::uint64_t>())}});
    }
    return r;
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

std::filesystem::path BatchJournal::fileFor(const std::filesystem::path& folder,
                                            const Uuid& batch) {
  std::string name = batch.string();
  name.append(".json");
  return folder / name;
}

Result<BatchJournal> BatchJournal::begin(const std::filesystem::path& folder,
                                         const AppliedBatch& batch, SystemFileRenaming& fs) {
  std::vector<FileIdentity> identities;
  identities.reserve(batch.moves.size());
  for (const FileMove& m : batch.moves) {
    const IdentityLookup found = fs.identity(m.source);
    if (!found.presence.isPresent()) {
      const int code = found.presence.isUnknown() ? found.presence.code() : ENOENT;
      return IOError::fromErrno(code, IOError::Operation::find, m.source);
    }
    identities.push_back(found.identity);
  }
  return begin(folder, batch, identities);
}

Result<BatchJournal> BatchJournal::begin(const std::filesystem::path& folder,
                                         const AppliedBatch& batch,
                                         const std::vector<FileIdentity>& identities) {
  if (identities.size() != batch.moves.size()) {
    return IOError::fromErrno(EINVAL, IOError::Operation::write, folder);
  }
  JournalRecord record{batch.id, batch.date, {}};
  record.items.reserve(batch.moves.size());
  for (std::size_t i = 0; i < batch.moves.size(); ++i)
    record.items.push_back(JournalRecord::Item{batch.moves[i], {}, identities[i]});
  std::string data;
  try {
    data = record.encode();
  } catch (const std::exception&) {
    return IOError::fromErrno(ENOMEM, IOError::Operation::write, folder);
  }

  std::error_code ec;
  std::filesystem::create_directories(folder, ec);
  if (ec) return IOError::fromErrno(ec.value(), IOError::Operation::create, folder);
  const std::filesystem::path file = fileFor(folder, batch.id);
  std::string hidden = folder / ".";
  hidden.append(file.filename().native()).append(".XXXXXX");
  const int fd = ::mkostemp(hidden.data(), O_CLOEXEC);
  if (fd < 0) return IOError::fromErrno(errno, IOError::Operation::create, hidden);
  std::optional<IOError> error;
  if (::flock(fd, LOCK_EX) != 0) {
    error = IOError::fromErrno(errno, IOError::Operation::lock, hidden);
  } else if (!DurableFile::writeAll(fd, data)) {
    error = IOError::fromErrno(errno, IOError::Operation::write, hidden);
  } else if (::fsync(fd) != 0) {
    error = IOError::fromErrno(errno, IOError::Operation::flush, hidden);
  } else if (::rename(hidden.c_str(), file.c_str()) != 0) {
    error = IOError::fromErrno(errno, IOError::Operation::create, file);
  } else {
    error = DurableFile::syncFolder(folder);
    if (error) ::unlink(file.c_str());
  }
  if (error) {
    ::unlink(hidden.c_str());
    ::close(fd);
    return *error;
  }
  return BatchJournal(file, fd);
}

BatchJournal::BatchJournal(BatchJournal&& other) noexcept
    : file_(std::move(other.file_)), fd_(std::exchange(other.fd_, -1)) {}

BatchJournal& BatchJournal::operator=(BatchJournal&& other) noexcept {
  if (this != &other) {
    if (fd_ >= 0) ::close(fd_);
    file_ = std::move(other.file_);
    fd_ = std::exchange(other.fd_, -1);
  }
  return *this;
}

BatchJournal::~BatchJournal() {
  if (fd_ >= 0) ::close(fd_);
}

std::optional<IOError> BatchJournal::finish() {
  if (fd_ < 0) return std::nullopt;
  std::optional<IOError> error;
  if (::unlink(file_.c_str()) != 0 && errno != ENOENT) {
    error = IOError::fromErrno(errno, IOError::Operation::remove, file_);
  } else {
    error = DurableFile::syncFolder(file_.parent_path());
  }
  ::close(fd_);
  fd_ = -1;
  return error;
}

}  // namespace tessane
