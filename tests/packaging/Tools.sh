# Shared by the install and package checks: stop with a message on the first failed expectation,
# and skip (exit 77) when a tool is missing, except in CI, where setup.sh installs them all.
# Pipes end in readers that read everything: under pipefail, one that stops early (`grep -q`,
# `head`) can fail the writer with SIGPIPE.
fail() {
  echo "FAILED: $*" >&2
  exit 1
}

need() {
  for tool in "$@"; do
    if ! command -v "$tool" >/dev/null; then
      if [ -n "${CI:-}" ]; then fail "$tool is not installed (scripts/setup.sh installs it)"; fi
      echo "skipped: $tool is not installed (scripts/setup.sh installs it)"
      exit 77
    fi
  done
}

# Runs the installed tool in a home of its own: `tessane --version`, then a demo shoot, whose
# video is written by one loadable module and read back by another.
run_tool() {
  local tessane="$1" work="$2" version="$3"
  local out
  out="$(env HOME="$work/home" XDG_CONFIG_HOME="$work/home/config" XDG_DATA_HOME="$work/home/data" \
    "$tessane" --version)" || fail "$tessane --version exited with $?"
  [[ "$out" == *"$version"* ]] || fail "tessane --version printed '$out', not $version"
  [[ "$out" == *"GPL-3.0-or-later"* ]] || fail "tessane --version does not name the licence: $out"
  env HOME="$work/home" XDG_CONFIG_HOME="$work/home/config" XDG_DATA_HOME="$work/home/data" \
    "$tessane" demo "$work/shoot" >"$work/demo.txt" 2>&1 || {
    cat "$work/demo.txt" >&2
    fail "tessane demo failed"
  }
  local video
  video="$(find "$work/shoot" -maxdepth 1 -iname '*.mp4' -print -quit)"
  [ -n "$video" ] || fail "tessane demo made no video"
  env HOME="$work/home" XDG_CONFIG_HOME="$work/home/config" XDG_DATA_HOME="$work/home/data" \
    "$tessane" meta --json "$video" >"$work/meta.json" 2>&1 || fail "tessane meta of the video failed"
  grep -q '"codec"' "$work/meta.json" || fail "the video's codec was not read: $(cat "$work/meta.json")"
}
