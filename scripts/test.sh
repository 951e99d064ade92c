#!/usr/bin/env bash
# Sets everything up, builds the program, the sample course and the tests, and runs the tests.
# Under CI (CI=true) it also runs the tests under AddressSanitizer and UndefinedBehaviorSanitizer
# and each fuzz target for a short while.
set -euo pipefail
repo=$(cd "$(dirname "$0")/.." && pwd)
build=$repo/build

"$repo/scripts/setup.sh" "$build"
"$repo/scripts/fetch_course_data.sh" "$build/npm" || true
"$repo/scripts/build_course.sh" "$build"

if [ "${CI:-}" = "true" ]; then
    "$repo/scripts/sanitize_and_fuzz.sh"
fi

cd "$build"
QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j 2
