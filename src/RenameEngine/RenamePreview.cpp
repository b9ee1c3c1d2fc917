#include "RenamePreview.h"

#include <algorithm>
#include <numeric>
#include <unordered_set>

#include "CaptureTime.h"
#include "FileName.h"
#include "NameKey.h"
#include "Parallel.h"
#include "Unicode.h"

namespace tessane {
namespace {

constexpr int kFirstSuffix = 2;
constexpr int kLastSuffix = 10000;

std::string suffixed(const FileName& name, int n) {
  std::string base = name.base;
  base.append("-").append(std::to_string(n));
  return base;
}

}  // namespace

std::string_view rawValue(BatchOrder order) {
  switch (order) {
    case BatchOrder::captureTime:
      return "captureTime";
    case BatchOrder::asGiven:
      return "asGiven";
    case BatchOrder::name:
      return "name";
  }
  return "captureTime";
}

std::optional<BatchOrder> batchOrderFromRawValue(std::string_view text) {
  for (BatchOrder o : {BatchOrder::captureTime, BatchOrder::asGiven, BatchOrder::name}) {
    if (rawValue(o) == text) return o;
  }
  return std::nullopt;
}

std::string_view rawValue(DuplicatePolicy policy) {
  return policy == DuplicatePolicy::addSuffix ? "addSuffix" : "markError";
}

std::optional<DuplicatePolicy> duplicatePolicyFromRawValue(std::string_view text) {
  if (text == "markError") return DuplicatePolicy::markError;
  if (text == "addSuffix") return DuplicatePolicy::addSuffix;
  return std::nullopt;
}

std::string_view caseName(PreviewStatus status) {
  switch (status) {
    case PreviewStatus::unchanged:
      return "unchanged";
    case PreviewStatus::ok:
      return "ok";
    case PreviewStatus::warning:
      return "warning";
    case PreviewStatus::error:
      return "error";
  }
  return "unchanged";
}

bool RenamePreview::hasErrors() const {
  return std::any_of(items.begin(), items.end(),
                     [](const PlannedRename& r) { return !r.errors.empty(); });
}

std::vector<std::size_t> orderBatch(const std::vector<RenameSubject>& subjects, BatchOrder order) {
  std::vector<std::size_t> indices(subjects.size());
  std::iota(indices.begin(), indices.end(), 0);
  if (order == BatchOrder::asGiven) return indices;
  if (order == BatchOrder::name) {
    std::vector<std::string> keys;
    keys.reserve(subjects.size());
    for (const RenameSubject& s : subjects)
      keys.push_back(unicode::naturalSortKey(s.name));
    std::stable_sort(indices.begin(), indices.end(),
                     [&](std::size_t a, std::size_t b) { return keys[a] < keys[b]; });
    return indices;
  }
  // By capture time; files shot in the same instant (or both undated) by name. Names are
  // compared only for those ties, which are few.
  std::vector<std::optional<Date>> dates(subjects.size());
  for (std::size_t i = 0; i < subjects.size(); ++i) {
    dates[i] = CaptureTime::of(subjects[i].captureDate, subjects[i].metadata);
  }
  std::sort(indices.begin(), indices.end(), [&](std::size_t a, std::size_t b) {
    if (dates[a].has_value() != dates[b].has_value()) return dates[a].has_value();
    if (dates[a] && *dates[a] != *dates[b]) return *dates[a] < *dates[b];
    const int byName = unicode::naturalCompare(subjects[a].name, subjects[b].name);
    if (byName != 0) return byName < 0;
    return a < b;
  });
  return indices;
}

RenamePreview buildPreview(const PreviewRequest& request) {
  return buildPreview(request, CompiledRuleStack(request.stack));
}

namespace {

// Below this many files per core, splitting a loop costs more than it saves.
constexpr std::size_t kMinimumPerThread = 2000;

// Name keys of one folder, viewed in place: the strings live in the preview's own vectors.
using KeyViews = std::unordered_set<std::string_view>;

// The folders of a batch, numbered in the order met.
class FolderIds {
 public:
  std::size_t idOf(const std::string& folder) {
    if (last_ != nullptr && *last_ == folder) return lastId_;
    const auto [it, isNew] = ids_.emplace(folder, paths_.size());
    if (isNew) paths_.push_back(&it->first);
    last_ = &it->first;
    lastId_ = it->second;
    return lastId_;
  }
  std::size_t size() const { return paths_.size(); }
  const std::string& path(std::size_t id) const { return *paths_[id]; }

