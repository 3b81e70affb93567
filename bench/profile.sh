#!/usr/bin/env bash
# Instruction-count profile of the round trip: `zevrin format --lines` over the typical corpus under
# valgrind's callgrind, which counts the same on every run where wall-clock timings on a shared
# machine do not. Prints the functions with the most instructions, self and inclusive.
#
# usage: bash bench/profile.sh     environment: STATEMENTS (2000), BUILD (build-prof), TOP (25),
#                                  WIDE ("FIELDS TABLES": profile that one wide statement instead)
set -euo pipefail

ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
BUILD=${BUILD:-$ROOT/build-prof}
STATEMENTS=${STATEMENTS:-2000}
TOP=${TOP:-25}

command -v valgrind >/dev/null || { echo "profile.sh: needs valgrind (apt-get install valgrind)" >&2; exit 2; }

# Optimised as released, with symbols so that inlined code is charged to the right lines.
cmake -S "$ROOT" -B "$BUILD" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DBUILD_TESTING=OFF \
    -DZEVRIN_BUILD_BENCH=ON -DZEVRIN_BUILD_WIDGETS=OFF >/dev/null
cmake --build "$BUILD" --target zevrin make_corpus >/dev/null

WORK=$(mktemp -d)
trap 'rm -rf "$WORK"' EXIT
OUT="$BUILD/callgrind.out"
if [[ -n "${WIDE:-}" ]]; then
    # shellcheck disable=SC2086 # two numbers
    "$BUILD/bench/make_corpus" --wide $WIDE >"$WORK/typical.sql"
    STATEMENTS=1
else
    "$BUILD/bench/make_corpus" "$STATEMENTS" >"$WORK/typical.sql"
fi
valgrind --tool=callgrind --callgrind-out-file="$OUT" \
    "$BUILD/src/cli/zevrin" format --lines "$WORK/typical.sql" >/dev/null 2>"$WORK/valgrind.log"

TOTAL=$(callgrind_annotate "$OUT" | sed -n 's/^\([0-9,]*\) .*PROGRAM TOTALS.*/\1/p' | tr -d ,)
echo "Instructions for $STATEMENTS statements: $TOTAL ($((TOTAL / STATEMENTS)) per statement); data: $OUT"

# The rows of callgrind_annotate as "count percent function": source file, binary and argument
# lists dropped, and the rows of one function (callgrind keeps one per source file its inlined
# code came from) merged: summed for self counts, the largest for inclusive ones, which already
# contain each other. First TOP rows; awk reads to the end, so no broken pipe stops the script.
top_rows() {  # top_rows sum|max
    grep -E '^ *[0-9,]+ \(' | grep -v 'PROGRAM TOTALS' |
        sed -E 's/ \[[^]]*\]$//; s/^ *([0-9,]+) \( *[0-9.]+%\)  [^:]*:/\1 /; s/\[abi:cxx11\]//g; s/\(anonymous namespace\)/{anonymous}/g' |
        awk -v mode="$1" -v total="$TOTAL" '{
            count = $1; gsub(/,/, "", count); count += 0; name = substr($0, index($0, " ") + 1)
            if (substr(name, 1, 1) != "(") sub(/\(.*$/, "", name)
            if (mode == "sum") c[name] += count; else if (count > c[name]) c[name] = count
        } END { for (n in c) printf "%14.0f %6.2f%%  %s\n", c[n], 100 * c[n] / total, n }' |
        sort -nr | awk -v top="$TOP" 'NR <= top'
}

echo
echo "== self (exclusive) instructions"
callgrind_annotate --auto=no --threshold=100 "$OUT" | top_rows sum
echo
echo "== inclusive instructions"
# Recursive functions count their nested calls again (over 100%); start-up frames say nothing.
callgrind_annotate --auto=no --inclusive=yes --threshold=100 "$OUT" | top_rows max |
    awk '$2 + 0 <= 100 && $3 !~ /^(0x|\(below|__libc_start|main$)/'
