#!/usr/bin/env bash
# Installs what is missing, configures and builds one preset (release by default).
#   scripts/build.sh [release|debug|asan]
# With CI set, compiler warnings are errors.
set -euo pipefail
cd "$(dirname "$0")/.."
preset="${1:-release}"

bash scripts/setup.sh
werror=OFF
if [ -n "${CI:-}" ]; then werror=ON; fi
cmake --preset "$preset" -DTESSANE_WERROR="$werror" >/dev/null
cmake --build --preset "$preset"
