// Twins: the RAW, JPEG, XMP and video of one shot share the name before the dot. Only the group's
// primary (the RAW first, then the name a file manager lists first) goes through the rules; the
// other members take its new base with their own extension.
//
// Extension changes still reach a twin, each as its own scope says: a rule that changes the
// extension (setExtension, changeExtensionCase) acts on a twin's extension when its conditions
// hold for the twin itself. So "lower-case the extension" scoped to JPEG turns the JPEG that
// follows a RAW into ".jpg" and leaves the RAW alone, and one scoped to RAW leaves the JPEG as it
// is. Changes of the name before the dot are the primary's alone: the twins share its base,
// whatever their scope, or they would no longer be twins. A sidecar named after its RAW with the
// RAW's extension ("IMG_1.CR2.xmp") keeps that part in step with the RAW's new extension
// ("n_0001.cr2.xmp" beside "n_0001.cr2"), so that it still matches its RAW on a case-sensitive
// disk; the extension changes that hold for the sidecar act on the rest ("xmp").
// CompiledRuleStack::twinExtension gives that extension.
#pragma once

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "FileName.h"
#include "RenameSubject.h"

namespace tessane {

struct TwinOptions {
  bool isEnabled = true;             // "Keep twins together"
  std::set<std::string> extensions;  // lower case, no dot: the extensions that may be twins

  // RAW extensions always, with still images, video and sidecars as chosen.
  static TwinOptions forKinds(bool images, bool video, bool sidecars);

  friend bool operator==(const TwinOptions&, const TwinOptions&) = default;
};

struct TwinGroup {
  std::size_t primary = 0;           // index in the batch
  std::vector<std::size_t> members;  // the primary included, in batch order

  friend bool operator==(const TwinGroup&, const TwinGroup&) = default;
};

// The twin key of a file name, or nullopt when it can't be a twin. The key is the folder and the
// base name in NFC, case-folded: IMG_1.ARW and img_1.jpg in one folder are twins, files of two
// cards are not. A double extension ("IMG_1.CR2.xmp") counts by its last part ("xmp").
std::optional<std::string> twinKey(std::string_view fileName, std::string_view folder,
                                   const TwinOptions& options);

// Groups the batch's files; `order` is the batch order (a permutation of subject indices).
// Groups come in the order their first member is met; a file without twins is a group alone, and
// so is a file whose whole name differs from a member's only in case ("img.jpg" after "IMG.jpg").
std::vector<TwinGroup> groupTwins(const std::vector<RenameSubject>& subjects,
                                  const std::vector<std::size_t>& order,
                                  const TwinOptions& options);
// The same from twin keys computed beforehand (one per subject, nullopt: no twins) and the
// subjects' parsed names.
std::vector<TwinGroup> groupTwins(const std::vector<std::optional<std::string>>& keys,
                                  const std::vector<FileName>& names,
                                  const std::vector<std::size_t>& order);

}  // namespace tessane
