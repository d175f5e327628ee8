#!/usr/bin/env bash
# The Bible conversion benchmark lives in bible_convert.py; this name stays for
# scripts/bench.sh and for hands used to it.
exec python3 "$(dirname "$0")/bible_convert.py" "${VXHOST:-$(dirname "$0")/../build/vxhost}"
