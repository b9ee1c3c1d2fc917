#include "FileUrl.h"

#include <system_error>

namespace tessane::FileUrl {
namespace {

bool isKept(unsigned char c) {
  if ((c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9')) return true;
  switch (c) {
    case '-':
    case '.':
    case '_':
    case '~':
    case '/':
    case '!':
    case '$':
    case '&':
    case '\'':
    case '(':
    case ')':
    case '*':
    case '+':
    case ',':
    case ';':
    case '=':
    case ':':
    case '@':
      return true;
    default:
      return false;
  }
}

int hexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

}  // namespace

std::string fromPath(const std::filesystem::path& path) {
  std::filesystem::path absolute = path;
  if (!absolute.is_absolute()) {
    std::error_code ignored;
    absolute = std::filesystem::absolute(path, ignored);
  }
  static constexpr char kDigits[] = "0123456789ABCDEF";
  std::string out("file://");
  out.reserve(out.size() + absolute.native().size() + 16);
  for (char ch : absolute.native()) {
    const auto c = static_cast<unsigned char>(ch);
    if (isKept(c)) {
      out.push_back(ch);
    } else {
      out.push_back('%');
      out.push_back(kDigits[c >> 4]);
      out.push_back(kDigits[c & 0x0F]);
    }
  }
  return out;
}

std::optional<std::filesystem::path> toPath(std::string_view url) {
  constexpr std::string_view kScheme = "file://";
  if (url.size() < kScheme.size()) return std::nullopt;
  for (std::size_t i = 0; i < kScheme.size(); ++i) {
    const char c = url[i];
    const char lower = (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
    if (lower != kScheme[i]) return std::nullopt;
  }
  url.remove_prefix(kScheme.size());
  if (url.starts_with("localhost/")) url.remove_prefix(9);
  if (!url.starts_with('/')) return std::nullopt;
  std::string out;
  out.reserve(url.size());
  for (std::size_t i = 0; i < url.size(); ++i) {
    if (url[i] == '?' || url[i] == '#') break;  // a query or fragment is not part of the path
    if (url[i] != '%') {
      out.push_back(url[i]);
      continue;
    }
    if (i + 2 >= url.size()) return std::nullopt;
    const int hi = hexValue(url[i + 1]);
    const int lo = hexValue(url[i + 2]);
    if (hi < 0 || lo < 0 || (hi == 0 && lo == 0)) return std::nullopt;
    out.push_back(static_cast<char>(hi * 16 + lo));
    i += 2;
  }
  return std::filesystem::path(std::move(out));
}

}  // namespace tessane::FileUrl
