// tessane meta FILE...: what the metadata reader finds in each file, as text or as JSON.
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>
#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <cerrno>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <iostream>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "MediaMetadata/MetadataBatch.h"
#include "MediaMetadata/MetadataProvider.h"
#include "RenameEngine/FileKind.h"
#include "RenameEngine/RuleStack.h"
#include "RenameEngine/Unicode.h"
#include "Tool.h"

namespace tessane::cli {
namespace {

using OrderedJson = nlohmann::ordered_json;

struct MetaOptions {
  std::vector<std::string> files;
  std::string timeZone;
  bool json = false;
};

// "2024-05-01T12:03:22Z", with ".120" or ".120500" when the time has a fraction of a second.
std::string isoUtc(Date date) {
  using namespace std::chrono;
  const auto day = floor<days>(date);
  const year_month_day ymd{day};
  const hh_mm_ss<microseconds> time{date - day};
  char text[48];
  const int n = std::snprintf(
      text, sizeof text, "%04d-%02u-%02uT%02d:%02d:%02lld", static_cast<int>(ymd.year()),
      static_cast<unsigned>(ymd.month()), static_cast<unsigned>(ymd.day()),
      static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
      static_cast<long long>(time.seconds().count()));
  std::string out(text, n > 0 ? static_cast<std::size_t>(n) : 0);
  const long long micros = time.subseconds().count();
  if (micros != 0) {
    char fraction[32];
    if (micros % 1000 == 0) {
      std::snprintf(fraction, sizeof fraction, ".%03lld", micros / 1000);
    } else {
      std::snprintf(fraction, sizeof fraction, ".%06lld", micros);
    }
    out.append(fraction);
  }
  out.push_back('Z');
  return out;
}

// A date as a person reads it, in the chosen zone: "2024-05-01 14:03:22.120 +02:00".
class LocalDates {
 public:
  explicit LocalDates(const icu::TimeZone& zone) {
    UErrorCode status = U_ZERO_ERROR;
    whole_ = std::make_unique<icu::SimpleDateFormat>(icu::UnicodeString(u"yyyy-MM-dd HH:mm:ss xxx"),
                                                     icu::Locale("en_US_POSIX"), status);
    status = U_ZERO_ERROR;
    fraction_ = std::make_unique<icu::SimpleDateFormat>(
        icu::UnicodeString(u"yyyy-MM-dd HH:mm:ss.SSS xxx"), icu::Locale("en_US_POSIX"), status);
    whole_->setTimeZone(zone);
    fraction_->setTimeZone(zone);
  }

  std::string text(Date date) const {
    using namespace std::chrono;
    const auto millis = duration_cast<milliseconds>(date.time_since_epoch()).count();
    const bool whole = date.time_since_epoch().count() % 1'000'000 == 0;
    icu::UnicodeString shown;
    (whole ? whole_ : fraction_)->format(static_cast<UDate>(millis), shown);
    std::string out;
    shown.toUTF8String(out);
    return out;
  }

