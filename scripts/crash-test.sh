#!/usr/bin/env bash
# Kills a writer of the store with SIGKILL at random moments, KILLS times,
# and checks after each kill that the store is whole and holds every change
# the writer reported done. Prints kills, changes checked and losses; fails
# on any loss. The moments follow SEED, so a failing run can be repeated.
#
# Usage: scripts/crash-test.sh [KILLS [SEED]]   (defaults: 1000, a new seed)
set -euo pipefail

kills=${1:-1000}
seed=${2:-$(od -An -N4 -tu4 /dev/urandom | tr -d ' ')}
build=${BUILD_DIR:-build}

cd "$(dirname "$0")/.."
cmake --build "$build" --target fenrow-crash-test fenrow-crash-writer -- --quiet
echo "crash test: $kills kills, seed $seed, on $(uname -srm), $(date -u +%Y-%m-%dT%H:%M:%SZ)"
exec "$build/tests/crash/fenrow-crash-test" --kills "$kills" --seed "$seed"
