// File URLs as the system's own files store them: "file://" and the absolute path, its bytes
// percent-encoded except the unreserved characters, "/" and the sub-delimiters that paths commonly
// hold. "/photos/My Trip/été.jpg" is "file:///photos/My%20Trip/%C3%A9t%C3%A9.jpg". A path whose
// bytes are not UTF-8 round-trips byte for byte.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace tessane::FileUrl {

// The URL of an absolute path; a relative path is made absolute from the current folder first.
std::string fromPath(const std::filesystem::path& path);
// The same, appended to `out`.
void append(std::string& out, const std::filesystem::path& path);

// The path of a "file://" URL (with an empty host or "localhost"); nothing for anything else:
// another scheme, another host, a bad escape, a relative path, an escaped zero byte.
std::optional<std::filesystem::path> toPath(std::string_view url);

}  // namespace tessane::FileUrl
