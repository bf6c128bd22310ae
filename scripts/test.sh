#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs the dependencies, then checks the tree.
#
#   scripts/test.sh          the release build (g++) with warnings as errors and
#                            the whole suite, then the suite built with clang,
#                            AddressSanitizer and UndefinedBehaviorSanitizer
#   scripts/test.sh --full   also the suite under valgrind memcheck and
#                            ThreadSanitizer, and each fuzz target for a minute
#                            (QEL_FUZZ_SECONDS to change it)
set -euo pipefail
cd "$(dirname "$0")/.."

full=false
case "${1:-}" in
  --full) full=true ;;
  "") ;;
  *) echo "usage: scripts/test.sh [--full]" >&2; exit 2 ;;
esac

scripts/install-deps.sh
jobs=$(nproc)
# Every build below, and those the subproject and package tests make again,
# compile through ccache.
export CMAKE_CXX_COMPILER_LAUNCHER=ccache CMAKE_C_COMPILER_LAUNCHER=ccache
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo -DQEL_WERROR=ON
cmake --build build -j"$jobs"
ctest --test-dir build --output-on-failure -j"$jobs"
scripts/sanitize.sh asan

if $full; then
  scripts/sanitize.sh valgrind
  scripts/sanitize.sh tsan
  scripts/fuzz.sh "${QEL_FUZZ_SECONDS:-60}"
fi
