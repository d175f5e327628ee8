#!/usr/bin/env bash
# Runs every benchmark against the normal build. Benchmarks measure; they don't gate,
# and they are no part of the tests. Their data comes from Debian packages or is
# generated into a temporary folder.
set -uo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
"$root/scripts/setup.sh"
"$root/scripts/build.sh" build
for package in sword-text-kjv sword-text-web diatheke ripgrep bible-kjv; do
  dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed" ||
    echo "bench: $package is not installed; the benchmarks that need it will say so" >&2
done
python3 "$root/bench/bible_scan.py" "$root/build/vxhost"
python3 "$root/bench/song_find.py" "$root/build"
VXHOST="$root/build/vxhost" bash "$root/bench/bible_convert.sh"
python3 "$root/bench/bible_search.py" "$root/build"