 private:
  std::unordered_map<std::string, std::size_t> ids_;
  std::vector<const std::string*> paths_;
  const std::string* last_ = nullptr;
  std::size_t lastId_ = 0;
};

}  // namespace

struct PreparedBatch::Data {
  std::shared_ptr<const std::vector<RenameSubject>> subjects;
  TwinOptions twins;
  FolderIds folders;
  std::vector<FileName> current;
  std::vector<std::string> currentKeys;
  std::vector<std::size_t> folderOf;
  std::vector<std::optional<std::string>> twinKeys;
  std::vector<std::size_t> order;
  std::vector<TwinGroup> groups;
  std::vector<std::size_t> rowOf;
  std::vector<bool> listed;
  // Per folder: the keys of the names held by entries outside the batch (viewed in `store`).
  std::vector<std::vector<std::string>> outsideStore;
  std::vector<KeyViews> outside;
  // Twins outside the batch, by twin key, from each folder's files.
  std::unordered_map<std::string, std::vector<std::string>> outsideTwins;
};

PreparedBatch::PreparedBatch(std::shared_ptr<const std::vector<RenameSubject>> given,
                             const TwinOptions& twinOptions, BatchOrder batchOrder,
                             const std::unordered_map<std::string, FolderContents>& folderContents)
    : d_(std::make_unique<Data>()) {
  Data& d = *d_;
  d.subjects = std::move(given);
  d.twins = twinOptions;
  const std::vector<RenameSubject>& subjects = *d.subjects;
  const std::size_t count = subjects.size();

  // What is known of each file before any rule: its parsed name, key, folder and twin key.
  FolderIds& folders = d.folders;
  d.current.resize(count);
  d.currentKeys.resize(count);
  d.folderOf.resize(count);
  d.twinKeys.resize(count);
  for (std::size_t i = 0; i < count; ++i)
    d.folderOf[i] = folders.idOf(subjects[i].folder.native());
  std::vector<std::string> folderTags(folders.size());  // what twin keys tell folders apart by
  for (std::size_t f = 0; f < folders.size(); ++f)
    folderTags[f] = std::to_string(f);
  parallelFor(count, kMinimumPerThread, [&](std::size_t begin, std::size_t end) {
    for (std::size_t i = begin; i < end; ++i) {
      d.current[i] = FileName::parse(subjects[i].name);
      d.currentKeys[i] = NameKey::of(d.current[i].fullName()).value;
      d.twinKeys[i] = twinKey(subjects[i].name, folderTags[d.folderOf[i]], d.twins);
    }
  });

  d.order = orderBatch(subjects, batchOrder);
  d.groups = groupTwins(d.twinKeys, d.current, d.order);
  d.rowOf.resize(count);
  for (std::size_t row = 0; row < d.order.size(); ++row)
    d.rowOf[d.order[row]] = row;

  const std::vector<std::size_t>& folderOf = d.folderOf;
  const std::vector<std::string>& currentKeys = d.currentKeys;
  const std::unordered_map<std::string, FolderContents>& requestFolders = folderContents;
  // Per folder: the keys of the batch's own current names, and the keys of the names of every
  // other entry already there. An entry is the batch's own only under its exact name: on a
  // case-sensitive disk "p.jpg" beside the batch's "P.jpg" is another file, and it holds the
  // name. A batch file that the listing lacks under its exact name (given in another case on a
  // card that ignores case) owns the entries that share its key.
  std::vector<KeyViews> own(folders.size());
  for (std::size_t i = 0; i < count; ++i)
    own[folderOf[i]].insert(currentKeys[i]);
  std::vector<bool>& listed = d.listed;
  listed.assign(folders.size(), false);
  std::vector<KeyViews> listedNames(folders.size());
  for (std::size_t f = 0; f < folders.size(); ++f) {
    const auto it = requestFolders.find(folders.path(f));
    if (it == requestFolders.end() || !it->second.listed) continue;
    listed[f] = true;
    listedNames[f].reserve(it->second.names.size());
    for (const std::string& name : it->second.names)
      listedNames[f].insert(name);
  }
  std::vector<KeyViews> ownNames(folders.size());
  std::vector<KeyViews> ownUnlisted(folders.size());
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t f = folderOf[i];
    if (!listed[f]) continue;
    ownNames[f].insert(subjects[i].name);
    if (listedNames[f].count(subjects[i].name) == 0) ownUnlisted[f].insert(currentKeys[i]);
  }
  std::vector<std::vector<std::string>>& outsideStore = d.outsideStore;
  outsideStore.resize(folders.size());
  std::vector<KeyViews>& outside = d.outside;
  outside.resize(folders.size());
  for (std::size_t f = 0; f < folders.size(); ++f) {
    if (!listed[f]) continue;
    std::vector<std::string>& store = outsideStore[f];
    const std::vector<std::string>& names = requestFolders.find(folders.path(f))->second.names;
    store.reserve(names.size());
    for (const std::string& name : names) {
      if (ownNames[f].count(name) > 0) continue;
      std::string key = NameKey::of(name).value;
      if (ownUnlisted[f].count(key) == 0) store.push_back(std::move(key));
    }
    outside[f].reserve(store.size());
    for (const std::string& key : store)
      outside[f].insert(key);
  }

