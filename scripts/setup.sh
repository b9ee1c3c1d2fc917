#!/usr/bin/env bash
# Installs the Debian 12 packages the project builds with, only those that are missing.
set -euo pipefail

packages=(
  cmake ninja-build g++ pkg-config clang-format-14
  libicu-dev nlohmann-json3-dev
  libexiv2-dev libavformat-dev libtag1-dev libpoppler-cpp-dev
  qt6-base-dev qt6-l10n-tools qt6-tools-dev qt6-translations-l10n
  libgtest-dev libgmock-dev libbenchmark-dev libcli11-dev libsodium-dev
  exfatprogs exfat-fuse
  dbus-daemon
  desktop-file-utils appstream dpkg-dev lintian
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

sudo=""
if [ "$(id -u)" -ne 0 ]; then
  sudo="sudo"
fi
echo "Installing: ${missing[*]}" >&2
$sudo apt-get update -qq
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
