// Batch shapes that the renamer's tests run through, over a folder ("/card" of a fake file system
// unless told):
// plain renames, a rotation of all files, swaps, 3-cycles, case-only changes and a mix of them.
#pragma once

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "RenameIO/FileMove.h"
#include "TextJoin.h"

namespace tessane::testing {

inline std::filesystem::path at(const std::string& name) {
  return std::filesystem::path("/card") / name;
}

inline FileMove mv(std::filesystem::path from, std::filesystem::path to) {
  return FileMove{std::move(from), std::move(to)};
}

struct Shape {
  std::string label;
  std::vector<std::string> files;
  std::vector<std::pair<std::string, std::string>> moves;  // source name -> destination name

  std::vector<FileMove> fileMoves(const std::filesystem::path& folder = "/card") const {
    std::vector<FileMove> out;
    for (const auto& [from, to] : moves)
      out.push_back(FileMove{folder / from, folder / to});
    return out;
  }
  std::string name(const char* stem, std::size_t i) const {
    return join({stem, std::to_string(i), ".jpg"});
  }
  // `length` files named stem+i... that each take the next one's name (2: a swap).
  void cycle(const char* stem, std::size_t length) {
    const std::size_t first = files.size();
    for (std::size_t j = 0; j < length; ++j) {
      files.push_back(name(stem, first + j));
      moves.emplace_back(files.back(), name(stem, first + (j + 1) % length));
    }
  }
  void plain(const char* stem, const char* newStem) {
    files.push_back(name(stem, files.size()));
    moves.emplace_back(files.back(), name(newStem, files.size() - 1));
  }
};

inline std::vector<Shape> shapesOf(std::size_t n) {
  std::vector<Shape> out(6);
  out[0].label = "plain";
  out[1].label = "rotation";
  out[2].label = "case-only";
  out[3].label = "swaps";
  out[4].label = "3-cycles";
  out[5].label = "mix";
  for (std::size_t i = 0; i < n; ++i) {
    out[0].plain("a", "b");
    out[2].plain("img", "IMG");
  }
  out[1].cycle("r", n);
  for (std::size_t i = 0; i + 2 <= n; i += 2)
    out[3].cycle("s", 2);
  for (std::size_t i = 0; i + 3 <= n; i += 3)
    out[4].cycle("c", 3);
  // One plain move, a swap, a 3-cycle and a case-only change, again and again.
  for (std::size_t kind = 0; out[5].moves.size() < n; kind = (kind + 1) % 4) {
    const std::size_t left = n - out[5].moves.size();
    if (kind == 1 && left >= 2) {
      out[5].cycle("x", 2);
    } else if (kind == 2 && left >= 3) {
      out[5].cycle("y", 3);
    } else {
      out[5].plain(kind == 3 ? "dsc" : "p", kind == 3 ? "DSC" : "q");
    }
  }
  out[5].files.push_back("untouched.jpg");  // an outside file that stays where it is
  // Shapes that n can't fill are left out.
  std::erase_if(out, [n](const Shape& s) { return s.moves.size() != n || s.moves.empty(); });
  return out;
}

}  // namespace tessane::testing
