#!/usr/bin/env bash
# The tests again under AddressSanitizer + UndefinedBehaviorSanitizer, then every fuzz target
# built with clang and libFuzzer and run briefly.
set -euo pipefail
repo=$(cd "$(dirname "$0")/.." && pwd)
seconds=${FUZZ_SECONDS:-30}

san=$repo/build-asan
cmake -S "$repo" -B "$san" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DVANTORIA_SANITIZE=ON \
    -DVANTORIA_BENCH=OFF -DVANTORIA_TOOLS=ON >/dev/null
cmake --build "$san" -j "$(nproc)"
(cd "$san" && QT_QPA_PLATFORM=offscreen ASAN_OPTIONS=detect_leaks=0 \
    UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 ctest --output-on-failure -j 2) |
    tail -n 5

fz=$repo/build-fuzz
CC=clang-14 CXX=clang++-14 cmake -S "$repo" -B "$fz" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DVANTORIA_FUZZ=ON -DVANTORIA_TESTS=OFF -DVANTORIA_BENCH=OFF -DVANTORIA_TOOLS=OFF >/dev/null
cmake --build "$fz" -j "$(nproc)"
for target in "$fz"/fuzz/fuzz_*; do
    [ -f "$target" ] && [ -x "$target" ] || continue
    echo "fuzzing $(basename "$target") for ${seconds} s"
    corpus=$(mktemp -d)
    ASAN_OPTIONS=detect_leaks=0 "$target" -max_total_time="$seconds" -rss_limit_mb=2048 \
        "$corpus" 2>&1 | tail -n 2
    rm -rf "$corpus"
done
