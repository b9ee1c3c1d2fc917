#!/usr/bin/env bash
# Builds the Debian package of the application and the tool, from the release build's install
# rules, with its dependencies computed by dpkg-shlibdeps:
#   bash scripts/package.sh       ->  build/release/package/tessane-rename_<version>_<arch>.deb
# Install it with: sudo apt install ./build/release/package/tessane-rename_*.deb
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/setup.sh
werror=OFF
if [ -n "${CI:-}" ]; then werror=ON; fi
# The package never checks for updates by itself: apt updates it.
cmake --preset release -DTESSANE_WERROR="$werror" -DTESSANE_UPDATE_FEED= -DTESSANE_UPDATE_PUBLIC_KEY= \
  >/dev/null
cmake --build --preset release --target tessane tessane-rename tessane-demo tessane-video \
  tessane-pdf tessane-man
rm -f build/release/package/tessane-rename_*.deb
cpack --config build/release/CPackConfig.cmake
ls build/release/package/tessane-rename_*.deb
