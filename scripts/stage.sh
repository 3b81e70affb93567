# Sourced by the build scripts: runs one named stage under a time budget and prints its duration,
# so that a slow stage shows up in every CI log before it threatens the overall limit.
# usage: stage NAME BUDGET_SECONDS COMMAND...
stage() {
    local name=$1 budget=$2
    shift 2
    local start=$SECONDS
    echo "==> stage '$name' (budget ${budget}s)"
    local rc=0
    timeout --foreground "$budget" "$@" || rc=$?
    local took=$((SECONDS - start))
    if [ $rc -eq 124 ]; then
        echo "==> stage '$name' exceeded its budget of ${budget}s" >&2
    fi
    echo "==> stage '$name' took ${took}s (exit $rc)"
    return $rc
}
