#include "RenamePreview.h"

#include <algorithm>
#include <numeric>
#include <unordered_set>

#include "CaptureTime.h"
#include "FileName.h"
#include "NameKey.h"
#include "NaturalOrder.h"
#include "Parallel.h"
#include "StoredText.h"
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

namespace {
constexpr std::pair<BatchOrder, std::string_view> kOrders[] = {
    {BatchOrder::captureTime, "captureTime"},
    {BatchOrder::asGiven, "asGiven"},
    {BatchOrder::name, "name"}};
constexpr std::pair<DuplicatePolicy, std::string_view> kPolicies[] = {
    {DuplicatePolicy::markError, "markError"}, {DuplicatePolicy::addSuffix, "addSuffix"}};
constexpr std::pair<PreviewStatus, std::string_view> kStatuses[] = {
    {PreviewStatus::unchanged, "unchanged"},
    {PreviewStatus::ok, "ok"},
    {PreviewStatus::warning, "warning"},
    {PreviewStatus::error, "error"}};
}  // namespace

std::string_view rawValue(BatchOrder order) {
  return storedText(kOrders, order);
}

std::optional<BatchOrder> batchOrderFromRawValue(std::string_view text) {
  return fromStoredText(kOrders, text);
}

std::string_view rawValue(DuplicatePolicy policy) {
  return storedText(kPolicies, policy);
}

std::optional<DuplicatePolicy> duplicatePolicyFromRawValue(std::string_view text) {
  return fromStoredText(kPolicies, text);
}

std::string_view caseName(PreviewStatus status) {
  return storedText(kStatuses, status);
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
  // Per folder, and per file where a folder named some: why the system would refuse a new name.
  std::vector<int> refusal;
  std::vector<int> fileRefusal;
  // Per folder: the keys of the names held by entries outside the batch (viewed in `store`).
  std::vector<std::vector<std::string>> outsideStore;
  std::vector<KeyViews> outside;
  // Twins outside the batch, by twin key, from each folder's files.
  std::unordered_map<std::string, std::vector<std::string>> outsideTwins;
};

