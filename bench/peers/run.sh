#!/usr/bin/env bash
# Measures zevrin against the peer SQL libraries (npm pgsql-parser and node-sql-parser) and a bare
# C token counter on the same generated corpus, in one run, and prints statements/s, MB/s and
# ratios. The peers are measuring instruments only: they are installed into bench/peers/node_modules
# (git-ignored) and nothing of the product builds with or runs them.
#
# usage: bash bench/peers/run.sh        environment: STATEMENTS (20000), RUNS (3), PASSES (2),
#                                       BUILD (build-bench), SEED (42)
set -euo pipefail

HERE=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
ROOT=$(cd "$HERE/../.." && pwd)
BUILD=${BUILD:-$ROOT/build-bench}
STATEMENTS=${STATEMENTS:-20000}
RUNS=${RUNS:-3}
PASSES=${PASSES:-2}
SEED=${SEED:-42}
WIDE_FIELDS=10000
WIDE_TABLES=10
# Pinned, so that figures of different days measure the same peer code.
PGSQL_PARSER=pgsql-parser@18.2.8
NODE_SQL_PARSER=node-sql-parser@5.4.0

WORK=$(mktemp -d)
trap 'rm -rf "$WORK"' EXIT

log() { printf '%s\n' "$*" >&2; }

need_tools() {
    local missing=()
    for tool in cmake ninja cc node npm; do
        command -v "$tool" >/dev/null || missing+=("$tool")
    done
    if ((${#missing[@]})); then
        log "run.sh: missing ${missing[*]} (Debian: apt-get install cmake ninja-build gcc nodejs npm)"
        exit 2
    fi
}

build_zevrin() {
    log "== building zevrin (Release) in $BUILD"
    cmake -S "$ROOT" -B "$BUILD" -G Ninja -DCMAKE_BUILD_TYPE=Release -DBUILD_TESTING=OFF \
        -DZEVRIN_BUILD_BENCH=ON -DZEVRIN_BUILD_WIDGETS=OFF >/dev/null
    cmake --build "$BUILD" --target zevrin make_corpus bench_parser bench_scaling >/dev/null
}

installed_version() {
    node -p "require('$HERE/node_modules/$1/package.json').version" 2>/dev/null || true
}

install_peers() {
    if [[ "$(installed_version pgsql-parser)" == "${PGSQL_PARSER##*@}" &&
        "$(installed_version node-sql-parser)" == "${NODE_SQL_PARSER##*@}" ]]; then
        return
    fi
    log "== installing $PGSQL_PARSER $NODE_SQL_PARSER into $HERE/node_modules"
    npm install --prefix "$HERE" --no-save --no-package-lock --no-audit --no-fund \
        "$PGSQL_PARSER" "$NODE_SQL_PARSER" >/dev/null
}

# Wall-clock seconds of one run of the command, output discarded.
wall_seconds() {
    local start end
    start=$(date +%s%N)
    "$@" >/dev/null
    end=$(date +%s%N)
    awk -v ns=$((end - start)) 'BEGIN { printf "%.4f", ns / 1e9 }'
}

# The median of RUNS whole-process runs of the command.
median_wall() {
    local times=()
    for ((i = 0; i < RUNS; ++i)); do
        times+=("$(wall_seconds "$@")")
    done
    printf '%s\n' "${times[@]}" | sort -g | awk '{ t[NR] = $1 } END { print t[int((NR + 1) / 2)] }'
}

json_field() {  # json_field JSON NAME
    node -p "JSON.parse(process.argv[1])[process.argv[2]]" "$1" "$2"
}

# One row: name, statements, failed, seconds, bytes, reference statements/s (0: this is it).
row() {
    awk -v name="$1" -v n="$2" -v failed="$3" -v s="$4" -v bytes="$5" -v ref="$6" 'BEGIN {
        rate = (n - failed) / s; mb = bytes / s / 1e6
        ratio = ref > 0 ? sprintf("%.2f", ref / rate) : "1.00"
        printf "  %-32s %7d %7d %9.4f %12.0f %9.2f %10s\n", name, n - failed, failed, s, rate, mb, ratio
    }'
}

header() {
    printf '  %-32s %7s %7s %9s %12s %9s %10s\n' tool ok failed seconds "stmts/s" "MB/s" "zevrin/x"
}

need_tools
build_zevrin
install_peers
ZEVRIN="$BUILD/src/cli/zevrin"
cc -O2 -o "$WORK/tokcount" "$HERE/tokcount.c"

CORPUS="$WORK/typical.sql"
"$BUILD/bench/make_corpus" --seed "$SEED" "$STATEMENTS" >"$CORPUS"
"$BUILD/bench/make_corpus" --wide "$WIDE_FIELDS" "$WIDE_TABLES" >"$WORK/wide.sql"
BYTES=$(stat -c %s "$CORPUS")
N=$(wc -l <"$CORPUS")

log "== measuring (RUNS=$RUNS whole-process runs, PASSES=$PASSES in-process passes)"
ZEVRIN_FAILED=$("$ZEVRIN" format --lines "$CORPUS" | grep -c '^error: ' || true)
ZEVRIN_WALL=$(median_wall "$ZEVRIN" format --lines "$CORPUS")
ZEVRIN_RATE=$(awk -v n="$N" -v f="$ZEVRIN_FAILED" -v s="$ZEVRIN_WALL" 'BEGIN { print (n - f) / s }')
declare -A PEER_JSON PEER_WALL
for peer in pgsql-parser node-sql-parser; do
    PEER_JSON[$peer]=$(node "$HERE/peers.js" "$peer" "$CORPUS" "$PASSES")
    PEER_WALL[$peer]=$(median_wall node "$HERE/peers.js" "$peer" "$CORPUS")
done
TOK_JSON=$("$WORK/tokcount" "$CORPUS" $((PASSES * 10)))
TOK_WALL=$(median_wall "$WORK/tokcount" "$CORPUS")

# zevrin in-process: the round-trip benchmark, whose corpus is the first 2,000 statements of this
# corpus (same generator, same seed).
BENCH_JSON="$WORK/roundtrip.json"
"$BUILD/bench/bench_parser" --benchmark_filter='^RoundTrip/typical/generic/' --benchmark_min_time=2 \
    --benchmark_format=json >"$BENCH_JSON" 2>/dev/null
# Google Benchmark's rates are per CPU second; the peers are timed by the wall clock, so the rates
# are brought to wall-clock time here (they differ on a loaded machine).
read -r BENCH_RATE BENCH_MBS < <(node -e '
    const b = require(process.argv[1]).benchmarks[0];
    const cpuShare = b.cpu_time / b.real_time;
    console.log(b.items_per_second * cpuShare, b.bytes_per_second * cpuShare / 1e6);' "$BENCH_JSON")

# The 10,000-field statement: zevrin in-process from the scaling benchmarks, the peers in-process.
SCALE_JSON="$WORK/scaling.json"
"$BUILD/bench/bench_scaling" --benchmark_filter="^Scale(Fields)(Parse|Generate)/generic/$WIDE_FIELDS\$" \
    --benchmark_format=json >"$SCALE_JSON" 2>/dev/null
ZEVRIN_WIDE_MS=$(node -e '
    const r = require(process.argv[1]).benchmarks;
    const ms = { ns: 1e-6, us: 1e-3, ms: 1, s: 1e3 };
    console.log(r.reduce((sum, b) => sum + b.real_time * ms[b.time_unit], 0).toFixed(2));' "$SCALE_JSON")

echo
echo "Corpus: $N typical statements, $BYTES bytes (make_corpus --seed $SEED), $(date -u +%Y-%m-%d)"
echo "Machine: $(lscpu | sed -n 's/^Model name: *//p' | head -1), $(nproc) cores"
echo "Peers: $PGSQL_PARSER, $NODE_SQL_PARSER (node $(node --version))"
echo
echo "Whole process, the corpus file in, formatted SQL out (median of $RUNS runs, start-up included):"
header
row "zevrin format --lines" "$N" "$ZEVRIN_FAILED" "$ZEVRIN_WALL" "$BYTES" 0
for peer in pgsql-parser node-sql-parser; do
    row "$peer" "$N" "$(json_field "${PEER_JSON[$peer]}" failed)" "${PEER_WALL[$peer]}" "$BYTES" "$ZEVRIN_RATE"
done
row "tokcount (ceiling, tokens only)" "$N" 0 "$TOK_WALL" "$BYTES" "$ZEVRIN_RATE"
echo
echo "In process, best of $PASSES passes (start-up and module load left out):"
header
awk -v r="$BENCH_RATE" -v m="$BENCH_MBS" 'BEGIN {
    printf "  %-32s %7s %7s %9s %12.0f %9.2f %10s\n", "zevrin round trip (bench)", 2000, 0, "-", r, m, "1.00" }'
for peer in pgsql-parser node-sql-parser; do
    J=${PEER_JSON[$peer]}
    row "$peer" "$N" "$(json_field "$J" failed)" "$(json_field "$J" seconds)" "$BYTES" "$BENCH_RATE"
done
row "tokcount (ceiling, tokens only)" "$N" 0 "$(json_field "$TOK_JSON" seconds)" "$BYTES" "$BENCH_RATE"
for peer in pgsql-parser node-sql-parser; do
    J=${PEER_JSON[$peer]}
    if [[ "$(json_field "$J" failed)" != 0 ]]; then
        echo "  $peer rejected $(json_field "$J" failed) statements; first: $(json_field "$J" firstError)"
    fi
done
echo
echo "One statement of $WIDE_FIELDS fields over $WIDE_TABLES joined tables, parse + generate, in process (ms):"
printf '  %-32s %10s\n' "zevrin (bench_scaling)" "$ZEVRIN_WIDE_MS"
for peer in pgsql-parser node-sql-parser; do
    J=$(node "$HERE/peers.js" "$peer" "$WORK/wide.sql" "$PASSES")
    if [[ "$(json_field "$J" failed)" != 0 ]]; then
        printf '  %-32s %10s  (%s)\n' "$peer" "failed" "$(json_field "$J" firstError)"
    else
        printf '  %-32s %10.2f\n' "$peer" "$(awk -v s="$(json_field "$J" seconds)" 'BEGIN { print s * 1000 }')"
    fi
done
J=$("$WORK/tokcount" "$WORK/wide.sql" $((PASSES * 10)))
printf '  %-32s %10.2f\n' "tokcount" "$(awk -v s="$(json_field "$J" seconds)" 'BEGIN { print s * 1000 }')"
echo
echo "zevrin/x: zevrin's statements/s divided by the tool's (above 1: zevrin is faster)."
