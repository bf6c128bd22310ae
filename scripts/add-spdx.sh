#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Puts an "SPDX-License-Identifier: MIT" line at the top of every source,
# script and CMake file that lacks one (below a #! line). Safe to run again.
#
#   scripts/add-spdx.sh           add the missing lines
#   scripts/add-spdx.sh --check   list the files without one; fail if any
#                                 (exit 77 outside a git checkout)
set -euo pipefail
cd "$(dirname "$0")/.."
check=false
[ "${1:-}" = --check ] && check=true
git rev-parse --git-dir >/dev/null 2>&1 || { echo "not a git checkout" >&2; exit 77; }
tag="SPDX-License-Identifier: MIT"
missing=0
while IFS= read -r file; do
  case "$file" in
    *.cpp | *.h) line="// $tag" ;;
    *CMakeLists.txt | *.cmake | *.cmake.in | *.pc.in | *.sh | *.bash-completion | *.supp | .ci/*)
      line="# $tag" ;;
    *.map) line="/* $tag */" ;;
    *.1) line=".\\\" $tag" ;;
    *) continue ;;
  esac
  [ -f "$file" ] || continue
  head -n 3 "$file" | grep -q "$tag" && continue
  if $check; then
    echo "no SPDX line: $file"
    missing=1
    continue
  fi
  tmp=$(mktemp)
  if head -n 1 "$file" | grep -q '^#!'; then
    { head -n 1 "$file"; printf '%s\n' "$line"; tail -n +2 "$file"; } >"$tmp"
  else
    { printf '%s\n' "$line"; cat "$file"; } >"$tmp"
  fi
  cat "$tmp" >"$file"  # keeps the file's mode
  rm -f "$tmp"
done < <(git ls-files --cached --others --exclude-standard)
exit $missing
