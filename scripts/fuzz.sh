#!/usr/bin/env bash
# Builds the libFuzzer target with clang (AddressSanitizer + UndefinedBehaviorSanitizer) in its own
# build directory and runs it over every dialect for a chosen time.
#   scripts/fuzz.sh SECONDS   run that long on all cores, keeping the grown corpus in $FUZZ_DIR
#   scripts/fuzz.sh --ci      the bounded CI run: 100 s on one fresh copy of the seeds
# The dictionary is every dialect's word lists; the seeds are the golden statements. A crash, a
# sanitizer report or a broken round trip stops the run with the input saved as crash-* (or
# timeout-*, oom-*) in $FUZZ_DIR/artifacts; replay one with: build-fuzz/fuzz/zevrin_fuzz FILE.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/stage.sh

usage() { echo "usage: scripts/fuzz.sh SECONDS | --ci" >&2; exit 2; }
[ $# -eq 1 ] || usage
ci=0
if [ "$1" = "--ci" ]; then
    ci=1
    seconds=100
elif [[ "$1" =~ ^[0-9]+$ ]] && [ "$1" -gt 0 ]; then
    seconds=$1
else
    usage
fi

build_dir=${FUZZ_BUILD_DIR:-build-fuzz}
fuzz_dir=${FUZZ_DIR:-$build_dir/fuzz-work}
jobs=$(nproc)

bash scripts/install-deps.sh

stage fuzz-configure 300 cmake -S . -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DCMAKE_CXX_COMPILER=clang++ -DZEVRIN_FUZZ=ON -DBUILD_TESTING=OFF -DZEVRIN_BUILD_BENCH=OFF \
    -DZEVRIN_BUILD_WIDGETS=OFF
stage fuzz-build 600 cmake --build "$build_dir" -j "$jobs" --target zevrin_fuzz zevrin_fuzz_prep

# A CI run starts from the seeds alone, so that its result does not depend on earlier runs.
if [ $ci -eq 1 ]; then
    rm -rf "$fuzz_dir"
fi
mkdir -p "$fuzz_dir/corpus" "$fuzz_dir/artifacts"
"$build_dir/fuzz/zevrin_fuzz_prep" "$fuzz_dir/prep" tests/data

export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
# -max_len covers every golden statement; -timeout and -rss_limit_mb turn a hang or a runaway
# allocation into a finding. Several workers share the corpus directory.
workers=$jobs
stage fuzz-run $((seconds + 120)) "$build_dir/fuzz/zevrin_fuzz" "$fuzz_dir/corpus" "$fuzz_dir/prep/seed" \
    -dict="$fuzz_dir/prep/all.dict" -max_len=8192 -timeout=10 -rss_limit_mb=2048 \
    -max_total_time="$seconds" -print_final_stats=1 -artifact_prefix="$fuzz_dir/artifacts/" \
    -fork="$workers" -ignore_crashes=0
