// tessane list FOLDER: each file of a folder with its base, extension, kind and blocks.
#include <CLI/CLI.hpp>

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "RenameEngine/BlockedName.h"
#include "RenameEngine/FileName.h"
#include "RenameEngine/Unicode.h"
#include "RenameIO/FolderListing.h"
#include "TessaneRename/Messages.h"
#include "Tool.h"

namespace tessane::cli {
namespace {

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
    std::fprintf(stderr, "tessane: %s\n", Messages::of(files.error()).c_str());
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

}  // namespace

void addListCommand(CLI::App& app, Tool& tool, int& exitCode) {
  (void)tool;
  auto* command = app.add_subcommand(
      "list", "Show each file of a folder with its base name, extension, kind and name blocks");
  auto folder = std::make_shared<std::string>();
  command->add_option("FOLDER", *folder, "The folder (one level deep, hidden files left out)")
      ->required();
  command->callback([folder, &exitCode] { exitCode = list(*folder); });
}

}  // namespace tessane::cli
