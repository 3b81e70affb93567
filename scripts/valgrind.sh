#!/usr/bin/env bash
# Runs the golden-file runner once under valgrind's memcheck: any memory error or leak (definite,
# indirect or possible) fails the run. Uses the normal build directory (build/ unless BUILD_DIR),
# configuring and building only the runner when needed.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/stage.sh

build_dir=${BUILD_DIR:-build}
bash scripts/install-deps.sh
if [ ! -f "$build_dir/build.ninja" ]; then
    stage valgrind-configure 300 cmake -S . -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
fi
stage valgrind-build 900 cmake --build "$build_dir" -j "$(nproc)" --target test_golden
stage valgrind-golden 600 valgrind --tool=memcheck --leak-check=full --show-leak-kinds=definite,indirect,possible \
    --errors-for-leak-kinds=definite,indirect,possible --error-exitcode=1 --quiet \
    "$build_dir/tests/core/test_golden" --gtest_brief=1
