#!/usr/bin/env bash
# Builds the tool and lists a folder: each file with its base name, extension, kind and blocks.
#   scripts/run.sh [FOLDER]
# Without a folder, a small demo folder is made in a temporary place and listed.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
bash "$root/scripts/build.sh" release >/dev/null

if [ $# -ge 1 ]; then
  exec "$root/build/release/src/tessane/tessane" list "$1"
fi

demo="$(mktemp -d "${TMPDIR:-/tmp}/tessane-demo-XXXXXX")"
trap 'rm -rf "$demo"' EXIT
(
  cd "$demo"
  touch DSC_0001.ARW DSC_0001.JPG DSC_0001.ARW.xmp DSC_0002.ARW DSC_0002.JPG \
        IMG_2.JPG IMG_10.JPG C0001.MP4 C0001.MP4.xmp clip.avi.xmp "2024-05-01_Rome_001.HEIC" \
        "$(printf 'E\xcc\x81te\xcc\x81 a\xcc\x80 Paris.jpg')" \
        "$(printf '\xf0\x9f\x8c\x8a surf.JPG')" \
        "$(printf 'caf\xe9 (Latin-1 name).jpg')" \
        .hidden-catalog
  mkdir Exports
  ln -s DSC_0001.JPG link-to-photo.JPG
)
echo "Demo folder: $demo"
echo
"$root/build/release/src/tessane/tessane" list "$demo"
