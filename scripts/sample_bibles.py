#!/usr/bin/env python3
"""Writes the sample Bible's other forms from the book files of samples/bible, so that
every form holds the same text:

  samples/bible-xml/kjv-sample.xml   the XML Bible: Book entries named by the attribute
                                     "name", holding Chapter entries of Verse entries
  samples/bible-html/sample.htm      the HTML Bible: an anchor named after each book, an
                                     anchor per chapter title, a bold number per verse

usage: scripts/sample_bibles.py [SOURCE_ROOT]
"""
import html
import os
import re
import sys

# The books in the order of the translation, which is the order a folder Bible finds them in.
BOOKS = ["Ruth", "Jonah", "Philemon", "3 John", "Jude"]


def read_book(path, name):
    """The chapters of a book file, each a list of verse texts in order of their numbers."""
    with open(path, "rb") as f:
        text = f.read().decode("utf-16")
    chapters = []
    for line in text.splitlines():
        verse = re.match(r"^(\d+):\t(.*)$", line)
        if verse:
            if not chapters or int(verse.group(1)) != len(chapters[-1]) + 1:
                sys.exit(f"sample_bibles.py: {path}: verse out of order: {line[:30]!r}")
            chapters[-1].append(verse.group(2))
        elif line.startswith(name + " "):
            chapters.append([])
        elif line.strip():
            sys.exit(f"sample_bibles.py: {path}: a line that is neither heading nor verse: {line[:30]!r}")
    # The HTML form ends a verse at the next tag, and drops its line breaks.
    for chapter in chapters:
        for verse in chapter:
            if "<" in verse or "&" in verse:
                sys.exit(f"sample_bibles.py: {path}: a verse the HTML form can't carry: {verse[:30]!r}")
    return chapters


def xml_bible(books):
    out = ['<?xml version="1.0" encoding="UTF-8"?>', "<Bible>"]
    for name, chapters in books:
        out.append(f'<Book name="{html.escape(name)}">')
        for chapter in chapters:
            out.append("<Chapter>")
            out += [f"<Verse>{html.escape(verse, quote=False)}</Verse>" for verse in chapter]
            out.append("</Chapter>")
        out.append("</Book>")
    out.append("</Bible>")
    return "\n".join(out) + "\n"


def html_bible(books):
    out = ["<html>", "<head><title>King James Version: five short books</title></head>", "<body>",
           "<h1>King James Version: five short books</h1>"]
    for name, chapters in books:
        out.append(f'<a name="{name}"></a>')
        for number, chapter in enumerate(chapters, 1):
            out.append(f"<p><a>{name} {number}</a>")
            # The number's text runs up to the next tag: no blank in front of the verse.
            out += [("<p>" if i == 1 else "") + f"<b>{i}</b>{verse}" for i, verse in enumerate(chapter, 1)]
    out += ["</body>", "</html>"]
    return "\n".join(out) + "\n"


def write(path, text):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path + ".new", "w", encoding="utf-8", newline="\n") as f:
        f.write(text)
    os.replace(path + ".new", path)


def main():
    root = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(__file__), "..")
    source = os.path.join(root, "samples", "bible")
    found = sorted(f[:-4] for f in os.listdir(source) if f.endswith(".bbl"))
    if found != sorted(BOOKS):
        sys.exit(f"sample_bibles.py: {source} holds {found}, expected {BOOKS}")
    books = [(name, read_book(os.path.join(source, name + ".bbl"), name)) for name in BOOKS]
    write(os.path.join(root, "samples", "bible-xml", "kjv-sample.xml"), xml_bible(books))
    write(os.path.join(root, "samples", "bible-html", "sample.htm"), html_bible(books))


if __name__ == "__main__":
    main()
