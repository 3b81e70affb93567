#!/usr/bin/env bash
# The main job on the bundled defaults: builds the zevrin tool (installing what is missing) and
# formats every example statement under examples/, printing each statement as generated.
# Options after the script name go to "zevrin format" (e.g. --keywords lower).
set -euo pipefail
cd "$(dirname "$0")/.."

build_dir=${BUILD_DIR:-build}
bash scripts/install-deps.sh >&2
if [ ! -f "$build_dir/build.ninja" ]; then
    cmake -S . -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >&2
fi
cmake --build "$build_dir" --target zevrin >&2

for file in examples/*.sql; do
    echo "-- $file"
    "$build_dir/src/cli/zevrin" format "$@" "$file" | tr -d '\r'
    echo
done
