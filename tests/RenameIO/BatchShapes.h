// Batch shapes that the renamer's tests run through: plain renames, a rotation of all files,
// swaps, 3-cycles, case-only changes and a mix of them, over a folder "/card" of a fake file
// system.
#pragma once

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

// A batch shape: the files of the folder and the moves over them.
struct Shape {
  std::string label;
  std::vector<std::string> files;
  std::vector<std::pair<std::string, std::string>> moves;  // source name -> destination name

  std::vector<FileMove> fileMoves() const {
    std::vector<FileMove> out;
    for (const auto& [from, to] : moves)
      out.push_back(FileMove{at(from), at(to)});
    return out;
  }
};

inline FileMove mv(std::filesystem::path from, std::filesystem::path to) {
  return FileMove{std::move(from), std::move(to)};
}

inline std::string numbered(const char* stem, std::size_t i) {
  return join({stem, std::to_string(i), ".jpg"});
}

// n plain renames, a rotation of all n, swaps, 3-cycles, case-only changes, and a mix of all.
inline std::vector<Shape> shapesOf(std::size_t n) {
  std::vector<Shape> out;
  Shape plain{"plain", {}, {}};
  Shape rotation{"rotation", {}, {}};
  Shape caseOnly{"case-only", {}, {}};
  for (std::size_t i = 0; i < n; ++i) {
    plain.files.push_back(numbered("a", i));
    plain.moves.emplace_back(numbered("a", i), numbered("b", i));
    rotation.files.push_back(numbered("r", i));
    rotation.moves.emplace_back(numbered("r", i), numbered("r", (i + 1) % n));
    caseOnly.files.push_back(numbered("img", i));
    caseOnly.moves.emplace_back(numbered("img", i), numbered("IMG", i));
  }
  out.push_back(plain);
  if (n >= 2) out.push_back(rotation);
  out.push_back(caseOnly);
  if (n % 2 == 0) {
    Shape swaps{"swaps", {}, {}};
    for (std::size_t i = 0; i < n; i += 2) {
      swaps.files.push_back(numbered("s", i));
      swaps.files.push_back(numbered("s", i + 1));
      swaps.moves.emplace_back(numbered("s", i), numbered("s", i + 1));
      swaps.moves.emplace_back(numbered("s", i + 1), numbered("s", i));
    }
    out.push_back(swaps);
  }
  if (n % 3 == 0) {
    Shape cycles{"3-cycles", {}, {}};
    for (std::size_t i = 0; i < n; i += 3) {
      for (std::size_t j = 0; j < 3; ++j) {
        cycles.files.push_back(numbered("c", i + j));
        cycles.moves.emplace_back(numbered("c", i + j), numbered("c", i + (j + 1) % 3));
      }
    }
    out.push_back(cycles);
  }
  if (n >= 4) {
    // Cycle through the four kinds of move, leaving the last files as a swap or plain moves.
    Shape mix{"mix", {}, {}};
    std::size_t i = 0;
    for (int kind = 0; i < n; kind = (kind + 1) % 4) {
      if (kind == 0 || n - i < 2) {
        mix.files.push_back(numbered("p", i));
        mix.moves.emplace_back(numbered("p", i), numbered("q", i));
        i += 1;
      } else if (kind == 1) {
        mix.files.push_back(numbered("x", i));
        mix.files.push_back(numbered("x", i + 1));
        mix.moves.emplace_back(numbered("x", i), numbered("x", i + 1));
        mix.moves.emplace_back(numbered("x", i + 1), numbered("x", i));
        i += 2;
      } else if (kind == 2 && n - i >= 3) {
        for (std::size_t j = 0; j < 3; ++j) {
          mix.files.push_back(numbered("y", i + j));
          mix.moves.emplace_back(numbered("y", i + j), numbered("y", i + (j + 1) % 3));
        }
        i += 3;
      } else {
        mix.files.push_back(numbered("dsc", i));
        mix.moves.emplace_back(numbered("dsc", i), numbered("DSC", i));
        i += 1;
      }
    }
    // An outside file that stays where it is.
    mix.files.push_back("untouched.jpg");
    out.push_back(mix);
  }
  return out;
}

}  // namespace tessane::testing