  // Twins outside the batch, by twin key, from each folder's files.
  std::unordered_map<std::string, std::vector<std::string>>& outsideTwins = d.outsideTwins;
  if (d.twins.isEnabled) {
    for (std::size_t f = 0; f < folders.size(); ++f) {
      const auto it = requestFolders.find(folders.path(f));
      if (it == requestFolders.end()) continue;
      for (const std::string& file : it->second.files) {
        if (own[f].count(NameKey::of(file).value) > 0) continue;
        if (auto key = twinKey(file, folderTags[f], d.twins)) {
          outsideTwins[*key].push_back(file);
        }
      }
    }
  }
}

PreparedBatch::~PreparedBatch() = default;
PreparedBatch::PreparedBatch(PreparedBatch&&) noexcept = default;
PreparedBatch& PreparedBatch::operator=(PreparedBatch&&) noexcept = default;

const std::vector<RenameSubject>& PreparedBatch::subjects() const {
  return *d_->subjects;
}

const std::vector<std::size_t>& PreparedBatch::order() const {
  return d_->order;
}

RenamePreview buildPreview(const PreviewRequest& request, const CompiledRuleStack& stack) {
  // The request's subjects are borrowed for the length of the call, not copied.
  const PreparedBatch batch(
      std::shared_ptr<const std::vector<RenameSubject>>(std::shared_ptr<void>(), &request.subjects),
      request.twins, request.order, request.folders);
  return buildPreview(batch, stack, request.naming, request.duplicates);
}

