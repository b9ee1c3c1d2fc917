#include "CrashRecovery.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <set>
#include <system_error>
#include <utility>

#include "RenameEngine/Unicode.h"
#include "RenameIO/BatchJournal.h"
#include "RenameIO/DurableFile.h"
#include "RenameIO/TemporaryName.h"

namespace tessane {
namespace CrashRecovery {
namespace {

enum class Place { missing, source, temporary, destination };

// Where a batch's file is now, by its identity. Inodes alone are compared: the files of one batch
// share a folder, and a card plugged in again may come back under another device number. A name
// the disk couldn't tell about counts as not holding the file: a file found nowhere stays where it
// is and keeps its journal, so the next start asks again.
Place locate(const JournalRecord::Item& item, SystemFileRenaming& fs) {
  if (fs.fileExists(item.temporary).isPresent()) return Place::temporary;
  const auto holds = [&](const std::filesystem::path& at) {
    const std::optional<FileIdentity> id = fs.identity(at).found();
    return id && id->inode == item.identity.inode;
  };
  // The destination first: on a case-insensitive volume a case-only change finds the file under
  // both names, and taking it from the destination brings back its original spelling too.
  if (holds(item.move.destination)) return Place::destination;
  if (holds(item.move.source)) return Place::source;
  return Place::missing;
}

RecoveredBatch putBack(const JournalRecord& record, SystemFileRenaming& fs) {
  RecoveredBatch out;
  out.batch = record.batch;
  const std::size_t n = record.items.size();
  std::vector<Place> place(n);
  for (std::size_t i = 0; i < n; ++i)
    place[i] = locate(record.items[i], fs);
  // Park the files that reached their destinations, so that every original name held by another
  // file of the batch is free before anything goes back.
  for (std::size_t i = 0; i < n; ++i) {
    const JournalRecord::Item& item = record.items[i];
    if (place[i] == Place::destination && !fs.moveItem(item.move.destination, item.temporary)) {
      place[i] = Place::temporary;
    }
  }
  for (std::size_t i = 0; i < n; ++i) {
    const JournalRecord::Item& item = record.items[i];
    if (place[i] == Place::temporary && !fs.moveItem(item.temporary, item.move.source)) {
      place[i] = Place::source;
      ++out.putBack;
      continue;
    }
    switch (place[i]) {
      case Place::source:
        ++out.alreadyHome;
        break;
      case Place::temporary:
        out.notPutBack.push_back(FileMove{item.temporary, item.move.source});
        break;
      case Place::destination:
        out.notPutBack.push_back(FileMove{item.move.destination, item.move.source});
        break;
      case Place::missing:
        out.notPutBack.push_back(FileMove{{}, item.move.source});
        break;
    }
  }
  return out;
}

std::string readAll(int fd) {
  std::string out;
  char buffer[65536];
  for (;;) {
    const ssize_t got = ::read(fd, buffer, sizeof buffer);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) break;
    out.append(buffer, static_cast<std::size_t>(got));
  }
  return out;
}

// The tags (first 8 characters of the UUID) of the batches whose journals are locked by a live
// process.
std::set<std::string> runningTags(const std::filesystem::path& journalFolder) {
  std::set<std::string> out;
  std::error_code ec;
  for (std::filesystem::directory_iterator it(journalFolder, ec), end; !ec && it != end;
       it.increment(ec)) {
    const std::string name = it->path().filename().native();
    std::string_view uuid = name;
    if (uuid.starts_with('.')) uuid.remove_prefix(1);  // a journal still being written
    if (uuid.size() < 8) continue;
    const int fd = ::open(it->path().c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
    if (fd < 0) continue;
    if (::flock(fd, LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
      out.insert(std::string(uuid.substr(0, 8)));
    }
    ::close(fd);
  }
  return out;
}

}  // namespace

namespace {

// An open journal whose lock this process holds; closing it releases the lock.
struct HeldJournal {
  std::filesystem::path path;
  int fd = -1;
  JournalRecord record;
};

}  // namespace

RecoveryReport recoverJournals(const std::filesystem::path& journalFolder, SystemFileRenaming& fs) {
  RecoveryReport report;
  std::error_code ec;
  std::vector<std::filesystem::path> entries;
  for (std::filesystem::directory_iterator it(journalFolder, ec), end; !ec && it != end;
       it.increment(ec)) {
    entries.push_back(it->path());
  }
  std::sort(entries.begin(), entries.end());
  std::vector<HeldJournal> held;
  for (const std::filesystem::path& path : entries) {
    const std::string name = path.filename().native();
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
    if (fd < 0) continue;
    // A journal whose lock is taken belongs to a batch that is running right now.
    struct stat st {};
    if (::flock(fd, LOCK_EX | LOCK_NB) != 0 || ::fstat(fd, &st) != 0 || st.st_nlink == 0) {
      ::close(fd);  // running, or finished while we were opening it
      continue;
    }
    if (name.starts_with('.')) {
      // A journal whose writer died before it was complete: its batch never moved a file.
      ::unlink(path.c_str());
      ::close(fd);
      continue;
    }
    std::optional<JournalRecord> record;
    if (name.ends_with(".json")) record = JournalRecord::decode(readAll(fd));
    if (!record) {
      if (name.ends_with(".json")) report.unreadableJournals.push_back(path);
      ::close(fd);
      continue;
    }
    held.push_back(HeldJournal{path, fd, std::move(*record)});
  }
  // The newest batch first: an older batch left behind over the same files went before it.
  std::stable_sort(held.begin(), held.end(), [](const HeldJournal& a, const HeldJournal& b) {
    return a.record.date > b.record.date;
  });
  for (HeldJournal& journal : held) {
    RecoveredBatch batch = putBack(journal.record, fs);
    if (batch.notPutBack.empty()) {
      if (::unlink(journal.path.c_str()) == 0) (void)DurableFile::syncFolder(journalFolder);
    } else {
      batch.journalKept = true;
    }
    ::close(journal.fd);
    report.batches.push_back(std::move(batch));
  }
  return report;
}

std::vector<FileMove> restoreTemporaryNames(const std::filesystem::path& folder,
                                            const std::filesystem::path& journalFolder,
                                            SystemFileRenaming& fs) {
  std::vector<FileMove> out;
  std::optional<std::vector<FolderEntry>> entries = fs.list(folder);
  if (!entries) return out;
  std::set<std::string> running;
  bool runningKnown = false;
  for (const FolderEntry& entry : *entries) {
    const std::string& name = entry.name;
    std::optional<TemporaryName> t = TemporaryName::parse(name);
    if (!t || t->mayBeCut) continue;
    if (!runningKnown) {
      running = runningTags(journalFolder);
      runningKnown = true;
    }
    if (running.contains(t->tag)) continue;
    FileMove move{folder / name, folder / t->name};
    if (!fs.moveItem(move.source, move.destination)) out.push_back(std::move(move));
  }
  return out;
}

}  // namespace CrashRecovery

}  // namespace tessane
