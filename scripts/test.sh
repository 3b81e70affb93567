#!/usr/bin/env bash
# The one test command: installs what is missing, configures, builds and runs every test.
# Works from a fresh Debian 12 machine as root. BUILD_DIR overrides the build directory (build/).
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/stage.sh

build_dir=${BUILD_DIR:-build}
jobs=$(nproc)

stage install 900 bash scripts/install-deps.sh
stage configure 300 cmake -S . -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
stage build 1200 cmake --build "$build_dir" -j "$jobs"
stage tests 900 ctest --test-dir "$build_dir" --output-on-failure -j "$jobs"