namespace {

using FolderMap = std::unordered_map<std::string, FolderContents>;

// What is known of each file before any rule: its parsed name, key, folder and twin key; then the
// batch order, the twin groups and each file's row.
void describeFiles(PreparedBatch::Data& d, BatchOrder batchOrder,
                   std::vector<std::string>& folderTags) {
  const std::vector<RenameSubject>& subjects = *d.subjects;
  const std::size_t count = subjects.size();
  d.current.resize(count);
  d.currentKeys.resize(count);
  d.folderOf.resize(count);
  d.twinKeys.resize(count);
  for (std::size_t i = 0; i < count; ++i)
    d.folderOf[i] = d.folders.idOf(subjects[i].folder.native());
  folderTags.resize(d.folders.size());  // what twin keys tell folders apart by
  for (std::size_t f = 0; f < d.folders.size(); ++f)
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
}

// Per folder: whether it was listed, and the keys of the names of every entry already there that
// is not the batch's own. An entry is the batch's own only under its exact name: on a
// case-sensitive disk "p.jpg" beside the batch's "P.jpg" is another file, and it holds the name.
// A batch file that the listing lacks under its exact name (given in another case on a card that
// ignores case) owns the entries that share its key.
void findNamesOutside(PreparedBatch::Data& d, const FolderMap& requestFolders) {
  const std::vector<RenameSubject>& subjects = *d.subjects;
  const std::size_t folderCount = d.folders.size();
  d.listed.assign(folderCount, false);
  d.refusal.assign(folderCount, 0);
  std::vector<KeyViews> listedNames(folderCount);
  for (std::size_t f = 0; f < folderCount; ++f) {
    const auto it = requestFolders.find(d.folders.path(f));
    if (it == requestFolders.end()) continue;
    d.refusal[f] = it->second.refusal;
    if (!it->second.refusedFiles.empty()) {
      d.fileRefusal.resize(subjects.size(), 0);
      for (std::size_t i = 0; i < subjects.size(); ++i) {
        if (d.folderOf[i] != f) continue;
        const auto refused = it->second.refusedFiles.find(subjects[i].name);
        if (refused != it->second.refusedFiles.end()) d.fileRefusal[i] = refused->second;
      }
    }
    if (!it->second.listed) continue;
    d.listed[f] = true;
    listedNames[f].reserve(it->second.names.size());
    for (const std::string& name : it->second.names)
      listedNames[f].insert(name);
  }
  std::vector<KeyViews> ownNames(folderCount);
  std::vector<KeyViews> ownUnlisted(folderCount);
  for (std::size_t i = 0; i < subjects.size(); ++i) {
    const std::size_t f = d.folderOf[i];
    if (!d.listed[f]) continue;
    ownNames[f].insert(subjects[i].name);
    if (listedNames[f].count(subjects[i].name) == 0) ownUnlisted[f].insert(d.currentKeys[i]);
  }
  d.outsideStore.resize(folderCount);
  d.outside.resize(folderCount);
  for (std::size_t f = 0; f < folderCount; ++f) {
    if (!d.listed[f]) continue;
    std::vector<std::string>& store = d.outsideStore[f];
    const std::vector<std::string>& names = requestFolders.find(d.folders.path(f))->second.names;
    store.reserve(names.size());
    for (const std::string& name : names) {
      if (ownNames[f].count(name) > 0) continue;
      std::string key = NameKey::of(name).value;
      if (ownUnlisted[f].count(key) == 0) store.push_back(std::move(key));
    }
    d.outside[f].reserve(store.size());
    for (const std::string& key : store)
      d.outside[f].insert(key);
  }
}

// Twins outside the batch, by twin key, from each folder's files.
void findTwinsOutside(PreparedBatch::Data& d, const FolderMap& requestFolders,
                      const std::vector<std::string>& folderTags) {
  if (!d.twins.isEnabled) return;
  // Per folder: the keys of the batch's own current names.
  std::vector<KeyViews> own(d.folders.size());
  for (std::size_t i = 0; i < d.subjects->size(); ++i)
    own[d.folderOf[i]].insert(d.currentKeys[i]);
  for (std::size_t f = 0; f < d.folders.size(); ++f) {
    const auto it = requestFolders.find(d.folders.path(f));
    if (it == requestFolders.end()) continue;
    for (const std::string& file : it->second.files) {
      if (own[f].count(NameKey::of(file).value) > 0) continue;
      if (auto key = twinKey(file, folderTags[f], d.twins)) d.outsideTwins[*key].push_back(file);
    }
  }
}

}  // namespace

