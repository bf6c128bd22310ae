#!/usr/bin/env bash
# Installs the dependencies and runs every check the project has:
#  1. the test suite built with clang, AddressSanitizer and
#     UndefinedBehaviorSanitizer, then once more under valgrind memcheck;
#  2. each fuzz target for a minute (QEL_FUZZ_SECONDS to change it);
#  3. last, the release build (library, qelinfo, tests) with warnings as
#     errors and the whole test suite.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
scripts/sanitize.sh
scripts/fuzz.sh "${QEL_FUZZ_SECONDS:-60}"
jobs=$(nproc)
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo -DQEL_WERROR=ON
cmake --build build -j"$jobs"
ctest --test-dir build --output-on-failure -j"$jobs"
