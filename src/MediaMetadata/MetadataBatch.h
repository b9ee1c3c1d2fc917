// Reading the metadata of many files at once, on a pool of threads.
//
// `read` blocks until every file is read or the batch is stopped, and returns one result per
// file in the order the files were given, whatever order the threads finished in. Stopping is
// checked before each file, so a stop request returns after at most the files already being
// read; files not reached have no result. Progress is reported after each file with the count
// done so far; the calls come from the reading threads, one at a time and with increasing counts,
// so the callback needs no lock of its own but must be quick (post to the main thread, say).
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <span>
#include <stop_token>
#include <vector>

#include "MetadataProvider.h"
#include "RenameEngine/FileKind.h"

namespace tessane {

struct BatchFile {
  std::filesystem::path path;
  FileKind kind = FileKind::other;
};

struct BatchOptions {
  unsigned threads = 0;  // 0: one per core
  std::function<void(std::size_t done, std::size_t total)> progress;
  std::stop_token stop;
};

struct BatchResult {
  std::vector<std::optional<FileMetadata>> files;  // one per file given, in the same order
  bool stopped = false;                            // true when some files were not read
};

namespace MetadataBatch {

BatchResult read(const MetadataProvider& provider, std::span<const BatchFile> files,
                 const BatchOptions& options = {});

}  // namespace MetadataBatch
}  // namespace tessane
