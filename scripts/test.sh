#!/usr/bin/env bash
# The whole test suite: the normal build, the sanitizer build, and a short run of
# every fuzz target.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
"$root/scripts/setup.sh"
jobs="$(nproc)"

echo "== normal build"
"$root/scripts/build.sh" build
(cd "$root/build" && ctest -j"$jobs" --output-on-failure)

echo "== sanitizer build (AddressSanitizer, UndefinedBehaviorSanitizer, leak check)"
"$root/scripts/build.sh" build-asan -DVX_SANITIZE=ON
(cd "$root/build-asan" && ctest -j"$jobs" --output-on-failure)

if ls "$root"/fuzz/*.cpp >/dev/null 2>&1; then
  echo "== fuzz targets, ${VX_FUZZ_SECONDS:-10} s each"
  CC=clang CXX=clang++ "$root/scripts/build.sh" build-fuzz -DVX_FUZZ=ON -DVX_FUZZ_SECONDS="${VX_FUZZ_SECONDS:-10}"
  (cd "$root/build-fuzz" && ctest -L fuzz --output-on-failure)
fi
