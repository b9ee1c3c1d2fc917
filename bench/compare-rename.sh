#!/usr/bin/env bash
# Renaming a 10,000-file shoot by capture date: tessane against the tools photographers use
# today and against the floor of a safe two-phase rename, side by side in one run.
#
#   bash bench/compare-rename.sh                (the realistic shoot, or the demo's when it can't)
#   bash bench/compare-rename.sh DIR            (a shoot folder of yours; it is copied, not touched)
#   bash bench/compare-rename.sh SHOTS          (the demo's shoot with SHOTS shots)
#   FILES=50000 bash bench/compare-rename.sh    (the realistic shoot's size; default 10000)
#   TESSANE=/path/to/tessane bash bench/compare-rename.sh   (time another build's rename)
#   KEEP_SHOOT=1 ...                     (leave the shoot and the copies in /tmp afterwards)
#   RUNS=5 ...                           (runs of each tool but ExifTool; default 3, median kept)
#   TOOLS=0 ...                          (tessane and the floor only: no other tool run or installed)
#
# The realistic shoot, when ../shared is beside the project: real camera JPEGs with their maker
# notes (Canon, Nikon, Fujifilm), RAW twins and sidecars, made by ../shared/bench/make-shoot.sh
# (which needs exiftool), its floor timed by ../shared/bench/rename-limit.c. Otherwise the demo's
# shoot: camera JPEGs with real EXIF (written by Exiv2 through `tessane demo`), a RAW twin for
# every shot, an XMP sidecar for every second shot, and bursts of shots within one second.
# Each tool runs on a fresh copy of it, with warm caches, timed from its start to its exit (the
# median of RUNS runs; ExifTool, fifty times slower than the rest, runs once):
#   tessane   rename --template "{date:yyyy-MM-dd_HHmmss}" --duplicates addSuffix --yes
#             (twins and sidecars follow their photo; history and journal written)
#   exiftool  '-FileName<DateTimeOriginal' with a numbered suffix on clashes
#   exiv2     rename -F (appends _1, _2 on clashes; twins and sidecars on their own)
#   jhead     -n (JPEG only; no twins, no safety)
#   floor     read the first 64 KiB of every file, then two renameat2 moves per file
# Machines are shared and noisy: read the ratios, not the seconds.
set -euo pipefail
cd "$(dirname "$0")/.."
arg="${1:-}"
shots=4000
[[ $arg =~ ^[0-9]+$ ]] && shots=$arg
runs="${RUNS:-3}"
shared="$PWD/../shared/bench"

