#!/usr/bin/env bash
# Builds the libFuzzer target with clang (AddressSanitizer + UndefinedBehaviorSanitizer) in its own
# build directory and runs it.
#   scripts/fuzz.sh SECONDS [DIALECT]  run that long, keeping the grown corpus in $FUZZ_DIR; with a
#                                      DIALECT, every input goes to that dialect, with its own
#                                      dictionary and seeds, on one core; without, all dialects
#                                      share the time on every core
#   scripts/fuzz.sh --ci               the bounded CI run, the same on every run: every seed and
#                                      every input in fuzz/regressions once, then a fixed number
#                                      of runs from a fixed seed in each dialect
# The seeds are the golden statements; the dictionaries the dialects' word lists. A crash, a
# sanitizer report or a broken round trip stops the run with the input saved as crash-* (or
# timeout-*, oom-*) in $FUZZ_DIR/artifacts; replay one with: build-fuzz/fuzz/zevrin_fuzz FILE
# (ZEVRIN_FUZZ_DIALECT=NAME first when it came from a run of one dialect). Every such input, its
# first byte set to its dialect's index, belongs in fuzz/regressions with a test of what it broke.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/stage.sh

usage() { echo "usage: scripts/fuzz.sh SECONDS [DIALECT] | --ci" >&2; exit 2; }
[ $# -ge 1 ] && [ $# -le 2 ] || usage
ci=0
dialect=""
if [ "$1" = "--ci" ]; then
    [ $# -eq 1 ] || usage
    ci=1
elif [[ "$1" =~ ^[0-9]+$ ]] && [ "$1" -gt 0 ]; then
    seconds=$1
    dialect=${2:-}
else
    usage
fi

build_dir=${FUZZ_BUILD_DIR:-build-fuzz}
fuzz_dir=${FUZZ_DIR:-$build_dir/fuzz-work}
# Runs per dialect in the CI run: about ten seconds each on this machine's two cores when quiet.
ci_runs=${FUZZ_CI_RUNS:-2000}
# FUZZ_CI_SEED picks another fixed seed for the CI runs (default 1).
jobs=$(nproc)

bash scripts/install-deps.sh

launcher=()
if command -v ccache > /dev/null; then launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache); fi
stage fuzz-configure 300 cmake -S . -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DCMAKE_CXX_COMPILER=clang++ -DZEVRIN_FUZZ=ON -DBUILD_TESTING=OFF -DZEVRIN_BUILD_BENCH=OFF \
    -DZEVRIN_BUILD_WIDGETS=OFF "${launcher[@]}"
stage fuzz-build 900 cmake --build "$build_dir" -j "$jobs" --target zevrin_fuzz zevrin_fuzz_prep

# A CI run starts from the seeds alone, so that its result does not depend on earlier runs.
if [ $ci -eq 1 ]; then
    rm -rf "$fuzz_dir"
fi
mkdir -p "$fuzz_dir/corpus" "$fuzz_dir/artifacts"
"$build_dir/fuzz/zevrin_fuzz_prep" "$fuzz_dir/prep" tests/data

export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
target=$build_dir/fuzz/zevrin_fuzz
# -max_len covers every golden statement; -timeout and -rss_limit_mb turn a hang or a runaway
# allocation into a finding.
limits=(-max_len=8192 -timeout=10 -rss_limit_mb=2048 -artifact_prefix="$fuzz_dir/artifacts/")

if [ $ci -eq 1 ]; then
    # Each seed and regression input is run once, then each dialect gets the same mutations of
    # its own seeds on every run (one process, a fixed seed and a fixed number of runs).
    stage fuzz-replay 300 "$target" -runs=0 "${limits[@]}" "$fuzz_dir/prep/seed" fuzz/regressions
    for name in $("$build_dir/fuzz/zevrin_fuzz_prep" --dialects); do
        mkdir -p "$fuzz_dir/ci-$name"
        log=$fuzz_dir/ci-$name.log
        rc=0
        stage "fuzz-$name" 120 env ZEVRIN_FUZZ_DIALECT="$name" "$target" -seed="${FUZZ_CI_SEED:-1}" -runs="$ci_runs" \
            -dict="$fuzz_dir/prep/dict/$name.dict" "${limits[@]}" -print_final_stats=1 \
            "$fuzz_dir/ci-$name" "$fuzz_dir/prep/seed/$name" > "$log" 2>&1 || rc=$?
        grep -v -E '^#[0-9]+[[:space:]]+(NEW|REDUCE|pulse)' "$log"
        # Any finding fails the run: a crash, a sanitizer report, a hang, a runaway allocation or
        # a broken round trip. Its input is kept in the artifacts.
        if [ $rc -ne 0 ]; then
            echo "==> fuzz-$name found an input; it is in $fuzz_dir/artifacts" >&2
            exit $rc
        fi
    done
    exit 0
fi

if [ -n "$dialect" ]; then
    mkdir -p "$fuzz_dir/corpus-$dialect"
    stage "fuzz-run-$dialect" $((seconds + 120)) env ZEVRIN_FUZZ_DIALECT="$dialect" "$target" \
        "$fuzz_dir/corpus-$dialect" "$fuzz_dir/prep/seed/$dialect" -dict="$fuzz_dir/prep/dict/$dialect.dict" \
        "${limits[@]}" -max_total_time="$seconds" -print_final_stats=1
    exit 0
fi
# Several workers share the corpus directory.
stage fuzz-run $((seconds + 120)) "$target" "$fuzz_dir/corpus" "$fuzz_dir/prep/seed" fuzz/regressions \
    -dict="$fuzz_dir/prep/all.dict" "${limits[@]}" -max_total_time="$seconds" -print_final_stats=1 \
    -fork="$jobs" -ignore_crashes=0
