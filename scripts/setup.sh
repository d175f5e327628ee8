#!/usr/bin/env bash
# Installs what the build needs from the Debian archive, if it is missing.
set -euo pipefail

packages=(cmake ninja-build g++ pkg-config libgtest-dev libzip-dev zlib1g-dev clang libclang-rt-14-dev ccache ripgrep unzip)
missing=()
for package in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed" || missing+=("$package")
done
if [ ${#missing[@]} -gt 0 ]; then
  echo "setup: installing ${missing[*]}"
  sudo=""
  [ "$(id -u)" -ne 0 ] && sudo="sudo"
  $sudo apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq "${missing[@]}" >/dev/null
fi
