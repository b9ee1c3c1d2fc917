#!/usr/bin/env bash
# Builds and runs the whole test suite.
#   scripts/test.sh [release|debug|asan]
# asan builds and runs everything under AddressSanitizer and UndefinedBehaviorSanitizer.
set -euo pipefail
cd "$(dirname "$0")/.."
preset="${1:-release}"
bash scripts/build.sh "$preset"
ctest --preset "$preset" -j2
