#!/usr/bin/env python3
"""The whole King James and World English Bibles, from Debian's Sword modules
through diatheke, made into long texts and converted by `vxhost bible convert`:

- the conversion, timed against `cat` of the same file, pair by pair;
- opening the converted KJV as a folder and as a packed .tBL (`bible info` reads
  every book), the .tBL against `unzip -p` of the same archive, pair by pair;
- every book converted, with diatheke's chapter count, and the text of random
  verses against diatheke's own answer for that reference, asked one by one.

The WEB's deuterocanonical books stand in its long text where the module has
them, between Malachi and Matthew; they are books like any other to the step.
Times are medians, of the wall clock and of the processor time (user and system)
the run took. Texts are cached in the benchmarks' folder (bench_cache.py), never committed.
Usage: bible_convert.py [VXHOST]   Needs: sword-text-kjv sword-text-web diatheke"""
import os
import random
import re
import shutil
import statistics
import subprocess
import sys
import time

import bench_cache

PAIRS = int(os.environ.get("VX_BENCH_PAIRS", "9"))
SAMPLES = 30
CACHE = bench_cache.folder()
# "Book C:V: ", at the start of a line or behind the last tag ahead of it.
REFERENCE = re.compile(r"(?:^|>)\s*([^<>\s][^<>]*?) (\d+):(\d+):(?: |$)")
# Names that diatheke prints but does not read back.
KEYS = {"Esther (Greek)": "EsthGr"}


def diatheke(module, key):
    result = subprocess.run(["diatheke", "-b", module, "-f", "plain", "-k", key],
                            capture_output=True, text=True, errors="replace")
    return result.stdout


def module_named(word):
    listing = diatheke("system", "modulelist")
    for line in listing.splitlines():
        name = line.split(" : ")[0].strip()
        if word in name and " : " in line:
            return name
    return None


def verses_of(dump):
    """(book, chapter, verse, text) in the order diatheke gives them; the lines
    that follow a reference, up to an empty line, continue its verse. Markup that
    stands ahead of a reference (a heading, a line group) is no part of it."""
    verses = []
    current = None
    for raw in dump.splitlines():
        match = REFERENCE.search(raw)
        line = re.sub(r"<[^>]*>", "", raw).strip()
        if match:
            text = re.sub(r"<[^>]*>", "", raw[match.end():])
            current = [match.group(1).strip(), int(match.group(2)), int(match.group(3)), [text]]
            verses.append(current)
        elif current and line and not re.match(r"^\([A-Za-z0-9]+\)$", line):
            current[3].append(line)
        else:
            current = None
    return [(b, c, v, " ".join(" ".join(t).split())) for b, c, v, t in verses]


def dump_books(module, ranges, path):
    """diatheke's verses, asked a book at a time: over a long range it lets headings
    of other places leak in behind verses. The range gives the books and their order."""
    books_path = path + ".books.dump"
    if not os.path.exists(books_path):
        outline = verses_of("".join(diatheke(module, key) for key in ranges))
        books = list(dict.fromkeys(v[0] for v in outline))
        with open(books_path + ".part", "w") as dump:
            for book in books:
                dump.write(diatheke(module, KEYS.get(book, book)))
        os.rename(books_path + ".part", books_path)
    with open(books_path) as dump:
        return verses_of(dump.read())


def make_longtext(module, ranges, path):
    """The books in diatheke's order: a title line, chapter numbers on lines of their
    own, "V. text" verses; CR LF ends. Gives the verses, also when cached."""
    verses = dump_books(module, ranges, path)
    if not os.path.exists(path):
        lines, book, chapter = [], None, None
        for b, c, v, text in verses:
            if b != book:
                lines.append(b)
                book, chapter = b, None
            if c != chapter:
                lines.append(str(c))
                chapter = c
            lines.append("%d. %s" % (v, text))
        with open(path + ".part", "wb") as out:
            out.write(("\r\n".join(lines) + "\r\n").encode("utf-8"))
        os.rename(path + ".part", path)
    return verses


def run(command):
    """Wall seconds and processor seconds of one run, its output and status."""
    start = time.perf_counter()
    process = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    output = process.stdout.read()
    _, status, usage = os.wait4(process.pid, 0)
    return time.perf_counter() - start, usage.ru_utime + usage.ru_stime, output.decode("utf-8", "replace"), status


def pairs(ours, peer):
    """Median wall and processor milliseconds of ours, and its median ratios to the peer."""
    walls, cpus, wall_ratios, cpu_ratios = [], [], [], []
    for _ in range(PAIRS):
        peer_wall, peer_cpu, _, _ = run(peer)
        wall, cpu, _, _ = run(ours)
        walls.append(wall * 1000)
        cpus.append(cpu * 1000)
        wall_ratios.append(wall / max(peer_wall, 1e-6))
        cpu_ratios.append(cpu / max(peer_cpu, 1e-4))
    return tuple(statistics.median(v) for v in (walls, cpus, wall_ratios, cpu_ratios))


