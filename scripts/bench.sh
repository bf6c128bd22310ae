#!/usr/bin/env bash
# Builds the benchmarks in Release in build-bench and runs them, reporting the
# median, mean and spread of ten repetitions of each. Any arguments go to the
# benchmark program, e.g.
#   scripts/bench.sh --benchmark_filter=ReadAndExport
#   scripts/bench.sh --benchmark_repetitions=3 --benchmark_format=json
# The texts are the English ones, so figures compare across machines; take
# final figures on a quiet machine (see `uptime`).
set -euo pipefail
cd "$(dirname "$0")/.."
build=build-bench
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Release -DQEL_BUILD_BENCHMARKS=ON >/dev/null
cmake --build "$build" -j"$(nproc)" --target qel_bench
echo "load average: $(cut -d' ' -f1-3 /proc/loadavg)"
LANGUAGE=en LC_ALL=C "$build/qel_bench" --benchmark_repetitions=10 \
  --benchmark_display_aggregates_only=true "$@"
