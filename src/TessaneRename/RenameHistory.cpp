#include "RenameHistory.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <exception>
#include <fstream>
#include <iterator>
#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>
#include <thread>
#include <unordered_set>
#include <utility>

#include "RenameEngine/StoredText.h"
#include "RenameIO/DurableFile.h"
#include "RenameIO/FileUrl.h"

namespace tessane {
namespace {

using Json = nlohmann::ordered_json;

// 2001-01-01 00:00:00 UTC, the origin of the file's dates, in seconds since 1970.
constexpr std::int64_t kReferenceDate = 978307200;

double secondsSinceReference(Date date) {
  const auto micros = date.time_since_epoch().count() - kReferenceDate * 1'000'000;
  return static_cast<double>(micros) / 1e6;
}

std::optional<Date> dateFrom(double seconds) {
  if (!std::isfinite(seconds) || std::fabs(seconds) > 1e12) return std::nullopt;
  const auto micros = static_cast<std::int64_t>(std::llround(seconds * 1e6));
  return Date(std::chrono::microseconds(micros + kReferenceDate * 1'000'000));
}

constexpr std::pair<RenameHistory::Kind, std::string_view> kKinds[] = {
    {RenameHistory::Kind::rename, "rename"},
    {RenameHistory::Kind::restoreOriginals, "restoreOriginals"}};

std::optional<RenameHistory::Kind> kindFrom(std::string_view text) {
  return fromStoredText(kKinds, text);
}

std::optional<std::filesystem::path> urlAt(const Json& object, const char* key) {
  auto it = object.find(key);
  if (it == object.end() || !it->is_string()) return std::nullopt;
  return FileUrl::toPath(it->get_ref<const std::string&>());
}

std::optional<RenameHistory::Entry> entryFrom(const Json& j) {
  if (!j.is_object()) return std::nullopt;
  const auto id = j.find("id");
  const auto date = j.find("date");
  const auto kind = j.find("kind");
  const auto moves = j.find("moves");
  const auto reverted = j.find("isReverted");
  if (id == j.end() || !id->is_string() || date == j.end() || !date->is_number() ||
      kind == j.end() || !kind->is_string() || moves == j.end() || !moves->is_array() ||
      reverted == j.end() || !reverted->is_boolean()) {
    return std::nullopt;
  }
  RenameHistory::Entry e;
  std::optional<Uuid> uuid = Uuid::parse(id->get_ref<const std::string&>());
  std::optional<Date> when = dateFrom(date->get<double>());
  std::optional<RenameHistory::Kind> k = kindFrom(kind->get_ref<const std::string&>());
  if (!uuid || !when || !k) return std::nullopt;
  e.id = *uuid;
  e.date = *when;
  e.kind = *k;
  e.isReverted = reverted->get<bool>();
  e.moves.reserve(moves->size());
  for (const Json& m : *moves) {
    if (!m.is_object()) return std::nullopt;
    std::optional<std::filesystem::path> source = urlAt(m, "source");
    std::optional<std::filesystem::path> destination = urlAt(m, "destination");
    if (!source || !destination) return std::nullopt;
    e.moves.push_back(RenameHistory::Move{std::move(*source), std::move(*destination)});
  }
  return e;
}

}  // namespace

std::string_view RenameHistory::rawValue(Kind kind) noexcept {
  return storedText(kKinds, kind);
}

RenameHistory::RenameHistory(std::optional<std::filesystem::path> file, std::vector<Entry> entries)
    : entries_(std::move(entries)), file_(std::move(file)) {}

RenameHistory RenameHistory::load(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::ostringstream text;
  if (in) text << in.rdbuf();
  std::optional<std::vector<Entry>> entries = decode(text.str());
  return RenameHistory(file, entries ? std::move(*entries) : std::vector<Entry>{});
}

RenameHistory::~RenameHistory() {
  waitForSaves();
}

Uuid RenameHistory::add(Kind kind, const std::vector<FileMove>& moves) {
  return add(
      kind, moves,
      std::chrono::time_point_cast<std::chrono::microseconds>(std::chrono::system_clock::now()));
}

Uuid RenameHistory::add(Kind kind, const std::vector<FileMove>& moves, Date date) {
  Entry e{Uuid::random(), date, kind, {}, false};
  e.moves.reserve(moves.size());
  for (const FileMove& m : moves)
    e.moves.push_back(Move{m.source, m.destination});
  const Uuid id = e.id;
  entries_.insert(entries_.begin(), std::move(e));
  if (entries_.size() > kMaxEntries) entries_.resize(kMaxEntries);
  std::size_t total = 0;
  for (const Entry& entry : entries_)
    total += entry.moves.size();
  while (entries_.size() >= 2 && total > kMaxMoves) {
    total -= entries_.back().moves.size();
    entries_.pop_back();
  }
  save();
  return id;
}

void RenameHistory::markReverted(const Uuid& id) {
  for (Entry& e : entries_) {
    if (e.id == id) {
      e.isReverted = true;
      save();
      return;
    }
  }
}

void RenameHistory::clear() {
  entries_.clear();
  save();
}

const RenameHistory::Entry* RenameHistory::newestNotReverted() const {
  for (const Entry& e : entries_) {
    if (!e.isReverted) return &e;
  }
  return nullptr;
}

std::vector<std::filesystem::path> RenameHistory::foldersOf(const Entry& entry) {
  std::vector<std::filesystem::path> out;
  std::unordered_set<std::string> seen;
  for (const Move& m : entry.moves) {
    std::filesystem::path folder = m.source.parent_path();
    if (seen.insert(folder.native()).second) out.push_back(std::move(folder));
  }
  return out;
}

std::vector<FileMove> RenameHistory::reversal(const Entry& entry) {
  std::vector<FileMove> out;
  out.reserve(entry.moves.size());
  // The last move made is the first undone.
  for (auto m = entry.moves.rbegin(); m != entry.moves.rend(); ++m)
    out.push_back(FileMove{m->destination, m->source});
  return out;
}

std::string RenameHistory::goBackLabel(const Entry& entry) {
  std::string out = std::to_string(entry.moves.size());
  out.append(entry.kind == Kind::rename ? " files back to their previous names"
                                        : " files back to their original names");
  return out;
}

std::shared_future<bool> RenameHistory::lastSave() const {
  if (saveTask_.valid()) return saveTask_;
  std::promise<bool> none;
  none.set_value(true);
  return none.get_future().share();
}

bool RenameHistory::waitForSaves() {
  if (!saveTask_.valid()) return true;
  return saveTask_.get();
}

std::string RenameHistory::encode(const std::vector<Entry>& entries) {
  Json array = Json::array();
  for (const Entry& e : entries) {
    Json moves = Json::array();
    for (const Move& m : e.moves) {
      Json move = Json::object();
      move["source"] = FileUrl::fromPath(m.source);
      move["destination"] = FileUrl::fromPath(m.destination);
      moves.push_back(std::move(move));
    }
    Json entry = Json::object();
    entry["id"] = e.id.string();
    entry["date"] = secondsSinceReference(e.date);
    entry["kind"] = rawValue(e.kind);
    entry["moves"] = std::move(moves);
    entry["isReverted"] = e.isReverted;
    array.push_back(std::move(entry));
  }
  // Paths that are not UTF-8 are percent-encoded in their URLs, so the text is always valid.
  return array.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::optional<std::vector<RenameHistory::Entry>> RenameHistory::decode(std::string_view json) {
  try {
    const Json j = Json::parse(json.begin(), json.end(), nullptr, false);
    if (!j.is_array()) return std::nullopt;
    std::vector<Entry> out;
    out.reserve(j.size());
    for (const Json& item : j) {
      std::optional<Entry> e = entryFrom(item);
      if (!e) return std::nullopt;
      out.push_back(std::move(*e));
    }
    return out;
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

void RenameHistory::save() {
  if (!file_) return;
  std::shared_future<bool> previous = std::move(saveTask_);
  auto task = [previous = std::move(previous), entries = entries_, file = *file_]() mutable {
    if (previous.valid()) previous.wait();
    try {
      const std::string data = encode(entries);
      // A failed save leaves the previous file in place.
      return !DurableFile::write(file, data).has_value();
    } catch (const std::exception&) {
      return false;  // out of memory while encoding: dropped like any other failed save
    }
  };
  auto job = std::make_shared<std::packaged_task<bool()>>(std::move(task));
  saveTask_ = job->get_future().share();
  try {
    std::thread([job] { (*job)(); }).detach();
  } catch (const std::exception&) {
    (*job)();  // no thread to be had: save on this one
  }
}

}  // namespace tessane