 private:
  std::unique_ptr<icu::SimpleDateFormat> whole_, fraction_;
};

std::string numberText(double value) {
  char text[32];
  const auto result = std::to_chars(text, text + sizeof text, value);
  return std::string(text, result.ptr);
}

std::string valueText(const MetadataValue& value, const LocalDates& dates) {
  switch (value.kind()) {
    case MetadataValue::Case::text:
      return unicode::toDisplayable(*value.asText());
    case MetadataValue::Case::integer:
      return std::to_string(*value.asInteger());
    case MetadataValue::Case::number:
      return numberText(*value.asNumber());
    case MetadataValue::Case::date:
      return dates.text(*value.asDate());
  }
  return {};
}

OrderedJson valueJson(const MetadataValue& value) {
  switch (value.kind()) {
    case MetadataValue::Case::text:
      return unicode::toDisplayable(*value.asText());
    case MetadataValue::Case::integer:
      return *value.asInteger();
    case MetadataValue::Case::number:
      return *value.asNumber();
    case MetadataValue::Case::date:
      return isoUtc(*value.asDate());
  }
  return nullptr;
}

// The files given, split into those to read and those that aren't there (each with why).
struct GivenFiles {
  std::vector<BatchFile> batch;
  std::vector<std::optional<std::string>> missing;  // per file given
  std::vector<std::size_t> batchIndex;              // per file given: its place in `batch`
};

GivenFiles sortGiven(const std::vector<std::string>& files) {
  GivenFiles out;
  out.missing.resize(files.size());
  out.batchIndex.resize(files.size(), 0);
  for (std::size_t i = 0; i < files.size(); ++i) {
    const std::filesystem::path path(files[i]);
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (error || !std::filesystem::exists(status)) {
      out.missing[i] = error ? error.message() : std::generic_category().message(ENOENT);
      continue;
    }
    if (std::filesystem::is_directory(status)) {
      out.missing[i] = std::generic_category().message(EISDIR);
      continue;
    }
    out.batchIndex[i] = out.batch.size();
    out.batch.push_back({path, fileKindOf(path.filename().native())});
  }
  return out;
}

// Reads the batch, with progress on a terminal; nothing when the user stopped it (said so).
std::optional<BatchResult> readAll(Tool& tool, const std::vector<BatchFile>& batch,
                                   const icu::TimeZone& zone) {
  const MetadataProvider provider(zone);
  BatchOptions batchOptions;
  const bool showProgress = tool.terminal().errIsTerminal && batch.size() > 1;
  std::size_t lastShown = 0;
  if (showProgress) {
    batchOptions.progress = [&lastShown](std::size_t done, std::size_t total) {
      if (done != total && done - lastShown < std::max<std::size_t>(1, total / 100)) return;
      lastShown = done;
      std::fprintf(stderr, "\rReading metadata: %zu of %zu", done, total);
      std::fflush(stderr);
    };
  }
  BatchResult read;
  bool interrupted = false;
  {
    InterruptWatch watch;
    batchOptions.stop = watch.token();
    read = MetadataBatch::read(provider, batch, batchOptions);
    interrupted = watch.interrupted();
  }
  if (showProgress) std::fputs("\r\x1b[K", stderr);
  if (interrupted || read.stopped) {
    std::size_t done = 0;
    for (const auto& file : read.files)
      done += file.has_value() ? 1u : 0u;
    tool.error("stopped; " + std::to_string(done) + " of " + std::to_string(batch.size()) +
               " files were read, nothing printed.");
    return std::nullopt;
  }
  return read;
}

OrderedJson fileJson(const std::string& shownPath, const BatchFile& file,
                     const std::optional<FileMetadata>& found) {
  OrderedJson entry;
  entry["path"] = shownPath;
  entry["kind"] = std::string(rawValue(file.kind));
  OrderedJson values = OrderedJson::object();
  if (found) {
    for (const auto& [key, value] : found->values)
      values[std::string(rawValue(key))] = valueJson(value);
  }
  entry["metadata"] = std::move(values);
  if (found && found->shotUtcOffset) entry["shotUtcOffset"] = *found->shotUtcOffsetText();
  return entry;
}

void printFile(Tool& tool, const std::string& shownPath, const BatchFile& file,
               const std::optional<FileMetadata>& found, const LocalDates& dates) {
  std::printf("%s  (%s)\n", tool.terminal().paint(shownPath, "1").c_str(),
              std::string(rawValue(file.kind)).c_str());
  if (!found || found->values.empty()) {
    std::printf("  %s\n", tool.terminal().paint("nothing read", "2").c_str());
    return;
  }
  for (const auto& [key, value] : found->values) {
    std::printf("  %s: %s\n", std::string(rawValue(key)).c_str(), valueText(value, dates).c_str());
  }
  if (const auto offset = found->shotUtcOffsetText())
    std::printf("  shotUtcOffset: %s\n", offset->c_str());
}

int meta(Tool& tool, const MetaOptions& options) {
  std::optional<NamingContext> naming = options.timeZone.empty()
                                            ? NamingContext::systemDefault()
                                            : NamingContext::inZone(options.timeZone);
  if (!naming) {
    std::string message = "“";
    message.append(options.timeZone).append("” isn’t a time zone.");
    tool.error(message);
    return kExitRefused;
  }

  // Files that aren't there are reported; the others are read.
  const GivenFiles given = sortGiven(options.files);
  const std::optional<BatchResult> read = readAll(tool, given.batch, *naming->zone);
  if (!read) return kExitRefused;

  for (const std::string& problem : MetadataProvider::unavailableReaders())
    tool.error(problem);
  const LocalDates dates(*naming->zone);
  OrderedJson all = OrderedJson::array();
  bool first = true;
  for (std::size_t i = 0; i < options.files.size(); ++i) {
    if (given.missing[i]) continue;
    const BatchFile& file = given.batch[given.batchIndex[i]];
    const std::optional<FileMetadata>& found = read->files[given.batchIndex[i]];
    const std::string shownPath = unicode::toDisplayable(options.files[i]);
    if (options.json) {
      all.push_back(fileJson(shownPath, file, found));
      continue;
    }
    if (!first) std::fputs("\n", stdout);
    first = false;
    printFile(tool, shownPath, file, found, dates);
  }
  if (options.json) std::cout << all.dump(2) << "\n" << std::flush;
  std::fflush(stdout);

  int exitCode = kExitOk;
  for (std::size_t i = 0; i < options.files.size(); ++i) {
    if (!given.missing[i]) continue;
    tool.error(unicode::toDisplayable(options.files[i]) + ": " + *given.missing[i]);
    exitCode = kExitRefused;
  }
  return exitCode;
}

}  // namespace

void addMetaCommand(CLI::App& app, Tool& tool, int& exitCode) {
  auto* command = app.add_subcommand(
      "meta", "Show the metadata read from each file (capture date, camera, lens, exposure…)");
  auto options = std::make_shared<MetaOptions>();
  command->add_option("FILE", options->files, "The files to read")->required();
  command->add_flag("--json", options->json,
                    "One JSON array: {\"path\", \"kind\", \"metadata\"} per file, dates in UTC, "
                    "and \"shotUtcOffset\" where the file names its own");
  command->add_option("--time-zone", options->timeZone,
                      "Zone for camera times without an offset and for the dates shown "
                      "(default: the system's)");
  command->callback([options, &tool, &exitCode] { exitCode = meta(tool, *options); });
}

}  // namespace tessane::cli
