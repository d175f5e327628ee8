#!/usr/bin/env python3
"""Writes a library of songs made from public-domain hymn lines into a folder:
".sng" files (UTF-16LE with a byte order mark, tagged) and ".txt" files (UTF-8,
plain verses), with varied attributes. The same count and starting number give the same files."""
import os
import random
import sys

LINES = [
    "Amazing grace! How sweet the sound", "That saved a wretch like me!",
    "I once was lost, but now am found;", "Was blind, but now I see.",
    "Abide with me; fast falls the eventide;", "The darkness deepens; Lord, with me abide.",
    "When other helpers fail and comforts flee,", "Help of the helpless, O abide with me.",
    "Holy, holy, holy! Lord God Almighty!", "Early in the morning our song shall rise to Thee;",
    "God in three Persons, blessed Trinity!", "A mighty fortress is our God,",
    "A bulwark never failing;", "Our helper He, amid the flood", "Of mortal ills prevailing.",
    "Praise God, from whom all blessings flow;", "Praise Him, all creatures here below;",
    "Be Thou my vision, O Lord of my heart;", "Naught be all else to me, save that Thou art.",
    "Rock of Ages, cleft for me,", "Let me hide myself in Thee;",
    "O God, our help in ages past,", "Our hope for years to come,",
    "Joyful, joyful, we adore Thee,", "God of glory, Lord of love;",
    "Crown Him with many crowns,", "The Lamb upon His throne;",
    "All hail the power of Jesus' name!", "Let angels prostrate fall;",
    "Come, Thou Fount of every blessing,", "Tune my heart to sing Thy grace;",
    "Noël, Noël, born is the King of Israël.", "À toi la gloire, ô Ressuscité!",
]
AUTHORS = ["John Newton", "Henry Francis Lyte", "Reginald Heber", "Martin Luther", "Thomas Ken",
           "Augustus Toplady", "Isaac Watts", "Henry van Dyke", "Matthew Bridges", "Edward Perronet",
           "Robert Robinson", "Edmond Budry", "Charles Wesley", "Fanny Crosby"]
CATEGORIES = ["Hymn", "Praise", "Evening", "Christmas", "Easter", "Communion"]
KEYS = ["C", "D", "E", "F", "G", "A", "Bb", "Eb"]


def song(rng, number):
    verses = []
    for _ in range(rng.randint(2, 6)):
        verses.append([rng.choice(LINES) for _ in range(rng.randint(2, 6))])
    attributes = [("Title", "%s %d" % (rng.choice(LINES).rstrip(",;!."), number)),
                  ("Author", rng.choice(AUTHORS)), ("Copyright", "Public domain")]
    if rng.random() < 0.5:
        attributes.append(("Key", rng.choice(KEYS)))
    if rng.random() < 0.5:
        attributes.append(("Category", rng.choice(CATEGORIES)))
    if rng.random() < 0.3:
        attributes.append(("ccli_number", str(rng.randint(10000, 9999999))))
    return attributes, verses


def sng_bytes(attributes, verses):
    out = ['<?xml version="1.0" encoding="UNICODE"?>\r\n<song xmlns="tarnwick/song">\r\n<attributes>\r\n']
    out += ["<%s>%s</%s>\r\n" % (name, value, name) for name, value in attributes]
    out.append("</attributes>\r\n<verses>\r\n")
    for i, lines in enumerate(verses):
        out.append('<verse id="Verse%d">\r\n%s\r\n</verse>\r\n\r\n' % (i + 1, "\n".join(lines)))
    out.append("</verses>\r\n</song>\r\n")
    return b"\xff\xfe" + "".join(out).encode("utf-16-le")


def txt_bytes(verses):
    return ("\n\n".join("\n".join(lines) for lines in verses) + "\n").encode("utf-8")


def write_library(folder, count, start=12):
    rng = random.Random(start)
    for number in range(count):
        attributes, verses = song(rng, number)
        sub = os.path.join(folder, "%02d" % (number % 50))
        os.makedirs(sub, exist_ok=True)
        if number % 3 == 2:
            name, data = "song%05d.txt" % number, txt_bytes(verses)
        else:
            name, data = "song%05d.sng" % number, sng_bytes(attributes, verses)
        with open(os.path.join(sub, name), "wb") as f:
            f.write(data)


if __name__ == "__main__":
    write_library(sys.argv[1], int(sys.argv[2]) if len(sys.argv) > 2 else 10000)
