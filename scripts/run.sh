#!/usr/bin/env bash
# Builds the application and the tool and shows what they do.
#   scripts/run.sh          makes a demo shoot in a temporary folder (two cameras, one clock two
#                           minutes behind, bursts, RAW twins, sidecars, a video). With a display,
#                           opens the application on it; without one, previews it with the tool,
#                           renames it, shows the history and undoes the rename. Everything,
#                           settings and history included, stays in a temporary home.
#   scripts/run.sh FOLDER   previews new names for the files of FOLDER; nothing is renamed.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
bash "$root/scripts/build.sh" release >/dev/null
tessane="$root/build/release/src/tessane/tessane"

if [ $# -ge 1 ]; then
  exec "$tessane" preview "$@" --template "{date:yyyy-MM-dd_HH-mm-ss}_{model}" --duplicates addSuffix
fi

home="$(mktemp -d "${TMPDIR:-/tmp}/tessane-demo-XXXXXX")"
trap 'rm -rf "$home"' EXIT
export XDG_CONFIG_HOME="$home/config" XDG_DATA_HOME="$home/data"
# The demo wedding is in Rome: the cameras' clock times and the video's UTC time meet there.
export TZ=Europe/Rome
shoot="$home/Wedding"
step() {
  if [ -t 1 ]; then printf '\n\033[1m$ %s\033[0m\n' "$*"; else printf '\n$ %s\n' "$*"; fi
}

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ] && [ -z "${TESSANE_DEMO_TOOL:-}" ]; then
  "$tessane" demo "$shoot" >/dev/null
  "$tessane" bodies set 3018842 --tag Z6 --offset +0:02:00 >/dev/null
  "$tessane" bodies set ILCE-7RM5 --tag A7R >/dev/null
  echo "Opening Tessane Rename on the demo shoot in $shoot (settings and history stay in $home)."
  "$root/build/release/src/TessaneRename/app/tessane-rename" "$shoot"
  exit 0
fi

step tessane demo "$shoot"
"$tessane" demo "$shoot" | head -8
echo "  …"
step tessane bodies set 3018842 --tag Z6 --offset +0:02:00
"$tessane" bodies set 3018842 --tag Z6 --offset +0:02:00
step tessane bodies set ILCE-7RM5 --tag A7R
"$tessane" bodies set ILCE-7RM5 --tag A7R
template="{date:yyyy-MM-dd_HH-mm-ss}_{body}"
step tessane preview "$shoot" --template "$template" --duplicates addSuffix
"$tessane" preview "$shoot" --template "$template" --duplicates addSuffix
step tessane rename "$shoot" --template "$template" --duplicates addSuffix --yes
"$tessane" rename "$shoot" --template "$template" --duplicates addSuffix --yes
step ls "$shoot"
ls "$shoot"
step tessane history
"$tessane" history
step tessane undo
"$tessane" undo
step ls "$shoot"
ls "$shoot"
