#!/usr/bin/env bash
# run.sh TREE SECONDS [SUBJECT]…: runs each fuzzer of a build tree for so long, from the kept corpus and what
# earlier runs in this tree found. Fails if one found something; the input is then in TREE/findings.
set -euo pipefail
tree=$(realpath "$1") seconds=$2
cd "$(dirname "$0")"
shift 2
[ $# -gt 0 ] || set -- corpus/*

# What was freed would count as memory that a picture takes. More memory than there can be is refused, as any
# allocator refuses it.
export ASAN_OPTIONS=quarantine_size_mb=16:allocator_may_return_null=1${ASAN_OPTIONS:+:$ASAN_OPTIONS}
export UBSAN_OPTIONS=print_stacktrace=1
symbolizer=$(command -v llvm-symbolizer-16 || command -v llvm-symbolizer || true)
# A name with a version is refused.
[ -z "$symbolizer" ] || ASAN_SYMBOLIZER_PATH=$(realpath "$symbolizer")
export ASAN_SYMBOLIZER_PATH=${ASAN_SYMBOLIZER_PATH:-}
export QT_HASH_SEED=0 TZ=UTC

mkdir -p "$tree/findings"

run() {
    local subject=$1
    local found=$tree/corpus/$subject log=$tree/corpus/$subject.log
    mkdir -p "$found"
    local flags=(-max_total_time="$seconds" -max_len=4096 -timeout=20 -rss_limit_mb=1200 -print_final_stats=1
        -artifact_prefix="$tree/findings/$subject-")
    [ ! -f "$subject.dict" ] || flags+=(-dict="$subject.dict")
    if nice -n 10 "$tree/fuzz_$subject" "${flags[@]}" "$found" "corpus/$subject" >"$log" 2>&1; then
        printf '%-18s %s executions\n' "$subject" "$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")"
    else
        printf '%-18s found something:\n%s\n' "$subject" "$(tail -n 60 "$log")"
        return 1
    fi
}

status=0
for subject in "$@"; do
    if [ "$(jobs -rp | wc -l)" -ge "$(nproc)" ]; then
        wait -n || status=1
    fi
    run "${subject##*/}" &
done
for job in $(jobs -p); do
    wait "$job" || status=1
done
exit $status
