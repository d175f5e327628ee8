#!/usr/bin/env python3
"""Writes one book of the King James Version as a ".bbl" file, from Debian's sword-text-kjv
read through diatheke: a heading line per chapter ("Ruth 2"), then one line per verse
("3:<tab>text"), in UTF-16 with a byte order mark, as the module writes its books.

usage: kjv_book.py BOOK NAME_IN_TEXT OUT.bbl     e.g. kjv_book.py "3 John" "3 John" "3 John.bbl"
"""
import re
import subprocess
import sys

MODULE = "engKJV2006eb"


def verses(book):
    out = subprocess.run(["diatheke", "-b", MODULE, "-f", "plain", "-k", book],
                         check=True, capture_output=True, text=True).stdout
    for line in out.splitlines():
        found = re.match(r"^.*? (\d+):(\d+): (.*)$", line)
        if found:
            # The paragraph marks of the edition are no part of the text shown, nor are the
            # character styles that leak through its plain form ("the \\nd LORD").
            text = re.sub(r"\\\+?[a-z]+[0-9]*\*? ?", "", found.group(3).replace("\u00b6", "")).strip()
            yield int(found.group(1)), int(found.group(2)), text


def main():
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    book, name, target = sys.argv[1:]
    lines, chapter = [], 0
    for number, verse, text in verses(book):
        if number != chapter:
            chapter = number
            lines.append(f"{name} {chapter}")
        lines.append(f"{verse}:\t{text}")
    if not lines:
        sys.exit(f"kjv_book.py: diatheke gave no verses for {book!r}")
    with open(target, "wb") as out:
        out.write(("\n".join(lines) + "\n").encode("utf-16"))


if __name__ == "__main__":
    main()
