#!/usr/bin/env bash
# Configures (once) and builds one build folder: build.sh FOLDER [cmake options...]
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
folder="$1"
shift
if [ ! -f "$root/$folder/build.ninja" ]; then
  cmake -S "$root" -B "$root/$folder" -G Ninja "$@" >/dev/null
fi
cmake --build "$root/$folder" -j"$(nproc)"
