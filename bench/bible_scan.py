#!/usr/bin/env python3
"""Times the scan of a large Bible book: Psalms of the King James Version (2461 verses),
made from Debian's sword-text-kjv by kjv_book.py and cached in a temporary folder.

`vxhost bible index` reads and indexes the book; the same command on a book of 14 verses
takes the start of the process and the loading of the modules, and the difference of the
two processor times, pair by pair, gives the time per verse. Prints the median as
"bible_scan: N us/verse (goal ...)". Not part of the tests.

usage: bible_scan.py [VXHOST] [ROUNDS]     (defaults: build/vxhost, 15)
"""
import os
import resource
import statistics
import subprocess
import sys

import bench_cache

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))


def verses(host, book):
    out = subprocess.run([host, "bible", "index", book], check=True, capture_output=True, text=True).stdout
    return int(out.rsplit("verses: ", 1)[1])


def seconds(host, book):
    """The processor time of one run, user and system: the machine may be shared."""
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    subprocess.run([host, "bible", "index", book], check=True, stdout=subprocess.DEVNULL)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return (after.ru_utime - before.ru_utime) + (after.ru_stime - before.ru_stime)


def main():
    host = os.path.abspath(sys.argv[1] if len(sys.argv) > 1 else os.path.join(ROOT, "build", "vxhost"))
    rounds = int(sys.argv[2]) if len(sys.argv) > 2 else 15
    psalms = bench_cache.folder("psalms.bbl")
    if not os.path.exists(psalms):
        subprocess.run([sys.executable, os.path.join(ROOT, "bench", "kjv_book.py"), "Psalms", "Psalms", psalms],
                       check=True)
    small = os.path.join(ROOT, "samples", "bible", "3 John.bbl")
    large_count, small_count = verses(host, psalms), verses(host, small)
    per_verse = []
    for _ in range(rounds):
        large = seconds(host, psalms)
        base = seconds(host, small)
        per_verse.append((large - base) / (large_count - small_count) * 1e6)
    print(f"bible_scan: {statistics.median(per_verse):.3f} us/verse (goal: none set; {large_count} verses, "
          f"median of {rounds} pairs)")


if __name__ == "__main__":
    main()