RenamePreview buildPreview(const PreparedBatch& batch, const CompiledRuleStack& stack,
                           const NamingContext& naming, DuplicatePolicy duplicates) {
  const PreparedBatch::Data& d = *batch.d_;
  const std::vector<RenameSubject>& subjects = *d.subjects;
  const std::size_t count = subjects.size();
  const std::vector<FileName>& current = d.current;
  const std::vector<std::size_t>& folderOf = d.folderOf;
  const std::vector<std::optional<std::string>>& twinKeys = d.twinKeys;
  const std::vector<TwinGroup>& groups = d.groups;
  const std::vector<std::size_t>& rowOf = d.rowOf;
  const std::vector<bool>& listed = d.listed;
  const std::vector<KeyViews>& outside = d.outside;
  const std::unordered_map<std::string, std::vector<std::string>>& outsideTwins = d.outsideTwins;
  const std::size_t folderCount = d.folders.size();

  // The primaries go through the rules in batch order.
  std::vector<const RenameSubject*> primaries;
  primaries.reserve(groups.size());
  for (const TwinGroup& g : groups)
    primaries.push_back(&subjects[g.primary]);
  std::vector<RuleResult> results = stack.apply(primaries, naming);

  RenamePreview preview;
  std::vector<PlannedRename>& items = preview.items;
  items.resize(count);

  // Names: each member takes its primary's new base with its own extension.
  for (std::size_t g = 0; g < groups.size(); ++g) {
    const TwinGroup& group = groups[g];
    RuleResult& result = results[g];
    for (std::size_t member : group.members) {
      PlannedRename& row = items[rowOf[member]];
      row.subjectIndex = member;
      row.primaryIndex = rowOf[group.primary];
      row.newName = member == group.primary
                        ? result.newName
                        : FileName{result.newName.base,
                                   stack.twinExtension(subjects[member], current[group.primary].ext,
                                                       result.newName.ext)};
      row.changes = row.newName.fullName() != current[member].fullName();
      for (const RuleIssue& issue : result.issues) {
        row.warnings.push_back(PreviewWarning{PreviewWarning::Kind::rule, issue, {}});
      }
    }
    items[rowOf[group.primary]].steps = std::move(result.changedBy);
  }
  auto folderOfRow = [&](std::size_t r) { return folderOf[items[r].subjectIndex]; };

  // Clashes within the batch. A row that keeps its name clashes with nothing: it is not moved,
  // it only holds its name against the rows that change.
  std::vector<std::string> newKeys(count);
  parallelFor(count, kMinimumPerThread, [&](std::size_t begin, std::size_t end) {
    for (std::size_t r = begin; r < end; ++r)
      newKeys[r] = NameKey::of(items[r].newName.fullName()).value;
  });
  std::vector<bool> duplicate(count, false);
  if (duplicates == DuplicatePolicy::markError) {
    std::vector<std::unordered_map<std::string_view, std::size_t>> seen(folderCount);
    for (std::size_t r = 0; r < count; ++r)
      ++seen[folderOfRow(r)][newKeys[r]];
    for (std::size_t r = 0; r < count; ++r)
      duplicate[r] = items[r].changes && seen[folderOfRow(r)][newKeys[r]] > 1;
  } else {
    // Groups that keep their names hold them first; then the groups that change take their names
    // in batch order, and a group whose names are taken tries "-2", "-3"… with one number for
    // all its members. A number passed over for some base and extensions is never free again for
    // them, so each such group starts where the last one stopped.
    std::vector<KeyViews> planned(folderCount);
    for (KeyViews& keys : planned)
      keys.reserve(count);
    auto keepsItsNames = [&](const TwinGroup& group) {
      return std::none_of(group.members.begin(), group.members.end(),
                          [&](std::size_t m) { return items[rowOf[m]].changes; });
    };
    for (const TwinGroup& group : groups) {
      if (!keepsItsNames(group)) continue;
      for (std::size_t m : group.members)
        planned[folderOfRow(rowOf[m])].insert(newKeys[rowOf[m]]);
    }
    std::unordered_map<std::string, int> nextSuffix;
    std::vector<std::size_t> rows;
    std::vector<std::string_view> wanted;  // the group's own new names, viewed in newKeys
    std::vector<std::string> candidate;    // the same with a number
    auto isFree = [&](const auto& keys) {
      for (std::size_t i = 0; i < keys.size(); ++i) {
        const std::size_t f = folderOfRow(rows[i]);
        if (outside[f].count(keys[i]) > 0 || planned[f].count(keys[i]) > 0) return false;
        for (std::size_t j = 0; j < i; ++j) {
          if (keys[j] == keys[i] && folderOfRow(rows[j]) == f) return false;
        }
      }
      return true;
    };
    for (const TwinGroup& group : groups) {
      if (keepsItsNames(group)) continue;
      rows.clear();
      wanted.clear();
      for (std::size_t m : group.members) {
        rows.push_back(rowOf[m]);
        wanted.push_back(newKeys[rowOf[m]]);
      }
      if (!isFree(wanted)) {
        std::string signature = std::to_string(folderOfRow(rows.front()));
        for (std::string_view k : wanted)
          signature.append(1, '\0').append(k);
        candidate.resize(rows.size());
        int& n = nextSuffix.try_emplace(std::move(signature), kFirstSuffix).first->second;
        bool found = false;
        for (; n <= kLastSuffix && !found; ++n) {
          for (std::size_t i = 0; i < rows.size(); ++i) {
            FileName name = items[rows[i]].newName;
            name.base = suffixed(name, n);
            candidate[i] = NameKey::of(name.fullName()).value;
          }
          if (!isFree(candidate)) continue;
          for (std::size_t i = 0; i < rows.size(); ++i) {
            items[rows[i]].newName.base = suffixed(items[rows[i]].newName, n);
            newKeys[rows[i]] = candidate[i];
          }
          found = true;
        }
        if (!found) {
          // Every number is taken: the clash stays, as an error.
          for (std::size_t r : rows)
            duplicate[r] = planned[folderOfRow(r)].count(newKeys[r]) > 0;
        }
      }
      for (std::size_t r : rows)
        planned[folderOfRow(r)].insert(newKeys[r]);
    }
  }

  // Each row's checks and status, rows apart from one another.
  parallelFor(count, kMinimumPerThread, [&](std::size_t begin, std::size_t end) {
    for (std::size_t r = begin; r < end; ++r) {
      PlannedRename& row = items[r];
      const std::size_t f = folderOfRow(r);
      const std::string newFull = row.newName.fullName();
      row.changes = newFull != current[row.subjectIndex].fullName();
      if (row.changes) row.errors = NameCheck::problems(row.newName.base, row.newName.ext);
      if (duplicate[r]) row.errors.push_back(NameError::duplicateInBatch());
      if (row.changes && outside[f].count(newKeys[r]) > 0) {
        row.errors.push_back(NameError::existingFile(newFull));
      }

      if (const auto& key = twinKeys[row.subjectIndex]; key && !outsideTwins.empty()) {
        const auto it = outsideTwins.find(*key);
        if (it != outsideTwins.end()) {
          row.warnings.push_back(
              PreviewWarning{PreviewWarning::Kind::incompleteTwins, {}, it->second});
        }
      }
      if (!listed[f])
        row.warnings.push_back(PreviewWarning{PreviewWarning::Kind::folderNotListed, {}, {}});

      if (!row.errors.empty()) {
        row.status = PreviewStatus::error;
      } else if (!row.warnings.empty()) {
        row.status = PreviewStatus::warning;
      } else {
        row.status = row.changes ? PreviewStatus::ok : PreviewStatus::unchanged;
      }
    }
  });
  for (std::size_t r = 0; r < count; ++r) {
    if (items[r].changes && items[r].errors.empty()) preview.changedFiles.push_back(r);
  }
  return preview;
}

}  // namespace tessane
