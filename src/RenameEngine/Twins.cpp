#include "Twins.h"

#include <unordered_map>

#include "FileKind.h"
#include "FileName.h"
#include "NameKey.h"
#include "NaturalOrder.h"
#include "Unicode.h"

namespace tessane {

TwinOptions TwinOptions::forKinds(bool images, bool video, bool sidecars) {
  TwinOptions options;
  auto add = [&](FileKind kind) {
    for (std::string_view ext : extensionsOf(kind))
      options.extensions.emplace(ext);
  };
  add(FileKind::raw);
  if (images) add(FileKind::image);
  if (video) add(FileKind::video);
  if (sidecars) add(FileKind::sidecar);
  return options;
}

std::optional<std::string> twinKey(std::string_view fileName, std::string_view folder,
                                   const TwinOptions& options) {
  if (!options.isEnabled) return std::nullopt;
  const FileName name = FileName::parse(fileName);
  if (name.ext.empty()) return std::nullopt;
  std::string_view ext = name.ext;
  if (const std::size_t dot = ext.rfind('.'); dot != std::string_view::npos)
    ext.remove_prefix(dot + 1);
  if (options.extensions.count(unicode::toLower(ext)) == 0) return std::nullopt;
  std::string key(folder);
  key.push_back('\0');  // never part of a path: keeps folder and name apart
  key.append(NameKey::of(name.base).value);
  return key;
}

std::vector<TwinGroup> groupTwins(const std::vector<RenameSubject>& subjects,
                                  const std::vector<std::size_t>& order,
                                  const TwinOptions& options) {
  std::vector<std::optional<std::string>> keys;
  std::vector<FileName> names;
  for (const RenameSubject& s : subjects) {
    keys.push_back(twinKey(s.name, s.folder.native(), options));
    names.push_back(FileName::parse(s.name));
  }
  return groupTwins(keys, names, order);
}

namespace {

// Whether a member of the group has the extension `ext` up to case.
bool holdsExtension(const TwinGroup& group, const std::vector<FileName>& names,
                    std::string_view ext) {
  const std::string folded = unicode::foldCase(ext);
  for (std::size_t m : group.members) {
    if (unicode::foldCase(names[m].ext) == folded) return true;
  }
  return false;
}

}  // namespace

std::vector<TwinGroup> groupTwins(const std::vector<std::optional<std::string>>& keys,
                                  const std::vector<FileName>& names,
                                  const std::vector<std::size_t>& order) {
  std::vector<TwinGroup> groups;
  groups.reserve(order.size());
  std::unordered_map<std::string_view, std::size_t> byKey;  // twin key -> group
  byKey.reserve(order.size());
  for (std::size_t index : order) {
    if (!keys[index]) {
      groups.push_back(TwinGroup{index, {index}});
      continue;
    }
    const auto [it, isNew] = byKey.emplace(*keys[index], groups.size());
    if (isNew) {
      groups.push_back(TwinGroup{index, {index}});
    } else if (TwinGroup& g = groups[it->second]; holdsExtension(g, names, names[index].ext)) {
      // "IMG.jpg" beside "img.jpg": two files, not two parts of one shot; they could never both
      // take one base.
      groups.push_back(TwinGroup{index, {index}});
    } else {
      g.members.push_back(index);
    }
  }

  // The primary: the kind that comes first (RAW first), then the name listed first, then the
  // lower index.
  for (TwinGroup& g : groups) {
    if (g.members.size() < 2) continue;
    auto better = [&](std::size_t a, std::size_t b) {
      const FileKind ka = names[a].kind();
      const FileKind kb = names[b].kind();
      if (ka != kb) return ka < kb;
      const int byName = unicode::naturalCompare(names[a].fullName(), names[b].fullName());
      if (byName != 0) return byName < 0;
      return a < b;
    };
    g.primary = g.members.front();
    for (std::size_t m : g.members) {
      if (better(m, g.primary)) g.primary = m;
    }
  }
  return groups;
}

}  // namespace tessane
