#!/usr/bin/env bash
# Keeps the interface's translations in step with the sources.
#
#   scripts/update-translations.sh          refresh translations/*.ts from src/: texts new in the
#                                           code come in unfinished, translations already made
#                                           stay, texts gone from the code are kept as vanished
#                                           (Qt Linguist offers them for similar new texts)
#   scripts/update-translations.sh --clean  the same, dropping the vanished texts
#   scripts/update-translations.sh --check  change nothing; fail, listing them, when a text of the
#                                           sources has no translation in a committed .ts file
#
# Translate the unfinished entries with Qt Linguist (`linguist translations/tessane_it.ts`) or by
# hand: fill <translation> and remove its type="unfinished". The build compiles the .ts files.
set -euo pipefail

root="$(cd "$(dirname "$0")/.." && pwd)"
mode="${1:-update}"

lupdate="${LUPDATE:-}"
if [ -z "$lupdate" ]; then
  bins="$(qtpaths6 --query QT_INSTALL_BINS 2>/dev/null || true)"
  for candidate in "$bins/lupdate" /usr/lib/qt6/bin/lupdate; do
    if [ -x "$candidate" ]; then lupdate="$candidate"; break; fi
  done
fi
if [ -z "$lupdate" ]; then
  echo "update-translations: lupdate not found (Debian package qt6-l10n-tools)" >&2
  exit 2
fi

# One .ts per language besides English, the language of the sources.
ts_files=("$root"/translations/tessane_*.ts)

run_lupdate() {  # <ts file> [options…]
  local ts="$1"
  shift
  local language
  language="$(basename "$ts" .ts)"
  language="${language#tessane_}"
  # lupdate's parser remarks on C++ it does not follow; they matter only when it fails.
  local said
  if ! said="$(cd "$root" && "$lupdate" -silent -recursive src -extensions cpp,h \
    -locations none -source-language en -target-language "$language" "$@" -ts "$ts" 2>&1)"; then
    echo "$said" >&2
    exit 2
  fi
}

case "$mode" in
  update | --clean)
    for ts in "${ts_files[@]}"; do
      if [ "$mode" = --clean ]; then run_lupdate "$ts" -no-obsolete; else run_lupdate "$ts"; fi
      left="$(grep -c 'type="unfinished"' "$ts" || true)"
      echo "$(basename "$ts"): $left text(s) to translate"
    done
    ;;
  --check)
    scratch="$(mktemp -d)"
    trap 'rm -rf "$scratch"' EXIT
    failed=0
    for ts in "${ts_files[@]}"; do
      copy="$scratch/$(basename "$ts")"
      cp "$ts" "$copy"
      run_lupdate "$copy" -no-obsolete
      if grep -q 'type="unfinished"' "$copy"; then
        failed=1
        echo "$(basename "$ts"): these texts have no translation" \
          "(run scripts/update-translations.sh and translate them):" >&2
        # The source text before each unfinished translation.
        awk '/<source>/ { source = $0 } /type="unfinished"/ { print source }' "$copy" |
          sed -e 's/^ *<source>//' -e 's/<\/source>$//' -e 's/^/  /' >&2
      fi
    done
    exit "$failed"
    ;;
  *)
    echo "usage: $0 [--clean | --check]" >&2
    exit 2
    ;;
esac
