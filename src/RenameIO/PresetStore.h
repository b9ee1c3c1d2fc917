// The presets folder: lists, saves and deletes preset files ("Wedding.tessanepreset").
//
// Listing never lets one bad file hide the others: files that can't be read or decoded are
// reported beside the presets, which come sorted by name as a file manager sorts. Saving never
// overwrites another preset or a file it can't read: "Wedding 2", "Wedding 3"… are tried until a
// free name or the preset's own file is found; the file is written atomically and durably.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "RenameEngine/Preset.h"
#include "RenameIO/IOError.h"

namespace tessane {

class PresetStore {
 public:
  struct Entry {
    Preset preset;
    std::filesystem::path file;
  };
  struct Failure {
    std::filesystem::path file;
    std::variant<PresetError, IOError> error;
  };
  struct Listing {
    std::vector<Entry> presets;
    std::vector<Failure> failures;
  };

  // The message shown when the folder itself can't be read.
  static constexpr std::string_view kListingFailed = "Couldn’t read the presets.";

  explicit PresetStore(std::filesystem::path directory) : directory_(std::move(directory)) {}
  // The data folder's "Presets".
  static PresetStore standard();

  const std::filesystem::path& directory() const { return directory_; }

  // What a user's word for a preset stands for: a preset of the folder by its name (exactly, else
  // ignoring case), else a file of the folder that doesn't decode, by its file name or stem, else
  // a preset file by its path. `preset` is absent when the file can't be read or decoded, and
  // `failure` says why.
  struct Found {
    std::optional<Preset> preset;
    std::filesystem::path file;
    std::optional<Failure> failure;
  };
  struct LookupError {
    enum class Kind { listingFailed, notFound };
    Kind kind = Kind::notFound;
    IOError listing;  // listingFailed: why the folder can't be read
  };

  // Fails only when the folder can't be made or read.
  Result<Listing> list() const;
  Result<Found, LookupError> find(std::string_view nameOrFile) const;
  // The file written.
  Result<std::filesystem::path> save(const Preset& preset) const;
  std::optional<IOError> remove(const std::filesystem::path& file) const;
  // Reads one preset file (also one outside the folder, given by the user).
  static std::variant<Preset, PresetError, IOError> read(const std::filesystem::path& file);

 private:
  std::filesystem::path directory_;
};

}  // namespace tessane
