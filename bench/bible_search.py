#!/usr/bin/env python3
"""Times `vxhost bible show` and `vxhost bible search` on the whole King James Bible as a
folder Bible against diatheke on the same Sword module (and `bible` of bible-kjv for a
reference), runs alternating, the ratio taken pair by pair, the median quoted; and the
peak memory of each. The folder Bible is the one bench/bible_convert.sh makes and caches.
Usage: bible_search.py [BUILD_FOLDER]"""
import os
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

import bench_cache

PAIRS = int(os.environ.get("VX_BENCH_PAIRS", "9"))
HERE = os.path.dirname(os.path.abspath(__file__))


def run(command):
    """Wall seconds, processor seconds, peak resident kilobytes and output of one run."""
    start = time.perf_counter()
    process = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    out = process.stdout.read()
    _, status, usage = os.wait4(process.pid, 0)
    return time.perf_counter() - start, usage.ru_utime + usage.ru_stime, out


def peak_kb(command):
    """The peak resident kilobytes of one run, by time(1): a child of this script would
    count the script's own memory, which it has until its exec."""
    with tempfile.NamedTemporaryFile("r") as report:
        subprocess.run(["/usr/bin/time", "-f", "%M", "-o", report.name] + command,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        text = report.read().strip()
    return int(text.splitlines()[-1]) if text else 0


def kjv_module():
    """The installed Sword module whose name holds KJV, as bible_convert.sh picks it."""
    listing = subprocess.run(["diatheke", "-b", "system", "-k", "modulelist"], capture_output=True, text=True).stdout
    for line in listing.splitlines():
        name = line.split(" : ")[0].strip()
        if "KJV" in name and name.isalnum():
            return name
    return None


def folder_bible(host):
    """The KJV folder Bible of bible_convert.sh's cache, made by that script if missing."""
    folder = bench_cache.folder("out-kjv")
    if not os.path.isfile(os.path.join(folder, "bible.ini")):
        env = dict(os.environ, VXHOST=host, VX_BENCH_PAIRS="1")
        subprocess.run(["bash", os.path.join(HERE, "bible_convert.sh")], env=env, stdout=subprocess.DEVNULL)
    return folder if os.path.isfile(os.path.join(folder, "bible.ini")) else None


def compare(name, ours, peer, peer_name, goal):
    ratios, cpu_ratios = [], []
    for _ in range(PAIRS):
        mine, mine_cpu, _ = run(ours)
        theirs, theirs_cpu, _ = run(peer)
        ratios.append(theirs / mine)
        cpu_ratios.append(theirs_cpu / max(mine_cpu, 1e-3))
    our_kb, peer_kb = peak_kb(ours), peak_kb(peer)
    print("%s: %.1f x faster than %s (goal %s)" % (name, statistics.median(ratios), peer_name, goal))
    # The machine may be shared: processor time is the steadier measure.
    print("%s_cpu: %.1f x less processor time than %s (goal %s)" % (name, statistics.median(cpu_ratios), peer_name, goal))
    print("%s_peak_memory: %d KiB, %s %d KiB (goal none)" % (name, our_kb, peer_name, peer_kb))
    return our_kb, peer_kb


def main():
    build = os.path.abspath(sys.argv[1] if len(sys.argv) > 1 else "build")
    host = os.path.join(build, "vxhost")
    if not shutil.which("diatheke") or not os.path.exists("/usr/bin/time"):
        print("bible_search: skipped (diatheke or time missing; apt-get install sword-text-kjv diatheke time)")
        return
    module = kjv_module()
    bible = folder_bible(host) if os.access(host, os.X_OK) else None
    if not module or not bible:
        print("bible_search: skipped (no KJV module or no converted KJV Bible)")
        return
    _, _, shown = run([host, "bible", "show", bible, "John 3:16"])
    _, _, found = run([host, "bible", "search", bible, "love one another"])
    print("bible_show_output: %s" % shown.decode().splitlines()[0])
    print("bible_search_hits: %s" % found.decode().splitlines()[-1])
    compare("bible_show", [host, "bible", "show", bible, "John 3:16"],
            ["diatheke", "-b", module, "-k", "John 3:16"], "diatheke", ">= 50")
    if shutil.which("bible"):
        compare("bible_show_vs_bible_kjv", [host, "bible", "show", bible, "John 3:16"],
                ["bible", "John 3:16"], "bible-kjv", ">= 1")
    else:
        print("bible_show_vs_bible_kjv: skipped (apt-get install bible-kjv) (goal >= 1)")
    ours, theirs = compare("bible_search", [host, "bible", "search", bible, "love one another"],
                           ["diatheke", "-b", module, "-s", "phrase", "-k", "love one another"], "diatheke", ">= 40")
    print("bible_search_memory: %.2f of diatheke's (goal < 1)" % (ours / theirs if theirs else 0))


if __name__ == "__main__":
    main()
