#include "FileUrl.h"

#include "RenameEngine/HexDigit.h"

#include <array>
#include <string_view>
#include <system_error>

namespace tessane::FileUrl {
namespace {

// The bytes written as they are; every other byte is percent-encoded.
constexpr std::array<bool, 256> kKept = [] {
  std::array<bool, 256> kept{};
  for (int c = 'A'; c <= 'Z'; ++c)
    kept[static_cast<std::size_t>(c)] = true;
  for (int c = 'a'; c <= 'z'; ++c)
    kept[static_cast<std::size_t>(c)] = true;
  for (int c = '0'; c <= '9'; ++c)
    kept[static_cast<std::size_t>(c)] = true;
  for (char c : std::string_view("-._~/!$&'()*+,;=:@"))
    kept[static_cast<unsigned char>(c)] = true;
  return kept;
}();

void appendEncoded(std::string& out, std::string_view bytes) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  std::size_t i = 0;
  while (i < bytes.size()) {
    std::size_t run = i;
    while (run < bytes.size() && kKept[static_cast<unsigned char>(bytes[run])])
      ++run;
    out.append(bytes.substr(i, run - i));
    if (run == bytes.size()) break;
    const auto c = static_cast<unsigned char>(bytes[run]);
    out.push_back('%');
    out.push_back(kDigits[c >> 4]);
    out.push_back(kDigits[c & 0x0F]);
    i = run + 1;
  }
}

}  // namespace

void append(std::string& out, const std::filesystem::path& path) {
  out.append("file://");
  if (path.is_absolute()) {
    appendEncoded(out, path.native());
  } else {
    std::error_code ignored;
    appendEncoded(out, std::filesystem::absolute(path, ignored).native());
  }
}

std::string fromPath(const std::filesystem::path& path) {
  std::string out;
  out.reserve(path.native().size() + 16);
  append(out, path);
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
    const int hi = hexDigitValue(url[i + 1]);
    const int lo = hexDigitValue(url[i + 2]);
    if (hi < 0 || lo < 0 || (hi == 0 && lo == 0)) return std::nullopt;
    out.push_back(static_cast<char>(hi * 16 + lo));
    i += 2;
  }
  return std::filesystem::path(std::move(out));
}

}  // namespace tessane::FileUrl
