#!/usr/bin/env bash
# Installs everything a fresh Debian 12 machine lacks, then configures and builds the program,
# the course compiler and the tests into build/. Safe to run again: it installs only what is
# missing and builds only what changed.
# Usage: scripts/setup.sh [build-dir]
set -euo pipefail
repo=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$repo/build}

packages=(
    build-essential cmake ninja-build pkg-config git
    qt6-base-dev qt6-svg-dev libgl-dev
    qt6-multimedia-dev gstreamer1.0-plugins-base gstreamer1.0-plugins-good
    libsdl2-dev libsndfile1-dev
    libgtest-dev googletest libbenchmark-dev
    clang-14 libclang-rt-14-dev
    espeak-ng sox libsox-fmt-mp3 lame
    fonts-noto-cjk fonts-noto-core
    xvfb xauth
)

missing=()
for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
# Node.js with npm may already come from elsewhere; Debian's packages only when it is absent.
command -v npm >/dev/null 2>&1 || missing+=(nodejs npm)
if ((${#missing[@]})); then
    echo "setup: installing ${missing[*]}"
    sudo_cmd=""
    [ "$(id -u)" -eq 0 ] || sudo_cmd="sudo"
    $sudo_cmd apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo_cmd apt-get install -y -qq --no-install-recommends \
        "${missing[@]}" >/dev/null
fi

werror=OFF
[ "${CI:-}" = "true" ] && werror=ON
cmake -S "$repo" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DVANTORIA_WERROR=$werror >/dev/null
start=$(date +%s)
cmake --build "$build" -j "$(nproc)"
echo "setup: build finished in $(($(date +%s) - start)) s"
