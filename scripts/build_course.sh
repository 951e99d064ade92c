#!/bin/sh
# Builds the sample course into the program's data folder <build-dir>/app, but only when course/
# or the course compiler changed since the last build. Prints how long it took and how large the
# data folder is.
# Usage: scripts/build_course.sh <build-dir> [npm-folder]
#   <build-dir>  a configured CMake build folder (the compiler is built there if needed)
#   npm-folder   where scripts/fetch_course_data.sh installed the data packages (default
#                <repo>/build/npm); without them the course has no strokes or vocabulary
set -eu
if [ $# -lt 1 ]; then
    echo "usage: $0 <build-dir> [npm-folder]" >&2
    exit 2
fi
repo=$(cd "$(dirname "$0")/.." && pwd)
build=$(cd "$1" && pwd)
npm=${2:-$repo/build/npm}
out=$build/app
stamp=$out/.coursepack.stamp

log=$build/coursepack-build.log
if ! cmake --build "$build" --target coursepack -- -j2 >"$log" 2>&1; then
    cat "$log" >&2
    echo "course: the course compiler does not build" >&2
    exit 1
fi
compiler=$build/tools/coursepack/coursepack

# The stamp: a hash of every course source, of the compiler and of the data packages' versions.
hash=$( (cd "$repo" && find course -type f | LC_ALL=C sort | xargs sha256sum;
         sha256sum "$compiler";
         cat "$npm"/node_modules/*/package.json 2>/dev/null || true) | sha256sum | cut -d' ' -f1)
if [ -f "$stamp" ] && [ "$(cat "$stamp")" = "$hash" ]; then
    echo "course: up to date in $out"
    exit 0
fi

npmArg=""
if [ -d "$npm/node_modules" ]; then
    npmArg="--npm $npm"
else
    echo "course: no data packages in $npm (run scripts/fetch_course_data.sh); building without strokes and vocabulary" >&2
fi
start=$(date +%s)
rm -f "$stamp"
# shellcheck disable=SC2086
"$compiler" --course "$repo/course" --out "$out" $npmArg --jobs 2
end=$(date +%s)
echo "$hash" > "$stamp"
size=$(du -sh "$out" | cut -f1)
echo "course: built into $out in $((end - start)) s; the data folder is $size"
