#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds the libFuzzer targets with clang, AddressSanitizer and
# UndefinedBehaviorSanitizer in build-fuzz, replays the committed corpora,
# then fuzzes each target in turn for SECONDS (default 60).
#
#   scripts/fuzz.sh [SECONDS] [TARGET...]
#
# New inputs collect in build-fuzz/corpus/<target>/; a crashing input is
# written to build-fuzz/artifacts/ and the script fails. Reproduce one with
#   build-fuzz/<target> build-fuzz/artifacts/<file>
# and add it to fuzz/corpus/<target>/ with the fix.
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=${1:-60}
shift || true
targets=("$@")
[ ${#targets[@]} -gt 0 ] || targets=(fuzz_read_file_tags fuzz_tag_file fuzz_image)
jobs=$(nproc)
[ "$jobs" -le 2 ] || jobs=2
build=build-fuzz

CC=clang CXX=clang++ cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DQEL_BUILD_FUZZERS=ON -DQEL_SANITIZE=ON -DQEL_BUILD_TESTS=OFF >/dev/null
cmake --build "$build" -j"$jobs" --target "${targets[@]}"

# The library's texts are the English ones; every report aborts the run.
export LANGUAGE=en LC_ALL=C
export ASAN_OPTIONS=${ASAN_OPTIONS:-detect_leaks=1:abort_on_error=1:allocator_may_return_null=0}
export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}

ctest --test-dir "$build/fuzz" --output-on-failure -R "^($(IFS='|'; echo "${targets[*]}"))_corpus$"

mkdir -p "$build/artifacts"
for target in "${targets[@]}"; do
  case $target in
    fuzz_image) extra=(-dict=fuzz/image.dict -max_len=65536) ;;
    fuzz_tag_file) extra=(-dict=fuzz/tag_file.dict -max_len=16384) ;;
    *) extra=(-max_len=4096) ;;
  esac
  mkdir -p "$build/corpus/$target"
  echo "== $target: ${seconds}s"
  "$build/$target" -max_total_time="$seconds" -timeout=20 -rss_limit_mb=2048 \
    -print_final_stats=1 -artifact_prefix="$build/artifacts/$target-" "${extra[@]}" \
    "$build/corpus/$target" "fuzz/corpus/$target"
done
