#!/bin/sh
# Installs the npm data packages the course compiler reads (stroke traces and the dictionary
# with its HSK levels and word frequencies) into build/npm. Never committed; safe to run again.
# Usage: scripts/fetch_course_data.sh [npm-folder]   (default: <repo>/build/npm)
set -eu
repo=$(cd "$(dirname "$0")/.." && pwd)
dest=${1:-$repo/build/npm}
packages="hanzi-writer-data@2.0.1 chinese-lexicon@1.0.43"

have_all() {
    [ -f "$dest/node_modules/hanzi-writer-data/package.json" ] &&
        [ -f "$dest/node_modules/chinese-lexicon/package.json" ]
}

if have_all; then
    echo "course data packages already in $dest"
    exit 0
fi
if ! command -v npm >/dev/null 2>&1; then
    echo "fetch_course_data: npm is not installed (apt-get install npm)" >&2
    exit 1
fi
mkdir -p "$dest"
if ! npm install --prefix "$dest" --no-audit --no-fund --no-save --loglevel=error $packages; then
    echo "fetch_course_data: could not install $packages into $dest." >&2
    echo "Without the network the course is built without stroke traces and vocabulary." >&2
    exit 1
fi
have_all && echo "course data packages installed in $dest"
