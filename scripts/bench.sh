#!/usr/bin/env bash
# The full benchmark run behind `make bench`: every benchmark program on the
# full-size generated store, each benchmark repeated, results printed as a
# table and kept as JSON in BUILD_DIR/bench-results/.
#
#   scripts/bench.sh [BUILD_DIR] [extra Google Benchmark flags...]
#
# FENROW_BENCH_REPETITIONS (default 10) sets the repetitions. The generated
# stores are shared by the programs through a temporary cache folder, so the
# store is generated once per size for the whole run.
set -euo pipefail

build_dir=${1:-build}
shift || true
repetitions=${FENROW_BENCH_REPETITIONS:-10}
programs=(fenrow-bench-store-open fenrow-bench-store-save fenrow-bench-ready fenrow-bench-graph
          fenrow-bench-ready-command)
programs+=(fenrow-bench-forwarded-command)
programs+=(fenrow-bench-store-edit)
programs+=(fenrow-bench-history-search)
programs+=(fenrow-bench-exchange)
programs+=(fenrow-bench-parsers)
programs+=(fenrow-bench-large-flow)
programs+=(fenrow-bench-canvas)
programs+=(fenrow-bench-canvas-paint)
programs+=(fenrow-bench-capture-dates)
programs+=(fenrow-bench-window-open)
programs+=(fenrow-bench-model-helper)

for program in "${programs[@]}"; do
  if [ ! -x "$build_dir/bench/$program" ]; then
    echo "bench.sh: $build_dir/bench/$program is missing; build first (make bench does)" >&2
    exit 1
  fi
done

cache=$(mktemp -d "${TMPDIR:-/tmp}/fenrow-bench-cache.XXXXXX")
trap 'rm -rf "$cache"' EXIT
export FENROW_BENCH_CACHE=$cache
unset FENROW_BENCH_SCALE

results="$build_dir/bench-results"
mkdir -p "$results"

# Other work on the machine shows up in every figure: print the load too.
echo "Fenrow benchmarks, $(date -u '+%Y-%m-%d %H:%M UTC'), $(nproc) cores, $repetitions repetitions"
echo "Load average before the run: $(cut -d' ' -f1-3 /proc/loadavg)"
for program in "${programs[@]}"; do
  echo
  "$build_dir/bench/$program" \
    --benchmark_repetitions="$repetitions" \
    --benchmark_report_aggregates_only=true \
    --benchmark_counters_tabular=true \
    --benchmark_out="$results/$program.json" \
    --benchmark_out_format=json \
    "$@"
done
echo
echo "JSON results: $results/"
