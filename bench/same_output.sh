#!/usr/bin/env bash
# Speed work must not change a single byte of what zevrin writes. This compares two zevrin binaries,
# a reference (built from the commit before the change) and a candidate, over the same inputs in
# every dialect and several option sets, and prints every statement whose output differs.
#
# Inputs per dialect: the dialect's typical, large and mixed corpora, the golden inputs (one per
# line, line ends made blanks), the fuzz regression inputs' text, and mutations of all of these
# (a character dropped, doubled or changed, a word repeated) from a fixed seed, so that error
# messages and positions are compared too. Each golden input also goes through `model` whole.
#
# usage: bash bench/same_output.sh REFERENCE CANDIDATE     environment: COUNT (500 per kind),
#        MAKE_CORPUS (build-bench/bench/make_corpus), SEED (7)
# exit: 0 same output everywhere, 1 differences (listed), 2 usage
set -euo pipefail
export LC_ALL=C

ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
REF=${1:-}
NEW=${2:-}
COUNT=${COUNT:-500}
SEED=${SEED:-7}
MAKE_CORPUS=${MAKE_CORPUS:-$ROOT/build-bench/bench/make_corpus}
if [[ ! -x "$REF" || ! -x "$NEW" ]]; then
    echo "usage: bash bench/same_output.sh REFERENCE_ZEVRIN CANDIDATE_ZEVRIN" >&2
    exit 2
fi
[[ -x "$MAKE_CORPUS" ]] || { echo "same_output.sh: no make_corpus at $MAKE_CORPUS (set MAKE_CORPUS)" >&2; exit 2; }

WORK=$(mktemp -d)
trap 'rm -rf "$WORK"' EXIT

DIALECTS=(generic interbase mysql dbisam mssql postgresql db2 oracle)
OPTION_SETS=(
    ""
    "--keywords upper --functions lower"
    "--keywords firstupper --functions upper --no-always-bracket --no-quote-identifiers"
)

# Every non-empty line of the files, blanks for line ends, comments left out (a "--" would swallow
# the rest of a joined line).
one_per_line() {
    local f
    for f in "$@"; do
        grep -av -- '--' "$f" | tr '\r\n' '  ' | sed 's/  */ /g'
        echo
    done
}

# Deterministic mutations of each line: drop, double or change one character, repeat one word.
mutate() {
    awk -v seed="$SEED" 'BEGIN { srand(seed); chars = "(),.*=<>'"'"'\" ;:AZaz09+-|[]`" }
    length($0) > 0 {
        n = length($0)
        for (k = 0; k < 3; ++k) {
            p = int(rand() * n) + 1; kind = int(rand() * 4); s = $0
            if (kind == 0) s = substr(s, 1, p - 1) substr(s, p + 1)
            else if (kind == 1) s = substr(s, 1, p) substr(s, p)
            else if (kind == 2) s = substr(s, 1, p - 1) substr(chars, int(rand() * length(chars)) + 1, 1) substr(s, p + 1)
            else { split(s, w, " "); m = length(w); q = int(rand() * m) + 1; s = s " " w[q] }
            print s
        }
    }'
}

inputs_for() {  # inputs_for DIALECT > file
    local d=$1 kind
    for kind in typical large mixed; do
        "$MAKE_CORPUS" --seed "$SEED" --kind "$kind" --dialect "$d" "$COUNT"
    done
    one_per_line "$ROOT"/tests/data/"$d"/*.sql
    # Regression inputs carry two option bytes before the statement text.
    local f
    for f in "$ROOT"/fuzz/regressions/"$d"-*; do
        [[ -e "$f" ]] || continue
        tail -c +3 "$f" | tr -d '\000' | tr '\r\n' '  '
        echo
    done
}

DIFFS=0
STATEMENTS=0
for d in "${DIALECTS[@]}"; do
    inputs_for "$d" | grep -av '^ *$' >"$WORK/base.sql" || true
    mutate <"$WORK/base.sql" >"$WORK/mutated.sql"
    cat "$WORK/base.sql" "$WORK/mutated.sql" >"$WORK/all.sql"
    n=$(wc -l <"$WORK/all.sql")
    for opts in "${OPTION_SETS[@]}"; do
        # shellcheck disable=SC2086 # the option set is several words
        "$REF" format --lines --dialect "$d" $opts "$WORK/all.sql" >"$WORK/ref.out" || true
        # shellcheck disable=SC2086
        "$NEW" format --lines --dialect "$d" $opts "$WORK/all.sql" >"$WORK/new.out" || true
        STATEMENTS=$((STATEMENTS + n))
        if ! cmp -s "$WORK/ref.out" "$WORK/new.out"; then
            c=$(diff <(nl -ba "$WORK/ref.out") <(nl -ba "$WORK/new.out") | grep -c '^<' || true)
            echo "DIFFERENT: $d [$opts]: $c output lines differ ($n statements); first:"
            diff <(nl -ba "$WORK/ref.out") <(nl -ba "$WORK/new.out") | head -6 || true
            DIFFS=$((DIFFS + c))
        fi
    done
    for f in "$ROOT"/tests/data/"$d"/*.sql; do
        "$REF" model --dialect "$d" "$f" >"$WORK/ref.json" 2>&1 || true
        "$NEW" model --dialect "$d" "$f" >"$WORK/new.json" 2>&1 || true
        STATEMENTS=$((STATEMENTS + 1))
        if ! cmp -s "$WORK/ref.json" "$WORK/new.json"; then
            echo "DIFFERENT: model of $f"
            diff "$WORK/ref.json" "$WORK/new.json" | head -6 || true
            DIFFS=$((DIFFS + 1))
        fi
    done
done
echo "same_output: $STATEMENTS statement runs in ${#DIALECTS[@]} dialects, $DIFFS different"
[[ $DIFFS == 0 ]]
