#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds the benchmarks in Release in build-bench and runs them, reporting the
# median, mean and spread of ten repetitions of each. Any arguments go to the
# benchmark program, e.g.
#   scripts/bench.sh --benchmark_filter=ReadAndExport
#   scripts/bench.sh --benchmark_repetitions=3 --benchmark_format=json
# With --instructions it instead counts, under callgrind, the instructions of
# one read and grid export per device kind (independent of machine load).
# The texts are the English ones, so figures compare across machines; take
# timed figures on a quiet machine (see `uptime`).
set -euo pipefail
cd "$(dirname "$0")/.."
build=build-bench
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Release -DQEL_BUILD_BENCHMARKS=ON >/dev/null
export LANGUAGE=en LC_ALL=C

if [ "${1:-}" = "--instructions" ]; then
  cmake --build "$build" -j"$(nproc)" --target qel_profile_loop >/dev/null
  instructions() {
    valgrind --tool=callgrind --callgrind-out-file=/dev/null "$build/qel_profile_loop" "$1" "$2" 2>&1 |
      sed -n 's/.*refs: *//p' | tr -d ,
  }
  for device in slr compact scanner other; do
    few=$(instructions 10 "$device")
    many=$(instructions 210 "$device")
    echo "$device: $(( (many - few) / 200 )) instructions per read and grid export"
  done
  exit 0
fi

cmake --build "$build" -j"$(nproc)" --target qel_bench
echo "load average: $(cut -d' ' -f1-3 /proc/loadavg)"
"$build/qel_bench" --benchmark_repetitions=10 --benchmark_display_aggregates_only=true "$@"
