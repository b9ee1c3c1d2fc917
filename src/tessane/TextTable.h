// A table for the terminal: columns sized to their contents and shrunk to fit the width, cells
// cut with "…" by terminal columns (never inside a character), rows coloured by status.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "Tool.h"

namespace tessane::cli {

class TextTable {
 public:
  explicit TextTable(std::vector<std::string> headers) : headers_(std::move(headers)) {}
  void add(std::vector<std::string> cells, const char* color = nullptr);
  void print(std::ostream& out, const Terminal& terminal) const;

  // `text` cut to at most `width` terminal columns, with "…" where it was cut.
  static std::string fit(const std::string& text, std::size_t width);

 private:
  struct Row {
    std::vector<std::string> cells;
    const char* color;
  };
  std::vector<std::string> headers_;
  std::vector<Row> rows_;
};

}  // namespace tessane::cli
