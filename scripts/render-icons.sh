#!/usr/bin/env bash
# Renders the application icon's PNG sizes from its SVG, for the hicolor icon theme. The PNGs are
# kept in the repository, so building and packaging need no SVG renderer; run this after changing
# the SVG (needs rsvg-convert, Debian package librsvg2-bin).
set -euo pipefail
cd "$(dirname "$0")/../packaging/icons"
for size in 16 24 32 48 64 128 256 512; do
  mkdir -p "${size}x${size}"
  rsvg-convert -w "$size" -h "$size" app.tessane.Rename.svg -o "${size}x${size}/app.tessane.Rename.png"
done
