#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs the whole test suite twice more, looking for memory and undefined-
# behaviour faults:
#  1. built with clang, AddressSanitizer, UndefinedBehaviorSanitizer (with
#     the float-cast-overflow and integer checks) and LeakSanitizer in
#     build-asan: every report fails the test that caused it;
#  2. built with clang and ThreadSanitizer in build-tsan: the whole suite,
#     the threaded test among it (one object per worker thread), stops at
#     the first data race;
#  3. built normally in build-robust and every test program (*_tests, with
#     the qelinfo runs they start) run once under valgrind memcheck: any
#     error or definitely lost byte fails the run.
#
#   scripts/sanitize.sh [asan|tsan|valgrind]     (all three by default)
set -euo pipefail
cd "$(dirname "$0")/.."

what=${1:-all}
jobs=$(nproc)
[ "$jobs" -le 2 ] || jobs=2
# The texts the tests compare with are the English ones.
export LANGUAGE=en LC_ALL=C

if [ "$what" = all ] || [ "$what" = asan ]; then
  CC=clang CXX=clang++ cmake -S . -B build-asan -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DQEL_SANITIZE=ON >/dev/null
  cmake --build build-asan -j"$jobs"
  ASAN_OPTIONS=${ASAN_OPTIONS:-detect_leaks=1:check_initialization_order=1:strict_init_order=1:detect_stack_use_after_return=1} \
  UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1} \
    ctest --test-dir build-asan --output-on-failure -j"$jobs"
fi

if [ "$what" = all ] || [ "$what" = tsan ]; then
  # The install test builds a consumer of its own, without these flags.
  tsan="-fsanitize=thread -fno-omit-frame-pointer"
  CC=clang CXX=clang++ cmake -S . -B build-tsan -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DQEL_SANITIZE=OFF -DCMAKE_C_FLAGS="$tsan" -DCMAKE_CXX_FLAGS="$tsan" \
    -DCMAKE_EXE_LINKER_FLAGS=-fsanitize=thread -DCMAKE_SHARED_LINKER_FLAGS=-fsanitize=thread \
    >/dev/null
  cmake --build build-tsan -j"$jobs"
  TSAN_OPTIONS=${TSAN_OPTIONS:-halt_on_error=1:second_deadlock_stack=1} \
    ctest --test-dir build-tsan --output-on-failure -j"$jobs" -E '^install_and_consume$'
fi

if [ "$what" = all ] || [ "$what" = valgrind ]; then
  cmake -S . -B build-robust -DCMAKE_BUILD_TYPE=RelWithDebInfo -DQEL_SANITIZE=OFF >/dev/null
  cmake --build build-robust -j"$jobs"
  logs=build-robust/memcheck
  rm -rf "$logs"
  mkdir -p "$logs"
  failed=()
  # One valgrind run per test program; the qelinfo runs a test starts are
  # checked as well (the shell and env in between are followed through).
  for program in build-robust/*_tests; do
    [ -x "$program" ] || continue
    name=$(basename "$program")
    echo "== memcheck: $name"
    if ! valgrind --tool=memcheck --error-exitcode=99 --leak-check=full \
        --errors-for-leak-kinds=definite --show-leak-kinds=definite \
        --trace-children=yes --suppressions=scripts/memcheck.supp \
        --log-file="$logs/$name.%p.log" \
        "$program" --gtest_brief=1 >"$logs/$name.out" 2>&1; then
      failed+=("$name")
      tail -n 30 "$logs/$name.out"
    fi
  done
  # A child whose exit status a test did not look at still counts.
  if grep -lE 'ERROR SUMMARY: [1-9]|definitely lost: [1-9]' "$logs"/*.log >"$logs/faulty" 2>/dev/null; then
    while read -r log; do
      echo "== $log"
      grep -vE '^==[0-9]+== *$' "$log" | head -n 80
    done <"$logs/faulty"
    failed+=("the processes logged above")
  fi
  if [ ${#failed[@]} -gt 0 ]; then
    echo "memcheck found faults in: ${failed[*]} (logs in $logs)" >&2
    exit 1
  fi
  echo "memcheck: no errors, no definitely lost bytes"
fi