PreparedBatch::PreparedBatch(std::shared_ptr<const std::vector<RenameSubject>> given,
                             const TwinOptions& twinOptions, BatchOrder batchOrder,
                             const std::unordered_map<std::string, FolderContents>& folderContents)
    : d_(std::make_unique<Data>()) {
  d_->subjects = std::move(given);
  d_->twins = twinOptions;
  std::vector<std::string> folderTags;
  describeFiles(*d_, batchOrder, folderTags);
  findNamesOutside(*d_, folderContents);
  findTwinsOutside(*d_, folderContents, folderTags);
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

namespace {

using Data = PreparedBatch::Data;

// Names: the primaries go through the rules in batch order, and each member of a twin group takes
// its primary's new base with its own extension.
std::vector<PlannedRename> nameRows(const Data& d, const CompiledRuleStack& stack,
                                    const NamingContext& naming) {
  const std::vector<RenameSubject>& subjects = *d.subjects;
  std::vector<const RenameSubject*> primaries;
  primaries.reserve(d.groups.size());
  for (const TwinGroup& g : d.groups)
    primaries.push_back(&subjects[g.primary]);
  std::vector<RuleResult> results = stack.apply(primaries, naming);

  std::vector<PlannedRename> items(subjects.size());
  for (std::size_t g = 0; g < d.groups.size(); ++g) {
    const TwinGroup& group = d.groups[g];
    RuleResult& result = results[g];
    for (std::size_t member : group.members) {
      PlannedRename& row = items[d.rowOf[member]];
      row.subjectIndex = member;
      row.primaryIndex = d.rowOf[group.primary];
      row.newName =
          member == group.primary
              ? result.newName
              : FileName{result.newName.base,
                         stack.twinExtension(subjects[member], d.current[group.primary].ext,
                                             result.newName.ext)};
      row.changes = row.newName.fullName() != d.current[member].fullName();
      for (const RuleIssue& issue : result.issues) {
        row.warnings.push_back(PreviewWarning{PreviewWarning::Kind::rule, issue, {}});
      }
    }
    items[d.rowOf[group.primary]].steps = std::move(result.changedBy);
  }
  return items;
}

// Clashes within the batch, marked as errors. A row that keeps its name clashes with nothing: it
// is not moved, it only holds its name against the rows that change.
std::vector<bool> markDuplicates(const Data& d, const std::vector<PlannedRename>& items,
                                 const std::vector<std::string>& newKeys) {
  const auto folderOfRow = [&](std::size_t r) { return d.folderOf[items[r].subjectIndex]; };
  std::vector<std::unordered_map<std::string_view, std::size_t>> seen(d.folders.size());
  for (std::size_t r = 0; r < items.size(); ++r)
    ++seen[folderOfRow(r)][newKeys[r]];
  std::vector<bool> duplicate(items.size(), false);
  for (std::size_t r = 0; r < items.size(); ++r)
    duplicate[r] = items[r].changes && seen[folderOfRow(r)][newKeys[r]] > 1;
  return duplicate;
}

// Clashes within the batch, resolved by numbers. Groups that keep their names hold them first;
// then the groups that change take their names in batch order, and a group whose names are taken
// tries "-2", "-3"… with one number for all its members. A number passed over for some base and
// extensions is never free again for them, so each such group starts where the last one stopped.
class SuffixPlanner {
 public:
  SuffixPlanner(const Data& d, std::vector<PlannedRename>& items, std::vector<std::string>& newKeys)
      : d_(d), items_(items), newKeys_(newKeys), planned_(d.folders.size()) {
    for (KeyViews& keys : planned_)
      keys.reserve(items.size());
  }

  // Which rows keep a clash because every number is taken.
  std::vector<bool> run() {
    std::vector<bool> duplicate(items_.size(), false);
    for (const TwinGroup& group : d_.groups) {
      if (!keepsItsNames(group)) continue;
      for (std::size_t m : group.members)
        planned_[folderOfRow(d_.rowOf[m])].insert(newKeys_[d_.rowOf[m]]);
    }
    for (const TwinGroup& group : d_.groups) {
      if (keepsItsNames(group)) continue;
      rows_.clear();
      wanted_.clear();
      for (std::size_t m : group.members) {
        rows_.push_back(d_.rowOf[m]);
        wanted_.push_back(newKeys_[d_.rowOf[m]]);
      }
      if (!isFree(wanted_) && !number()) {
        // Every number is taken: the clash stays, as an error.
        for (std::size_t r : rows_)
          duplicate[r] = planned_[folderOfRow(r)].count(newKeys_[r]) > 0;
      }
      for (std::size_t r : rows_)
        planned_[folderOfRow(r)].insert(newKeys_[r]);
    }
    return duplicate;
  }

 private:
  std::size_t folderOfRow(std::size_t r) const { return d_.folderOf[items_[r].subjectIndex]; }

  bool keepsItsNames(const TwinGroup& group) const {
    return std::none_of(group.members.begin(), group.members.end(),
                        [&](std::size_t m) { return items_[d_.rowOf[m]].changes; });
  }

  // Whether the group's rows may take `keys`: held by no entry outside, by no planned name, and
  // not twice in one folder.
  template <typename Keys>
  bool isFree(const Keys& keys) const {
    for (std::size_t i = 0; i < keys.size(); ++i) {
      const std::size_t f = folderOfRow(rows_[i]);
      if (d_.outside[f].count(keys[i]) > 0 || planned_[f].count(keys[i]) > 0) return false;
      for (std::size_t j = 0; j < i; ++j) {
        if (keys[j] == keys[i] && folderOfRow(rows_[j]) == f) return false;
      }
    }
    return true;
  }

  // Gives the group's rows the first free number; false when every number is taken.
  bool number() {
    std::string signature = std::to_string(folderOfRow(rows_.front()));
    for (std::string_view k : wanted_)
      signature.append(1, '\0').append(k);
    candidate_.resize(rows_.size());
    int& n = nextSuffix_.try_emplace(std::move(signature), kFirstSuffix).first->second;
    for (; n <= kLastSuffix; ++n) {
      for (std::size_t i = 0; i < rows_.size(); ++i) {
        FileName name = items_[rows_[i]].newName;
        name.base = suffixed(name, n);
        candidate_[i] = NameKey::of(name.fullName()).value;
      }
      if (!isFree(candidate_)) continue;
      for (std::size_t i = 0; i < rows_.size(); ++i) {
        items_[rows_[i]].newName.base = suffixed(items_[rows_[i]].newName, n);
        newKeys_[rows_[i]] = candidate_[i];
      }
      ++n;
      return true;
    }
    return false;
  }

  const Data& d_;
  std::vector<PlannedRename>& items_;
  std::vector<std::string>& newKeys_;
  std::vector<KeyViews> planned_;
  std::unordered_map<std::string, int> nextSuffix_;
  std::vector<std::size_t> rows_;
  std::vector<std::string_view> wanted_;  // the group's own new names, viewed in newKeys
  std::vector<std::string> candidate_;    // the same with a number
};

// One row's checks and status.
void checkRow(const Data& d, PlannedRename& row, const std::string& newKey, bool duplicate) {
  const std::size_t f = d.folderOf[row.subjectIndex];
  const std::string newFull = row.newName.fullName();
  row.changes = newFull != d.current[row.subjectIndex].fullName();
  if (row.changes) row.errors = NameCheck::problems(row.newName.base, row.newName.ext);
  if (row.changes) {
    int refusal = d.refusal[f];
    if (refusal == 0 && !d.fileRefusal.empty()) refusal = d.fileRefusal[row.subjectIndex];
    if (refusal != 0) row.errors.push_back(NameError::refused(refusal));
  }
  if (duplicate) row.errors.push_back(NameError::duplicateInBatch());
  if (row.changes && d.outside[f].count(newKey) > 0) {
    row.errors.push_back(NameError::existingFile(newFull));
  }

  if (const auto& key = d.twinKeys[row.subjectIndex]; key && !d.outsideTwins.empty()) {
    const auto it = d.outsideTwins.find(*key);
    if (it != d.outsideTwins.end()) {
      row.warnings.push_back(PreviewWarning{PreviewWarning::Kind::incompleteTwins, {}, it->second});
    }
  }
  if (!d.listed[f])
    row.warnings.push_back(PreviewWarning{PreviewWarning::Kind::folderNotListed, {}, {}});

  if (!row.errors.empty()) {
    row.status = PreviewStatus::error;
  } else if (!row.warnings.empty()) {
    row.status = PreviewStatus::warning;
  } else {
    row.status = row.changes ? PreviewStatus::ok : PreviewStatus::unchanged;
  }
}

}  // namespace

RenamePreview buildPreview(const PreparedBatch& batch, const CompiledRuleStack& stack,
                           const NamingContext& naming, DuplicatePolicy duplicates) {
  const Data& d = *batch.d_;
  const std::size_t count = d.subjects->size();
  RenamePreview preview;
  std::vector<PlannedRename>& items = preview.items;
  items = nameRows(d, stack, naming);

  std::vector<std::string> newKeys(count);
  parallelFor(count, kMinimumPerThread, [&](std::size_t begin, std::size_t end) {
    for (std::size_t r = begin; r < end; ++r)
      newKeys[r] = NameKey::of(items[r].newName.fullName()).value;
  });
  const std::vector<bool> duplicate = duplicates == DuplicatePolicy::markError
                                          ? markDuplicates(d, items, newKeys)
                                          : SuffixPlanner(d, items, newKeys).run();

  // Each row's checks and status, rows apart from one another.
  parallelFor(count, kMinimumPerThread, [&](std::size_t begin, std::size_t end) {
    for (std::size_t r = begin; r < end; ++r)
      checkRow(d, items[r], newKeys[r], duplicate[r]);
  });
  for (std::size_t r = 0; r < count; ++r) {
    if (items[r].changes && items[r].errors.empty()) preview.changedFiles.push_back(r);
  }
  return preview;
}

}  // namespace tessane
