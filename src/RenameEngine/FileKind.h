// The kind of a file, decided by its extension alone.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace tessane {

enum class FileKind { raw, image, video, audio, pdf, sidecar, other };

// The stored form of a kind ("raw", "image", ...), used in settings and saved data.
std::string_view rawValue(FileKind kind) noexcept;
std::optional<FileKind> fileKindFromRawValue(std::string_view text) noexcept;

// The kind of a bare extension ("ARW") or a whole name ("DSC_0001.ARW", "IMG_1.CR2.xmp"): the
// last non-empty piece between dots, lower-cased, looked up in the extension table. Unknown
// extensions, and names without a dot-separated piece, give `other`.
FileKind fileKindOf(std::string_view extensionOrName);

// The lower-case extensions of a kind (none for `other`).
std::vector<std::string_view> extensionsOf(FileKind kind);

// Whether a lower-cased extension may stand before "xmp" in a sidecar's double extension
// ("IMG_0001.CR2.xmp"): the raw extensions, the common still-image and camera video ones.
bool isSidecarCarrierExtension(std::string_view lowerExtension) noexcept;
// Whether a lower-cased extension is a sidecar's ("xmp").
bool isSidecarExtension(std::string_view lowerExtension) noexcept;

}  // namespace tessane
