#!/usr/bin/env bash
# Runs the host: with no arguments, the tour over the bundled samples; with
# arguments, vxhost with those arguments.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
"$root/scripts/setup.sh"
"$root/scripts/build.sh" build >&2
if [ $# -eq 0 ]; then
  exec "$root/build/vxhost" demo "$root/samples"
fi
exec "$root/build/vxhost" "$@"
