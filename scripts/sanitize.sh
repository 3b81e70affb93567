#!/usr/bin/env bash
# Builds the core and its tests with AddressSanitizer + UndefinedBehaviorSanitizer and runs them.
# Benchmarks and anything with Qt stay out: this build proves the core alone.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/stage.sh

build_dir=${BUILD_DIR:-build-asan}
jobs=$(nproc)

stage sanitizer-configure 300 cmake -S . -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=Debug \
    -DZEVRIN_SANITIZE=ON -DZEVRIN_BUILD_BENCH=OFF -DZEVRIN_BUILD_WIDGETS=OFF
stage sanitizer-build 900 cmake --build "$build_dir" -j "$jobs"
export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
stage sanitizer-tests 900 ctest --test-dir "$build_dir" --output-on-failure -j "$jobs"
