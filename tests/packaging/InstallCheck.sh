#!/usr/bin/env bash
# Installs the build to a temporary prefix and runs the installed tool with the build's modules
# moved away: the installed programs must find everything through the installed tree. Then the
# desktop entry and the metainfo are validated where they were installed.
#   InstallCheck.sh BUILD_DIR VERSION
set -euo pipefail
build="$(cd "$1" && pwd)"
version="$2"
source "$(dirname "$0")/Tools.sh"
need desktop-file-validate appstreamcli readelf

work="$(mktemp -d "${TMPDIR:-/tmp}/tessane-install-XXXXXX")"
modules="$build/modules"
away="$build/modules.away-$$"
restore() {
  if [ -d "$away" ]; then mv "$away" "$modules"; fi
  rm -rf "$work"
}
trap restore EXIT

prefix="$work/prefix"
cmake --install "$build" --prefix "$prefix" >/dev/null

# Nothing installed may point into the build.
modules_installed=("$prefix"/lib/*/tessane-rename/*.so "$prefix"/lib/tessane-rename/*.so)
for program in "$prefix"/bin/tessane "$prefix"/bin/tessane-rename "${modules_installed[@]}"; do
  [ -e "$program" ] || continue
  if readelf -d "$program" | grep -E 'R(UN)?PATH' | grep -F "$build" >/dev/null; then
    fail "$program keeps a run path into the build: $(readelf -d "$program" | grep -E 'R(UN)?PATH')"
  fi
done

mv "$modules" "$away"
run_tool "$prefix/bin/tessane" "$work" "$version"
# The application opens a window, so it is not started here; its libraries must all resolve.
if ldd "$prefix/bin/tessane-rename" | grep 'not found' >/dev/null; then
  fail "tessane-rename lacks libraries: $(ldd "$prefix/bin/tessane-rename" | grep 'not found')"
fi
mv "$away" "$modules"

desktop-file-validate "$prefix/share/applications/app.tessane.Rename.desktop" ||
  fail "the desktop entry does not validate"
appstreamcli validate --no-net "$prefix/share/metainfo/app.tessane.Rename.metainfo.xml" ||
  fail "the metainfo does not validate"
grep -q "<release version=\"$version\"" "$prefix/share/metainfo/app.tessane.Rename.metainfo.xml" ||
  fail "the metainfo has no release $version"
grep -q '^Exec=tessane-rename %U$' "$prefix/share/applications/app.tessane.Rename.desktop" ||
  fail "the desktop entry does not start tessane-rename with %U"
for size in 16x16 32x32 48x48 256x256 scalable; do
  ls "$prefix/share/icons/hicolor/$size/apps/app.tessane.Rename".* >/dev/null ||
    fail "no $size icon"
done
for page in tessane tessane-rename; do
  gzip -dc "$prefix/share/man/man1/$page.1.gz" | grep "Tessane Rename $version" >/dev/null ||
    fail "the man page of $page does not name version $version"
done
gzip -dc "$prefix/share/doc/tessane-rename/changelog.gz" | grep "^tessane-rename ($version)" >/dev/null ||
  fail "the changelog has no entry for $version"
grep -q '^License: GPL-3+$' "$prefix/share/doc/tessane-rename/copyright" ||
  fail "the copyright file does not name the licence"
grep -q '<project_license>GPL-3.0-or-later</project_license>' \
  "$prefix/share/metainfo/app.tessane.Rename.metainfo.xml" || fail "the metainfo names another licence"
echo "installed tree works from $prefix"
