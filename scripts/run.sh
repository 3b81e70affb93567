#!/usr/bin/env bash
# The main job: builds the designer (installing what is missing) and starts it on the bundled
# sample database. On a machine without a display (neither DISPLAY nor WAYLAND_DISPLAY set) it
# says so and writes a screenshot of the window instead, naming the file, so that the command
# works everywhere. Options after the script name go to zevrin-designer (e.g. --dialect mssql,
# --db FILE, --sql FILE); SCREENSHOT names the picture (default build/zevrin-designer.png).
set -euo pipefail
cd "$(dirname "$0")/.."

build_dir=${BUILD_DIR:-build}
bash scripts/install-deps.sh >&2
if [ ! -f "$build_dir/build.ninja" ]; then
    cmake -S . -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >&2
fi
cmake --build "$build_dir" --target zevrin-designer >&2
designer="$build_dir/apps/designer/zevrin-designer"

if [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ]; then
    exec "$designer" "$@"
fi

screenshot=${SCREENSHOT:-$build_dir/zevrin-designer.png}
echo "run: no display (DISPLAY and WAYLAND_DISPLAY are unset): the designer cannot open its window,"
echo "run: so it renders the window with the sample statement and its rows to $screenshot instead"
# Qt wants a private runtime directory and warns without one.
if [ -z "${XDG_RUNTIME_DIR:-}" ]; then
    XDG_RUNTIME_DIR=$(mktemp -d)
    export XDG_RUNTIME_DIR
    trap 'rm -rf "$XDG_RUNTIME_DIR"' EXIT
fi
"$designer" --screenshot "$screenshot" "$@"
echo "run: screenshot written: $(realpath "$screenshot")"
