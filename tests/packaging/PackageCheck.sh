#!/usr/bin/env bash
# Makes the Debian package from the build (CPack, as scripts/package.sh does) and checks it: it
# holds exactly what the install rules install, its Depends line names the Debian package of every
# library its programs and modules link, it recommends what a Debian desktop needs, the tool
# unpacked from it runs, and lintian finds no error and no warning in it (skipped with a message
# where lintian is not installed; scripts/setup.sh installs it).
#   PackageCheck.sh BUILD_DIR VERSION
set -euo pipefail
build="$(cd "$1" && pwd)"
version="$2"
source "$(dirname "$0")/Tools.sh"
need dpkg-deb dpkg-shlibdeps readelf

# A Debian package is updated by apt: it is built without an update feed (scripts/package.sh).
grep -qx 'TESSANE_UPDATE_FEED:STRING=' "$build/CMakeCache.txt" ||
  fail "the build has an update feed: a package is built without one (scripts/package.sh)"

work="$(mktemp -d "${TMPDIR:-/tmp}/tessane-package-XXXXXX")"
trap 'rm -rf "$work"' EXIT

cpack --config "$build/CPackConfig.cmake" -B "$work/out" >"$work/cpack.log" 2>&1 || {
  cat "$work/cpack.log" >&2
  fail "cpack failed"
}
debs=("$work"/out/tessane-rename_"$version"_*.deb)
deb="${debs[0]}"
[ -f "$deb" ] || fail "no tessane-rename_${version}_*.deb was made"

# The same files as the install rules give under /usr.
cmake --install "$build" --prefix "$work/installed/usr" >/dev/null
(cd "$work/installed" && find . -type f | sort) >"$work/installed.txt"
dpkg-deb --contents "$deb" | awk '$1 !~ /^d/ {print $6}' | sort >"$work/packaged.txt"
diff -u "$work/installed.txt" "$work/packaged.txt" >&2 ||
  fail "the package does not hold what the install rules install"

# Every library linked is named in Depends by its Debian package (or by the package that pulls
# it in: libtag1v5 holds no library and depends on libtag1v5-vanilla, which does).
depends="$(dpkg-deb --field "$deb" Depends)"
echo "Depends: $depends"
names() { tr ',|' '\n\n' | sed 's/(.*)//; s/:.*//; s/ //g' | grep -v '^$' || true; }
named="$(echo "$depends" | names)"
pulled="$(for p in $named; do dpkg-query -W -f='${Depends}\n' "$p" 2>/dev/null || true; done | names)"
dpkg-deb -x "$deb" "$work/root"
# The package holding a library file, by the path ldconfig gives, its target, or either one with
# /usr taken off or put on (a merged /usr registers files under either).
owner_of() {
  local real candidate
  real="$(readlink -f "$1")"
  for candidate in "$1" "$real" "${1#/usr}" "${real#/usr}" "/usr$1" "/usr$real"; do
    # sed rather than head: a reader that stops early would fail the pipe under pipefail.
    dpkg -S "$candidate" 2>/dev/null | sed -n '1s/:.*//p' && return 0
  done
  return 0
}
ldconfig -p >"$work/ldconfig.txt"
for elf in "$work"/root/usr/bin/* "$work"/root/usr/lib/*/tessane-rename/*.so; do
  for library in $(readelf -d "$elf" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p'); do
    path="$(awk -v l="$library" '$1 == l {print $NF; exit}' "$work/ldconfig.txt")"
    [ -n "$path" ] || fail "$library, linked by $elf, is not on this system"
    owner="$(owner_of "$path")"
    [ -n "$owner" ] || fail "no Debian package holds $library"
    grep -qxF "$owner" <<<"$named"$'\n'"$pulled" ||
      fail "$library (package $owner), linked by $(basename "$elf"), is missing from Depends"
  done
done
[[ "$depends" == *qt6-qpa-plugins* ]] || fail "Depends lacks the Qt platform plugins"
[[ "$depends" == *libsodium* ]] || fail "Depends lacks libsodium, which checks the update feed"
recommends="$(dpkg-deb --field "$deb" Recommends)"
for wanted in qt6-wayland qt6-translations-l10n xdg-utils; do
  [[ ", $recommends," == *", $wanted,"* ]] || fail "Recommends ($recommends) lacks $wanted"
done
dpkg-deb --ctrl-tarfile "$deb" | tar -t | grep -E 'postinst|postrm' >&2 &&
  fail "the package has maintainer scripts (a private module folder needs no ldconfig)"

run_tool "$work/root/usr/bin/tessane" "$work" "$version"

# Lintian, as a Debian developer would run it on the package.
if command -v lintian >/dev/null; then
  lintian --tag-display-limit 0 --display-level ">=warning" "$deb" >"$work/lintian.txt" 2>&1 || true
  cat "$work/lintian.txt"
  problems="$(grep -cE '^[EW]: ' "$work/lintian.txt" || true)"
  [ "$problems" -eq 0 ] || fail "lintian found $problems errors or warnings in the package"
  echo "lintian: 0 errors, 0 warnings"
elif [ -n "${CI:-}" ]; then
  fail "lintian is not installed (scripts/setup.sh installs it)"
else
  echo "lintian is not installed (scripts/setup.sh installs it): the package was not linted"
fi
echo "package $(basename "$deb") checked"