# The comparison tools are installed here, never in setup.sh: the project does not need them.
missing=()
tools="${TOOLS:-1}"
[[ $tools == 0 ]] && missing=() || command -v exiftool >/dev/null || missing+=(libimage-exiftool-perl)
[[ $tools == 0 ]] || command -v exiv2 >/dev/null || missing+=(exiv2)
[[ $tools == 0 ]] || command -v jhead >/dev/null || missing+=(jhead)
if ((${#missing[@]})); then
  if [[ $(id -u) == 0 ]] && command -v apt-get >/dev/null; then
    apt-get install -y --no-install-recommends "${missing[@]}" >/dev/null ||
      { apt-get update >/dev/null && apt-get install -y --no-install-recommends "${missing[@]}" >/dev/null; }
  else
    echo "Missing: ${missing[*]} (install them, or run as root)" >&2
  fi
fi

if [[ ! -x build/release/src/tessane/tessane ]]; then
  cmake --preset release >/dev/null
  cmake --build --preset release --target tessane
fi
demo="$PWD/build/release/src/tessane/tessane"
tessane="${TESSANE:-$demo}"

work="$(mktemp -d /tmp/tessane-compare-XXXXXX)"
[[ -n "${KEEP_SHOOT:-}" ]] || trap 'rm -rf "$work"' EXIT
export TZ=Europe/Rome
export XDG_CONFIG_HOME="$work/config" XDG_DATA_HOME="$work/data"

# The shoot: the folder given, the realistic one, or one made from the demo's files (the same
# bytes with each shot's own capture time).
if [[ -n $arg && -d $arg ]]; then
  cp -a "$arg" "$work/master"
  kind="the shoot $arg"
elif [[ ! $arg =~ ^[0-9]+$ && -x $shared/make-shoot.sh ]] && command -v exiftool >/dev/null; then
  "$shared/make-shoot.sh" "${FILES:-10000}" "$work/master" >&2
  kind="realistic shoot"
else
  "$demo" demo "$work/demo" >/dev/null
  python3 - "$work/demo" "$work/master" "$shots" <<'PY'
import os, sys
demo, master, shots = sys.argv[1], sys.argv[2], int(sys.argv[3])
os.makedirs(master)
def read(name):
    with open(os.path.join(demo, name), "rb") as f:
        return f.read()
jpeg, raw, xmp = read("DSC01201.JPG"), read("DSC01201.ARW"), read("DSC01203.xmp")
stamp = b"2025:06:14 14:03:05"
assert stamp in jpeg and stamp in raw
second = 0
for n in range(1, shots + 1):
    # Every tenth shot is a burst: it shares its second with the shot before.
    if n % 10 != 0:
        second += 2
    t = 9 * 3600 + second
    day, t = divmod(t, 24 * 3600)
    text = b"2025:06:%02d %02d:%02d:%02d" % (14 + day, t // 3600, t // 60 % 60, t % 60)
    stem = "DSC%05d" % n
    with open(os.path.join(master, stem + ".JPG"), "wb") as f:
        f.write(jpeg.replace(stamp, text))
    with open(os.path.join(master, stem + ".ARW"), "wb") as f:
        f.write(raw.replace(stamp, text))
    if n % 2 == 0:
        with open(os.path.join(master, stem + ".xmp"), "wb") as f:
            f.write(xmp)
PY
  kind="demo shoot"
fi
# The photo extensions the shoot holds, for the tools that are given files by extension.
mapfile -t exts < <(find "$work/master" -type f -name '*.*' | sed 's/.*\.//' | grep -vix xmp | sort -u)
files=$(find "$work/master" -type f | wc -l)

# The floor: what any safe rename has to do at least, timed in-process.
# With ../shared, the shared floor program (rename-limit.c): read64k, then the two-rename loop.
limit=""
if [[ -f $shared/rename-limit.c ]] && cc -O2 -o "$work/rename-limit" "$shared/rename-limit.c" 2>/dev/null; then
  limit="$work/rename-limit"
fi
cat >"$work/floor.py" <<'PY'
import ctypes, os, sys, time
libc = ctypes.CDLL(None, use_errno=True)
AT_FDCWD, RENAME_NOREPLACE = -100, 1
folder = sys.argv[1]
start = time.perf_counter()
names = sorted(os.listdir(folder))
for name in names:
    with open(os.path.join(folder, name), "rb") as f:
        f.read(65536)
read_done = time.perf_counter()
def move(a, b):
    if libc.renameat2(AT_FDCWD, a.encode(), AT_FDCWD, b.encode(), RENAME_NOREPLACE) != 0:
        raise OSError(ctypes.get_errno(), a)
temps = []
for i, name in enumerate(names):
    temp = os.path.join(folder, ".tessane-floor-%d" % i)
    move(os.path.join(folder, name), temp)
    temps.append(temp)
for i, temp in enumerate(temps):
    move(temp, os.path.join(folder, "renamed-%05d" % i))
end = time.perf_counter()
print("%.4f %.4f" % (read_done - start, end - start))
PY

# A fresh copy of the shoot, and an empty home for tessane (no history from an earlier run).
fresh() {
  rm -rf "$work/shoot" "$work/config" "$work/data"
  cp -a "$work/master" "$work/shoot"
  sync
}

median() { python3 -c "import sys, statistics; print('%.3f' % statistics.median(map(float, sys.argv[1:])))" "$@"; }

# The median seconds of RUNS runs of one command, each on a fresh copy, or "-" when it fails or
# is not installed. The count of files renamed goes to $work/renamed-NAME.
timed() {
  local name=$1 runs=$2
  shift 2
  local times=() start end
  for ((run = 0; run < runs; ++run)); do
    fresh
    start=$(date +%s.%N)
    if ! "$@" >"$work/out.txt" 2>&1; then
      echo "-"
      echo "  ($name failed: $(tail -n 2 "$work/out.txt" | tr '\n' ' '))" >&2
      return
    fi
    end=$(date +%s.%N)
    times+=("$(python3 -c "print($end - $start)")")
  done
  median "${times[@]}"
  # How many files it actually gave a capture-date name.
  echo "$(find "$work/shoot" -name '20[0-9][0-9]-[0-9][0-9]-*' | wc -l)" >"$work/renamed-$name"
}

have() { [[ $tools != 0 ]] && command -v "$1" >/dev/null; }

echo "Shoot: $files files ($kind: ${exts[*]} and sidecars), in $work" >&2
extArgs=() globs=""
for e in "${exts[@]}"; do
  extArgs+=(-ext "$e")
  globs+=" \"\$0\"/*.$e"
done
declare -A seconds
seconds[tessane]=$(timed tessane "$runs" "$tessane" rename "$work/shoot" --template "{date:yyyy-MM-dd_HHmmss}" \
  --duplicates addSuffix --yes)
seconds[exiftool]=$(have exiftool && timed exiftool 1 exiftool -q -q '-FileName<DateTimeOriginal' \
  -d '%Y-%m-%d_%H%M%S%%-c.%%e' "${extArgs[@]}" "$work/shoot" || echo "-")
seconds[exiv2]=$(have exiv2 && timed exiv2 "$runs" bash -c "exiv2 -F -r '%Y-%m-%d_%H%M%S' rename $globs" \
  "$work/shoot" || echo "-")
seconds[jhead]=$(have jhead && timed jhead "$runs" bash -c 'jhead -q -n%Y-%m-%d_%H%M%S "$0"/*.JPG' \
  "$work/shoot" || echo "-")
floor_reads=() floor_totals=()
for ((run = 0; run < runs; ++run)); do
  fresh
  if [[ -n $limit ]]; then
    start=$(date +%s.%N)
    "$limit" -m read64k "$work/shoot" >/dev/null
    mid=$(date +%s.%N)
    "$limit" "$work/shoot" >/dev/null
    end=$(date +%s.%N)
    read -r floor_read floor_total < <(python3 -c "print($mid - $start, $end - $start)")
  else
    read -r floor_read floor_total < <(python3 "$work/floor.py" "$work/shoot")
  fi
  floor_reads+=("$floor_read") floor_totals+=("$floor_total")
done
floor_read=$(median "${floor_reads[@]}")
floor_total=$(median "${floor_totals[@]}")
seconds[floor]=$floor_total
echo "$files" >"$work/renamed-floor"

printf '\n%-10s %9s %9s %8s  %s\n' "Tool" "Seconds" "× floor" "Renamed" "What it does"
row() {
  local name=$1 what=$2 s=${seconds[$1]}
  if [[ $s == "-" ]]; then
    printf '%-10s %9s %9s %8s  %s\n' "$name" "-" "-" "-" "$what"
  else
    printf '%-10s %9s %9s %8s  %s\n' "$name" "$s" \
      "$(python3 -c "print('%.2f' % ($s / $floor_total))")" "$(cat "$work/renamed-$name")" "$what"
  fi
}
row tessane "capture-date names, numbered clashes, twins and sidecars along, safe, undoable"
row exiftool "capture-date names, numbered clashes"
row exiv2 "capture-date names, _1 on clashes"
row jhead "JPEG only"
row floor "read 64 KiB of each file ($floor_read s), then two renameat2 per file"
