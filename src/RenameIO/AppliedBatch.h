// What a batch did: its identity, when it ran and its moves exactly as they were handed in.
// The history records it and can later reverse it.
#pragma once

#include <vector>

#include "RenameEngine/MetadataValue.h"
#include "RenameEngine/Uuid.h"
#include "RenameIO/FileMove.h"

namespace tessane {

struct AppliedBatch {
  Uuid id;  // fresh for each application; its first 8 characters mark the temporary names
  Date date;
  std::vector<FileMove> moves;  // in batch order
};

}  // namespace tessane