def report(name, figures, peer, goal):
    wall, cpu, wall_ratio, cpu_ratio = figures
    print("%s: %.0f ms wall, %.0f ms processor (goal %s)" % (name, wall, cpu, goal))
    print("%s_vs_%s: %.1f x wall, %.1f x processor" % (name, peer, wall_ratio, cpu_ratio))


def check_books(host, name, folder, verses):
    """Every book of the source, in its order, with its chapters, loads from the folder."""
    chapters = {}
    for b, c, _, _ in verses:
        chapters.setdefault(b, set()).add(c)
    _, _, output, status = run([host, "bible", "info", folder])
    loaded = re.findall(r"^book: (.*), chapters: (\d+)$", output, re.M)
    expected = [(b, str(len(c))) for b, c in chapters.items()]
    missing = [b for b, c in expected if (b, c) not in loaded]
    print("%s_books: %d of %d books load with the source's chapter count%s (goal all, in order: %s)"
          % (name, len(expected) - len(missing), len(expected),
             "; wrong: " + ", ".join(missing[:5]) if missing else "",
             "yes" if loaded == expected and status == 0 else "no"))


def extra_books(verses):
    """The books that stand between the two testaments, in their order."""
    books = list(dict.fromkeys(v[0] for v in verses))
    if "Malachi" not in books or "Matthew" not in books:
        return []
    return books[books.index("Malachi") + 1:books.index("Matthew")]


def check_verses(host, name, module, folder, verses, extra_books):
    """Random verses, each asked of diatheke alone, against the converted book's verse."""
    chosen = random.Random(16).sample([v for v in verses if v[3]], SAMPLES)
    extra = [v for v in verses if v[0] in set(extra_books) and v[3]]
    if extra:
        chosen += random.Random(17).sample(extra, min(10, len(extra)))
    wrong = []
    for book, chapter, verse, _ in chosen:
        key = "%s %d:%d" % (KEYS.get(book, book), chapter, verse)
        source = verses_of(diatheke(module, key))
        expected = source[0][3] if source else None
        _, _, output, _ = run([host, "bible", "verses", os.path.join(folder, book + ".bbl"),
                               "%d:%d" % (chapter, verse)])
        # A verse's line as the book holds it: its number, then "." or ":" and the text.
        found = re.search(r"^%d[.:]\s(.*)$" % verse, output, re.M)
        ours = " ".join(found.group(1).split()) if found else None
        if expected is None or ours != expected:
            wrong.append("%s %d:%d" % (book, chapter, verse))
    print("%s_verses: %d of %d random verses as diatheke gives them%s (goal all)"
          % (name, len(chosen) - len(wrong), len(chosen), "; wrong: " + ", ".join(wrong[:5]) if wrong else ""))


def main():
    host = os.path.abspath(sys.argv[1] if len(sys.argv) > 1 else
                           os.environ.get("VXHOST", os.path.join(os.path.dirname(__file__), "..", "build", "vxhost")))
    if not shutil.which("diatheke"):
        print("bible_convert: skipped (diatheke missing; apt-get install sword-text-kjv sword-text-web diatheke)")
        return
    if not os.access(host, os.X_OK):
        print("bible_convert: skipped (%s not built)" % host)
        return
    os.makedirs(CACHE, exist_ok=True)
    bibles = []
    kjv, web = module_named("KJV"), module_named("WEB")
    if kjv:
        bibles.append(("kjv", kjv, ["Genesis 1:1-Revelation 22:21"], "<= 150 ms"))
    if web:
        bibles.append(("web", web, ["Genesis 1:1-Revelation 22:21"], "none"))
    for name, module, ranges, goal in bibles:
        text = os.path.join(CACHE, name + ".txt")
        verses = make_longtext(module, ranges, text)
        out = os.path.join(CACHE, "out-" + name)
        _, _, _, status = run([host, "bible", "convert", text, "--out", out, "--force"])
        if status != 0:
            print("%s_convert: failed" % name)
            continue
        print("%s_bytes: %d bytes, %d verses (goal none)" % (name, os.path.getsize(text), len(verses)))
        report(name + "_convert", pairs([host, "bible", "convert", text, "--out", out, "--force"], ["cat", text]),
               "cat", goal)
        check_books(host, name, out, verses)
        extra = extra_books(verses)
        if extra:
            print("%s_extra_books: %d between Malachi and Matthew: %s" % (name, len(extra), ", ".join(extra)))
        check_verses(host, name, module, out, verses, extra)
        if name != "kjv":
            continue
        packed = os.path.join(CACHE, "kjv.tBL")
        run([host, "bible", "pack", out, "--out", packed, "--force"])
        report("kjv_open_folder", pairs([host, "bible", "info", out], ["cat", text]), "cat", "none")
        report("kjv_open_packed", pairs([host, "bible", "info", packed], ["unzip", "-p", packed]), "unzip_p",
               "<= 60 ms, <= 1.5 x unzip -p")


if __name__ == "__main__":
    main()
