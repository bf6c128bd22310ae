#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs what building, testing and running QelImgInfo needs on Debian.
set -euo pipefail
packages=(build-essential cmake pkg-config ccache clang valgrind
          libicu-dev libexiv2-dev exiv2 nlohmann-json3-dev
          libgtest-dev libgmock-dev libbenchmark-dev libclang-rt-14-dev
          lintian libgtkmm-4.0-dev xvfb xauth fonts-ipafont-gothic)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  sudo=""
  [ "$(id -u)" -eq 0 ] || sudo="sudo"
  export DEBIAN_FRONTEND=noninteractive
  $sudo apt-get update -qq
  $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
