#include "TextTable.h"

#include <algorithm>

#include "RenameEngine/Unicode.h"

namespace tessane::cli {
namespace {

constexpr std::size_t kGap = 2;

std::string padded(const std::string& text, std::size_t width) {
  std::string out = text;
  const std::size_t shown = unicode::displayWidth(text);
  if (shown < width) out.append(width - shown, ' ');
  return out;
}

}  // namespace

void TextTable::add(std::vector<std::string> cells, const char* color) {
  for (std::string& c : cells)
    c = unicode::toDisplayable(c);
  rows_.push_back(Row{std::move(cells), color});
}

std::string TextTable::fit(const std::string& text, std::size_t width) {
  if (unicode::displayWidth(text) <= width) return text;
  if (width == 0) return {};
  const std::vector<std::size_t> bounds = unicode::graphemeBoundaries(text);
  std::string out;
  std::size_t used = 0;
  for (std::size_t i = 0; i + 1 < bounds.size(); ++i) {
    const std::string_view c = std::string_view(text).substr(bounds[i], bounds[i + 1] - bounds[i]);
    const std::size_t w = unicode::displayWidth(c);
    if (used + w + 1 > width) break;
    out.append(c);
    used += w;
  }
  return out + "…";
}

void TextTable::print(std::ostream& out, const Terminal& terminal) const {
  const std::size_t columns = headers_.size();
  std::vector<std::size_t> widths(columns, 0);
  for (std::size_t c = 0; c < columns; ++c)
    widths[c] = unicode::displayWidth(headers_[c]);
  for (const Row& r : rows_) {
    for (std::size_t c = 0; c < columns && c < r.cells.size(); ++c) {
      widths[c] = std::max(widths[c], unicode::displayWidth(r.cells[c]));
    }
  }
  // Shrink the widest column until the table fits; no column below 8.
  const auto total = [&] {
    std::size_t sum = kGap * (columns - 1);
    for (std::size_t w : widths)
      sum += w;
    return sum;
  };
  const auto limit = static_cast<std::size_t>(std::max(terminal.width, 40));
  while (total() > limit) {
    auto widest = std::max_element(widths.begin(), widths.end());
    if (*widest <= 8) break;
    --*widest;
  }
  auto line = [&](const std::vector<std::string>& cells, const char* color) {
    std::string text;
    for (std::size_t c = 0; c < columns; ++c) {
      const std::string cell = c < cells.size() ? fit(cells[c], widths[c]) : "";
      text += c + 1 < columns ? padded(cell, widths[c]) + std::string(kGap, ' ') : cell;
    }
    while (!text.empty() && text.back() == ' ')
      text.pop_back();
    out << (color ? terminal.paint(text, color) : text) << "\n";
  };
  line(headers_, terminal.color ? "1" : nullptr);
  for (const Row& r : rows_)
    line(r.cells, r.color);
}

}  // namespace tessane::cli
