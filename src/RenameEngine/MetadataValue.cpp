#include "MetadataValue.h"

#include <algorithm>
#include <functional>

namespace tessane {
namespace {

std::size_t combine(std::size_t seed, std::size_t value) {
  return seed ^ (value + 0x9e3779b97f4a7c15ULL + (seed << 6) + (seed >> 2));
}

auto lowerBound(const std::vector<MetadataMap::Entry>& entries, MetadataKey key) {
  return std::lower_bound(entries.begin(), entries.end(), key,
                          [](const MetadataMap::Entry& e, MetadataKey k) { return e.first < k; });
}

}  // namespace

std::size_t MetadataValue::hash() const noexcept {
  std::size_t h = std::hash<std::size_t>{}(value_.index());
  switch (kind()) {
    case Case::text:
      return combine(h, std::hash<std::string>{}(*asText()));
    case Case::integer:
      return combine(h, std::hash<std::int64_t>{}(*asInteger()));
    case Case::number: {
      const double d = *asNumber();
      // -0.0 and 0.0 are equal, so they must hash alike.
      return combine(h, std::hash<double>{}(d == 0.0 ? 0.0 : d));
    }
    case Case::date:
      return combine(h, std::hash<std::int64_t>{}(asDate()->time_since_epoch().count()));
  }
  return h;
}

const MetadataValue* MetadataMap::find(MetadataKey key) const noexcept {
  const auto it = lowerBound(entries_, key);
  return (it != entries_.end() && it->first == key) ? &it->second : nullptr;
}

void MetadataMap::set(MetadataKey key, MetadataValue value) {
  const auto it = lowerBound(entries_, key);
  if (it != entries_.end() && it->first == key) {
    entries_[static_cast<std::size_t>(it - entries_.begin())].second = std::move(value);
  } else {
    entries_.insert(it, Entry{key, std::move(value)});
  }
}

bool MetadataMap::erase(MetadataKey key) {
  const auto it = lowerBound(entries_, key);
  if (it == entries_.end() || it->first != key) return false;
  entries_.erase(it);
  return true;
}

}  // namespace tessane
