#!/usr/bin/env bash
# Sets everything up, builds the sample course beside the program, and starts Vantoria 2007.
set -euo pipefail
repo=$(cd "$(dirname "$0")/.." && pwd)
build=$repo/build

"$repo/scripts/setup.sh" "$build"
"$repo/scripts/fetch_course_data.sh" "$build/npm" || true
"$repo/scripts/build_course.sh" "$build"

if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
    echo "Vantoria 2007 needs a graphical display, and none is available here (DISPLAY and"
    echo "WAYLAND_DISPLAY are both unset). Start it from a desktop session, or under a virtual"
    echo "display:  xvfb-run -s '-screen 0 1280x800x24' $build/app/vantoria2007"
    exit 1
fi
exec "$build/app/vantoria2007"
