#include "MetadataBatch.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <thread>

namespace tessane::MetadataBatch {

BatchResult read(const MetadataProvider& provider, std::span<const BatchFile> files,
                 const BatchOptions& options) {
  BatchResult result;
  result.files.resize(files.size());
  if (files.empty()) return result;

  unsigned threads = options.threads != 0 ? options.threads : std::thread::hardware_concurrency();
  threads = std::clamp<unsigned>(threads, 1,
                                 static_cast<unsigned>(std::min<std::size_t>(files.size(), 64)));

  std::atomic<std::size_t> next{0};
  std::atomic<bool> stopped{false};
  std::mutex progressMutex;
  std::size_t done = 0;

  const auto work = [&] {
    for (;;) {
      const std::size_t i = next.fetch_add(1, std::memory_order_relaxed);
      if (i >= files.size()) return;
      if (options.stop.stop_requested()) {
        stopped = true;
        return;
      }
      try {
        result.files[i] = provider.read(files[i].path, files[i].kind);
      } catch (...) {
        // Out of memory on one file: it has no result, the others go on.
      }
      if (options.progress) {
        const std::lock_guard lock(progressMutex);
        options.progress(++done, files.size());
      }
    }
  };

  std::vector<std::jthread> pool;
  pool.reserve(threads - 1);
  for (unsigned t = 1; t < threads; ++t)
    pool.emplace_back(work);
  work();
  pool.clear();  // joins

  result.stopped = stopped.load();
  return result;
}

}  // namespace tessane::MetadataBatch
