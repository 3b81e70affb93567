#!/usr/bin/env bash
# Builds the core and its tests with AddressSanitizer + UndefinedBehaviorSanitizer and runs them.
# Benchmarks and anything with Qt stay out: this build proves the core alone. With
# ZEVRIN_SANITIZE_WIDGETS=1 the same build then adds the Qt layer and runs the diagram tests under
# both sanitizers too (tables that free themselves from their own mouse and key handling among
# them); that costs about three more minutes on two cores.
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

if [ "${ZEVRIN_SANITIZE_WIDGETS:-0}" = 1 ]; then
    stage sanitizer-widgets-configure 300 cmake -S . -B "$build_dir" -DZEVRIN_BUILD_WIDGETS=ON \
        -DZEVRIN_BUILD_DESIGNER=OFF -DZEVRIN_BUILD_REALDB=OFF
    stage sanitizer-widgets-build 900 cmake --build "$build_dir" -j "$jobs" --target test_widgets_diagram
    stage sanitizer-widgets-tests 300 env QT_QPA_PLATFORM=offscreen "$build_dir/tests/widgets/test_widgets_diagram"
fi
