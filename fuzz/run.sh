#!/usr/bin/env bash
# Runs every fuzz target for a set time and fails when any of them finds a
# crash, a leak, a sanitizer report, an input that takes too long, or a
# broken promise of the reader it drives.
#
#   fuzz/run.sh BUILD_DIR SECONDS [JOBS] [TARGET...]
#
# BUILD_DIR holds the built targets (make fuzz uses build-fuzz); JOBS
# targets run at a time (default 1). Each keeps its corpus in
# BUILD_DIR/fuzz/corpus/NAME between runs and starts from the seeds the
# build gathered; its output goes to BUILD_DIR/fuzz/logs/NAME.log and an
# input that failed to BUILD_DIR/fuzz/artifacts/NAME/. To replay one:
#   BUILD_DIR/fuzz/fuzz-NAME FILE
set -uo pipefail

build=${1:?build folder}
seconds=${2:?seconds per target}
jobs=${3:-1}
shift $(( $# < 3 ? $# : 3 ))
here=$(cd "$(dirname "$0")" && pwd)

# The longest input each reader is given: about twice its largest seed, so
# a run spends its time on the shapes of a document, not on its bulk; an
# outline may be long enough to cross the limit of 1,000 levels (the seeds
# at that limit are about 20 KB).
declare -A maxLength=(
  [opml]=24576
  [backup]=8192
  [checklist]=2048
  [template]=8192
  [capture-date]=512
)
targets=("$@")
[ ${#targets[@]} -eq 0 ] && targets=(opml backup checklist template capture-date)

for symbolizer in llvm-symbolizer llvm-symbolizer-14 /usr/lib/llvm-14/bin/llvm-symbolizer; do
  if command -v "$symbolizer" >/dev/null; then
    export ASAN_SYMBOLIZER_PATH=$(command -v "$symbolizer")
    break
  fi
done
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
export ASAN_OPTIONS=detect_leaks=1:abort_on_error=0

runOne() {
  local name=$1
  local binary=$build/fuzz/fuzz-$name
  local corpus=$build/fuzz/corpus/$name
  local artifacts=$build/fuzz/artifacts/$name
  local log=$build/fuzz/logs/$name.log
  mkdir -p "$corpus" "$artifacts" "$(dirname "$log")"
  "$binary" -max_total_time="$seconds" -max_len="${maxLength[$name]}" -timeout=10 -rss_limit_mb=2048 \
    -dict="$here/dictionaries/$name.dict" -artifact_prefix="$artifacts/" -print_final_stats=1 \
    "$corpus" "$build/fuzz/seeds/$name" >"$log" 2>&1
  local status=$?
  # A report that did not stop the process still fails the run.
  local reports='ERROR: (Address|Leak|UndefinedBehavior)Sanitizer|runtime error:|==fenrow-fuzz== broken'
  if [ $status -eq 0 ] && grep -qE "$reports" "$log"; then
    status=1
  fi
  return $status
}

summary() {
  local name=$1 status=$2
  local log=$build/fuzz/logs/$name.log
  local execs speed done
  execs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -1)
  speed=$(sed -n 's/^stat::average_exec_per_sec: *//p' "$log" | tail -1)
  done=$(grep -E '^#[0-9]+[[:space:]]+(DONE|pulse|NEW|REDUCE|INITED)' "$log" | tail -1 \
    | grep -oE 'cov: [0-9]+ ft: [0-9]+ corp: [0-9]+/[0-9]+[A-Za-z]*')
  if [ "$status" -eq 0 ]; then
    printf '%-13s ok      %s execs, %s/s, %s\n' "$name" "${execs:-?}" "${speed:-?}" "${done:-?}"
  else
    printf '%-13s FAILED  see %s; input kept in %s\n' "$name" "$log" "$build/fuzz/artifacts/$name/"
    grep -E '==fenrow-fuzz== broken|ERROR: [A-Za-z]+Sanitizer|runtime error:|SUMMARY:|ALARM|Test unit written' "$log" \
      | head -5 | sed 's/^/                /'
  fi
}

for name in "${targets[@]}"; do
  if [ ! -x "$build/fuzz/fuzz-$name" ] || [ -z "${maxLength[$name]:-}" ]; then
    echo "fuzz/run.sh: no target $name in $build/fuzz" >&2
    exit 2
  fi
done

declare -A pids=()
declare -A results=()
for name in "${targets[@]}"; do
  while [ "$(jobs -rp | wc -l)" -ge "$jobs" ]; do
    wait -n
  done
  runOne "$name" &
  pids[$name]=$!
done
failed=0
for name in "${targets[@]}"; do
  wait "${pids[$name]}"
  results[$name]=$?
  [ "${results[$name]}" -ne 0 ] && failed=1
done
for name in "${targets[@]}"; do
  summary "$name" "${results[$name]}"
done
exit $failed
