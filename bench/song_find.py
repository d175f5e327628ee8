#!/usr/bin/env python3
"""Times `vxhost song find` against `rg -i -j1 -l` on one generated song library,
pair by pair, and prints the median ratio; and the peak memory of song find on a
small and a large library. Usage: song_find.py [BUILD_FOLDER]"""
import os
import statistics
import subprocess
import sys
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import bench_cache  # noqa: E402
import song_library  # noqa: E402

ROUNDS = 5


def library(count):
    # Written once, kept in the temporary folder for the next run.
    folder = bench_cache.folder("songs-%d" % count)
    if not os.path.isdir(folder):
        song_library.write_library(folder + ".part", count)
        os.rename(folder + ".part", folder)
    return folder


def run(command):
    """Seconds of wall time, seconds of processor time (user and system), and peak
    resident kilobytes of one run. On a busy machine the processor time is the
    steadier of the two."""
    start = time.perf_counter()
    process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    _, status, usage = os.wait4(process.pid, 0)
    return time.perf_counter() - start, usage.ru_utime + usage.ru_stime, usage.ru_maxrss


def main():
    build = os.path.abspath(sys.argv[1] if len(sys.argv) > 1 else "build")
    host = os.path.join(build, "vxhost")
    large, small = library(10000), library(1000)
    searches = [
        ("verse search", ["wretch like"], ["rg", "-i", "-j1", "-l", "wretch like"]),
        ("field query", ["author=newton"], ["rg", "-i", "-j1", "-l", "<author>[^<]*newton"]),
    ]
    for name, query, peer in searches:
        wall, processor = [], []
        for _ in range(ROUNDS):
            ours = run([host, "song", "find", large] + query)
            theirs = run(peer + [large])
            wall.append(ours[0] / theirs[0])
            processor.append(ours[1] / max(theirs[1], 1e-6))
        print("song find %s, 10000 songs: %.1f x ripgrep -j1 (goal <= 3); processor time %.1f x"
              % (name, statistics.median(wall), statistics.median(processor)))
    small_kb = run([host, "song", "find", small, "wretch like"])[2]
    large_kb = run([host, "song", "find", large, "wretch like"])[2]
    print("song find peak memory, 1000 songs: %d KiB" % small_kb)
    print("song find peak memory, 10000 songs: %d KiB (goal: not growing with the library)" % large_kb)


if __name__ == "__main__":
    main()
