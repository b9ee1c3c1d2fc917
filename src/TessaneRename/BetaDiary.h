// A short diary of what the application did recently, kept on disk ("Diary.log" in the
// diagnostics folder) so that a problem report can tell what led to a problem. Each event is one
// line, appended as it happens; only the most recent lines are kept, in memory and on disk. The
// same event twice in a row is written once. Failures to write are ignored: the diary never
// stands in the way of the work.
#pragma once

#include <QDateTime>

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tessane {

class BetaDiary {
 public:
  static constexpr std::size_t kKeptLines = 200;

  // Reads the lines already in the file (none when it can't be read).
  explicit BetaDiary(std::filesystem::path file);

  const std::filesystem::path& fileURL() const { return file_; }
  const std::vector<std::string>& lines() const { return lines_; }

  // "Tessane 1.2, started 2026-05-01T09:30:00Z", with " after a sudden quit" when the previous
  // run ended without quitting.
  void writeLaunch(std::string_view version, bool afterSuddenQuit,
                   const QDateTime& when = QDateTime::currentDateTimeUtc());
  // One event, time-stamped; line breaks in it become spaces.
  void write(std::string_view event, const QDateTime& when = QDateTime::currentDateTimeUtc());

 private:
  void append(std::string line);

  std::filesystem::path file_;
  std::vector<std::string> lines_;
  std::string lastEvent_;
};

}  // namespace tessane
