#!/usr/bin/env bash
# Retakes the pictures in docs/screenshots from the windows as built: builds the release preset's
# WindowScreenshots, takes every window in English and in Italian into build/release/screenshots,
# then copies over the pictures that docs/screenshots already holds (a new picture is added by
# copying it there by hand once). On an X display when xvfb-run is there, offscreen otherwise.
#   scripts/screenshots.sh
set -euo pipefail
cd "$(dirname "$0")/.."

cmake --preset release >/dev/null
cmake --build build/release --target WindowScreenshots
out=build/release/screenshots
rm -rf "$out"
mkdir -p "$out"
run=(build/release/tools/WindowScreenshots "$out")
if command -v xvfb-run >/dev/null; then
  run=(xvfb-run -a -s "-screen 0 1920x1200x24" env QT_QPA_PLATFORM=xcb "${run[@]}")
fi
for language in en it; do
  TESSANE_SCREENSHOT_LANGUAGE=$language "${run[@]}" >/dev/null
done
for kept in docs/screenshots/*.png; do
  cp "$out/$(basename "$kept")" "$kept"
done
echo "docs/screenshots refreshed from $out"
