#include "FileDates.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <chrono>

namespace tessane::FileDates {
namespace {

Date toDate(const struct statx_timestamp& t) {
  using namespace std::chrono;
  return Date{seconds{t.tv_sec} + microseconds{t.tv_nsec / 1000}};
}

}  // namespace

void read(const std::filesystem::path& path, MetadataMap& out) {
  struct statx st {};
  if (::statx(AT_FDCWD, path.c_str(), AT_STATX_SYNC_AS_STAT, STATX_BTIME | STATX_MTIME, &st) != 0)
    return;
  if ((st.stx_mask & STATX_BTIME) != 0)
    out.set(MetadataKey::created, MetadataValue::date(toDate(st.stx_btime)));
  if ((st.stx_mask & STATX_MTIME) != 0)
    out.set(MetadataKey::modified, MetadataValue::date(toDate(st.stx_mtime)));
}

}  // namespace tessane::FileDates
