#include "RenamePreview.h"

#include <algorithm>
#include <numeric>
#include <unordered_set>

#include "CaptureTime.h"
#include "FileName.h"
#include "NameKey.h"
#include "Unicode.h"

namespace tessane {
namespace {

constexpr int kFirstSuffix = 2;
constexpr int kLastSuffix = 10000;

using KeySet = std::unordered_set<std::string>;

std::string suffixed(const FileName& name, int n) {
  std::string base = name.base;
  base.append("-").append(std::to_string(n));
  return base;
}

// Sort keys made only when two subjects need their names compared.
class LazyNameKeys {
 public:
  explicit LazyNameKeys(const std::vector<RenameSubject>& subjects)
      : subjects_(subjects), keys_(subjects.size()) {}
  const std::string& operator[](std::size_t i) {
    if (!keys_[i]) keys_[i] = unicode::naturalSortKey(subjects_[i].name);
    return *keys_[i];
  }

 private:
  const std::vector<RenameSubject>& subjects_;
  std::vector<std::optional<std::string>> keys_;
};

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

std::string PreviewWarning::message(std::string_view missingText) const {
  switch (kind) {
    case Kind::rule:
      return issue ? issue->issue.message(missingText) : std::string();
    case Kind::incompleteTwins: {
      std::string text = "“";
      for (std::size_t i = 0; i < twins.size(); ++i) {
        if (i > 0) text.append("”, “");
        text.append(unicode::toDisplayable(twins[i]));
      }
      return text.append("” is outside the batch: it won’t be renamed");
    }
    case Kind::folderNotListed:
      return "Can’t read the folder: existing names weren’t checked";
  }
  return {};
}

bool RenamePreview::hasErrors() const {
  return std::any_of(items.begin(), items.end(),
                     [](const PlannedRename& r) { return !r.errors.empty(); });
}

std::vector<std::size_t> orderBatch(const std::vector<RenameSubject>& subjects, BatchOrder order) {
  std::vector<std::size_t> indices(subjects.size());
  std::iota(indices.begin(), indices.end(), 0);
  if (order == BatchOrder::asGiven) return indices;
  LazyNameKeys names(subjects);
  if (order == BatchOrder::name) {
    std::stable_sort(indices.begin(), indices.end(),
                     [&](std::size_t a, std::size_t b) { return names[a] < names[b]; });
    return indices;
  }
  std::vector<std::optional<Date>> dates(subjects.size());
  for (std::size_t i = 0; i < subjects.size(); ++i) {
    dates[i] = CaptureTime::of(subjects[i].captureDate, subjects[i].metadata);
  }
  std::sort(indices.begin(), indices.end(), [&](std::size_t a, std::size_t b) {
    if (dates[a].has_value() != dates[b].has_value()) return dates[a].has_value();
    if (dates[a] && *dates[a] != *dates[b]) return *dates[a] < *dates[b];
    const int byName = names[a].compare(names[b]);
    if (byName != 0) return byName < 0;
    return a < b;
  });
  return indices;
}

RenamePreview buildPreview(const PreviewRequest& request) {
  return buildPreview(request, CompiledRuleStack(request.stack));
}

RenamePreview buildPreview(const PreviewRequest& request, const CompiledRuleStack& stack) {
  const std::vector<RenameSubject>& subjects = request.subjects;
  const std::vector<std::size_t> order = orderBatch(subjects, request.order);
  const std::vector<TwinGroup> groups = groupTwins(subjects, order, request.twins);

  // The primaries go through the rules in batch order.
  std::vector<const RenameSubject*> primaries;
  primaries.reserve(groups.size());
  for (const TwinGroup& g : groups)
    primaries.push_back(&subjects[g.primary]);
  std::vector<RuleResult> results = stack.apply(primaries, request.naming);

  RenamePreview preview;
  preview.items.resize(subjects.size());
  std::vector<std::size_t> rowOf(subjects.size());
  for (std::size_t row = 0; row < order.size(); ++row)
    rowOf[order[row]] = row;

  // Names: each member takes its primary's new base with its own extension.
  std::vector<FileName> current(subjects.size());
  for (std::size_t i = 0; i < subjects.size(); ++i)
    current[i] = FileName::parse(subjects[i].name);
  for (std::size_t g = 0; g < groups.size(); ++g) {
    const TwinGroup& group = groups[g];
    RuleResult& result = results[g];
    for (std::size_t member : group.members) {
      PlannedRename& row = preview.items[rowOf[member]];
      row.subjectIndex = member;
      row.primaryIndex = rowOf[group.primary];
      row.newName = member == group.primary ? result.newName
                                            : FileName{result.newName.base, current[member].ext};
      for (const RuleIssue& issue : result.issues) {
        row.warnings.push_back(PreviewWarning{PreviewWarning::Kind::rule, issue, {}});
      }
    }
    preview.items[rowOf[group.primary]].steps = std::move(result.changedBy);
  }

  // Per folder: the keys of the batch's own current names, and the other names already there.
  std::unordered_map<std::string, KeySet> batchKeys;
  for (std::size_t i = 0; i < subjects.size(); ++i) {
    batchKeys[subjects[i].folder.native()].insert(NameKey::of(current[i].fullName()).value);
  }
  std::unordered_map<std::string, KeySet> outside;
  std::unordered_set<std::string> unlisted;
  for (const auto& [folder, keys] : batchKeys) {
    const auto it = request.folders.find(folder);
    if (it == request.folders.end() || !it->second.listed) {
      unlisted.insert(folder);
      continue;
    }
    KeySet& taken = outside[folder];
    for (const std::string& name : it->second.names) {
      std::string key = NameKey::of(name).value;
      if (keys.count(key) == 0) taken.insert(std::move(key));
    }
  }
  auto folderOf = [&](const PlannedRename& row) -> const std::string& {
    return subjects[row.subjectIndex].folder.native();
  };
  auto outsideHas = [&](const std::string& folder, const std::string& key) {
    const auto it = outside.find(folder);
    return it != outside.end() && it->second.count(key) > 0;
  };

  std::vector<std::string> newKeys(preview.items.size());
  std::vector<bool> duplicate(preview.items.size(), false);
  if (request.duplicates == DuplicatePolicy::markError) {
    std::unordered_map<std::string, std::size_t> count;  // folder + key -> rows
    for (std::size_t r = 0; r < preview.items.size(); ++r) {
      newKeys[r] = NameKey::of(preview.items[r].newName.fullName()).value;
      ++count[folderOf(preview.items[r]) + '\0' + newKeys[r]];
    }
    for (std::size_t r = 0; r < preview.items.size(); ++r) {
      duplicate[r] = count[folderOf(preview.items[r]) + '\0' + newKeys[r]] > 1;
    }
  } else {
    // Groups in batch order take their names; a group whose names are taken tries "-2", "-3"…
    // with one number for all its members. Numbers already passed for the same base and
    // extensions are never free again, so each group starts where the last such group stopped.
    std::unordered_map<std::string, KeySet> planned;  // folder -> keys planned so far
    std::unordered_map<std::string, int> nextSuffix;
    auto isTaken = [&](const std::string& folder, const std::string& key) {
      return outsideHas(folder, key) || planned[folder].count(key) > 0;
    };
    for (const TwinGroup& group : groups) {
      std::vector<std::size_t> rows;
      for (std::size_t m : group.members)
        rows.push_back(rowOf[m]);
      auto keysWith = [&](int n) {
        std::vector<std::string> keys;
        for (std::size_t r : rows) {
          FileName name = preview.items[r].newName;
          if (n > 0) name.base = suffixed(name, n);
          keys.push_back(NameKey::of(name.fullName()).value);
        }
        return keys;
      };
      auto isFree = [&](const std::vector<std::string>& keys) {
        for (std::size_t i = 0; i < keys.size(); ++i) {
          if (isTaken(folderOf(preview.items[rows[i]]), keys[i])) return false;
          for (std::size_t j = 0; j < i; ++j) {
            if (keys[j] == keys[i] &&
                folderOf(preview.items[rows[i]]) == folderOf(preview.items[rows[j]])) {
              return false;
            }
          }
        }
        return true;
      };
      std::vector<std::string> keys = keysWith(0);
      if (!isFree(keys)) {
        std::string signature = folderOf(preview.items[rows.front()]);
        for (const std::string& k : keys)
          signature.append("\0", 1).append(k);
        int& n = nextSuffix.try_emplace(signature, kFirstSuffix).first->second;
        bool found = false;
        for (; n <= kLastSuffix; ++n) {
          std::vector<std::string> candidate = keysWith(n);
          if (!isFree(candidate)) continue;
          for (std::size_t r : rows)
            preview.items[r].newName.base = suffixed(preview.items[r].newName, n);
          keys = std::move(candidate);
          found = true;
          ++n;
          break;
        }
        if (!found) {
          // Every number is taken: the clash stays an error.
          for (std::size_t i = 0; i < rows.size(); ++i) {
            if (planned[folderOf(preview.items[rows[i]])].count(keys[i]) > 0)
              duplicate[rows[i]] = true;
          }
        }
      }
      for (std::size_t i = 0; i < rows.size(); ++i) {
        planned[folderOf(preview.items[rows[i]])].insert(keys[i]);
        newKeys[rows[i]] = keys[i];
      }
    }
  }

  // Twins outside the batch, by twin key, from each folder's files.
  std::unordered_map<std::string, std::vector<std::string>> outsideTwins;
  if (request.twins.isEnabled) {
    for (const auto& [folder, keys] : batchKeys) {
      const auto it = request.folders.find(folder);
      if (it == request.folders.end()) continue;
      for (const std::string& file : it->second.files) {
        if (keys.count(NameKey::of(FileName::parse(file).fullName()).value) > 0) continue;
        if (auto key = twinKey(file, folder, request.twins)) outsideTwins[*key].push_back(file);
      }
    }
  }

  for (std::size_t r = 0; r < preview.items.size(); ++r) {
    PlannedRename& row = preview.items[r];
    const RenameSubject& subject = subjects[row.subjectIndex];
    const std::string& folder = subject.folder.native();
    const std::string newFull = row.newName.fullName();
    row.changes = newFull != current[row.subjectIndex].fullName();
    if (row.changes) row.errors = NameCheck::problems(row.newName.base, row.newName.ext);
    if (duplicate[r]) row.errors.push_back(NameError::duplicateInBatch());
    if (outsideHas(folder, newKeys[r])) row.errors.push_back(NameError::existingFile(newFull));

    if (!outsideTwins.empty()) {
      if (auto key = twinKey(subject.name, folder, request.twins)) {
        const auto it = outsideTwins.find(*key);
        if (it != outsideTwins.end()) {
          row.warnings.push_back(
              PreviewWarning{PreviewWarning::Kind::incompleteTwins, {}, it->second});
        }
      }
    }
    if (unlisted.count(folder) > 0) {
      row.warnings.push_back(PreviewWarning{PreviewWarning::Kind::folderNotListed, {}, {}});
    }

    if (!row.errors.empty()) {
      row.status = PreviewStatus::error;
    } else if (!row.warnings.empty()) {
      row.status = PreviewStatus::warning;
    } else {
      row.status = row.changes ? PreviewStatus::ok : PreviewStatus::unchanged;
    }
    if (row.changes && row.errors.empty()) preview.changedFiles.push_back(r);
  }
  return preview;
}

}  // namespace tessane
