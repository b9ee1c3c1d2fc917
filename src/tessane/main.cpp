// tessane: the command-line tool over the name engine.
//
//   tessane list FOLDER   each file of the folder with its base, extension, kind and blocks
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "RenameEngine/BlockedName.h"
#include "RenameEngine/FileName.h"
#include "RenameEngine/Unicode.h"
#include "RenameIO/CrashRecovery.h"
#include "RenameIO/DataFolder.h"
#include "RenameIO/FolderListing.h"
#include "RenameIO/LinuxFileRenaming.h"

namespace {

using namespace tessane;

constexpr int kExitOk = 0;
constexpr int kExitRefused = 1;
constexpr int kExitUsage = 2;

void printUsage(std::FILE* out) {
  std::fputs(
      "Usage: tessane list FOLDER\n"
      "\n"
      "  list FOLDER   show each file of FOLDER (one level deep, hidden files left out) with its\n"
      "                base name, extension, kind and name blocks\n",
      out);
}

// Pads to a width counted in terminal columns, not bytes, so accented and emoji names line up.
std::string padded(std::string_view text, std::size_t width) {
  std::string out(text);
  const std::size_t shown = unicode::displayWidth(text);
  if (shown < width) out.append(width - shown, ' ');
  return out;
}

std::string blocksOf(const FileName& name) {
  std::string out;
  const BlockedName blocked = BlockedName::split(name.base);
  for (const NameToken& t : blocked.tokens()) {
    if (t.kind == NameToken::Kind::block) {
      out.append("[").append(t.text).append("]");
    } else {
      out.append(t.text);
    }
  }
  return out;
}

int list(const std::string& folder) {
  Result<std::vector<ListedFile>> files = FolderListing::files(folder);
  if (!files) {
    std::fprintf(stderr, "tessane: %s\n", files.error().message().c_str());
    return kExitRefused;
  }
  Result<std::vector<std::string>> names = FolderListing::names(folder);
  const std::size_t others = names ? names.value().size() - files.value().size() : 0;

  struct Row {
    std::string name, base, ext, blocks;
    std::string_view kind = "-";
    bool isText;
  };
  std::vector<Row> rows;
  std::size_t nameWidth = 4, baseWidth = 4, extWidth = 3;
  for (const ListedFile& file : files.value()) {
    Row row;
    row.isText = file.nameIsText;
    row.name = file.displayName();
    if (file.nameIsText) {
      const FileName split = FileName::parse(file.name);
      row.base = split.base;
      row.ext = split.ext;
      row.kind = rawValue(split.kind());
      row.blocks = blocksOf(split);
    } else {
      row.blocks = std::string(FolderListing::kNameNotTextWarning);
    }
    nameWidth = std::max(nameWidth, unicode::displayWidth(row.name));
    baseWidth = std::max(baseWidth, unicode::displayWidth(row.base));
    extWidth = std::max(extWidth, unicode::displayWidth(row.ext));
    rows.push_back(std::move(row));
  }

  std::printf("%s  %s  %s  %-7s  %s\n", padded("Name", nameWidth).c_str(),
              padded("Base", baseWidth).c_str(), padded("Ext", extWidth).c_str(), "Kind", "Blocks");
  for (const Row& row : rows) {
    std::printf("%s  %s  %s  %-7s  %s%s\n", padded(row.name, nameWidth).c_str(),
                padded(row.base, baseWidth).c_str(), padded(row.ext, extWidth).c_str(),
                std::string(row.kind).c_str(), row.isText ? "" : "⚠ ", row.blocks.c_str());
  }
  std::printf("\n%zu file%s; %zu other entr%s (hidden files, folders, links) not listed\n",
              rows.size(), rows.size() == 1 ? "" : "s", others, others == 1 ? "y" : "ies");
  return kExitOk;
}

// A batch that a killed process left half done is put back before anything else happens.
void recoverInterruptedBatches() {
  LinuxFileRenaming system;
  const RecoveryReport report = CrashRecovery::recoverJournals(DataFolder::journalFolder(), system);
  if (!report.empty()) std::fprintf(stderr, "tessane: %s", report.summary().c_str());
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> args(argv + 1, argv + argc);
  recoverInterruptedBatches();
  if (args.empty()) {
    printUsage(stderr);
    return kExitUsage;
  }
  if (args[0] == "-h" || args[0] == "--help" || args[0] == "help") {
    printUsage(stdout);
    return kExitOk;
  }
  if (args[0] == "list" && args.size() == 2) return list(args[1]);
  std::fprintf(stderr, "tessane: unknown command or wrong arguments\n\n");
  printUsage(stderr);
  return kExitUsage;
}
