#!/usr/bin/env bash
# Times "vxhost bible convert" on the whole King James and World English Bibles, made
# into long texts from Debian's Sword modules, against "cat" of the same file.
# The runs alternate (cat, convert, cat, convert, ...); the ratio is taken pair by
# pair and the median is quoted. Texts are cached in a temporary folder, never
# committed. Needs: apt-get install sword-text-kjv sword-text-web diatheke
# Opening the converted Bible (as a folder or a .tBL) needs VXBible and is not
# timed here yet.
set -uo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
host="${VXHOST:-$root/build/vxhost}"
cache="${VX_BENCH_CACHE:-${TMPDIR:-/tmp}/vxcore-bench}"
pairs="${VX_BENCH_PAIRS:-9}"
mkdir -p "$cache"

if ! command -v diatheke >/dev/null; then
  echo "bible_convert: skipped (diatheke missing; apt-get install sword-text-kjv sword-text-web diatheke)"
  exit 0
fi
if [ ! -x "$host" ]; then
  echo "bible_convert: skipped ($host not built)"
  exit 0
fi

# The installed module whose name holds the word, e.g. engKJV2006eb for KJV.
module_named() {
  diatheke -b system -k modulelist 2>/dev/null | sed -n "s/^\([A-Za-z0-9]*$1[A-Za-z0-9]*\) : .*/\1/p" | head -1
}

# "Book C:V: text" lines become the long text: the book's name, the chapter number
# and "V. text" verses, each line ending in CR LF.
make_longtext() {
  local module="$1" out="$2"
  [ -s "$out" ] && return 0
  # The 66 books: the deuterocanon of the WEB module is left out.
  { diatheke -b "$module" -f plain -k "Genesis 1:1-Malachi 4:6"
    diatheke -b "$module" -f plain -k "Matthew 1:1-Revelation 22:21"; } | awk '
    {
      # Markup and the indenting of headings are no part of the text.
      line = $0; sub(/\r$/, "", line); gsub(/<[^>]*>/, "", line); sub(/^[ \t]+/, "", line)
      if (line !~ /^.+ [0-9]+:[0-9]+: /) next
      p = index(line, ": ")
      ref = substr(line, 1, p - 1); text = substr(line, p + 2); sub(/ +$/, "", text)
      match(ref, / [0-9]+:[0-9]+$/)
      book = substr(ref, 1, RSTART - 1); split(substr(ref, RSTART + 1), cv, ":")
      if (book != lastbook) { printf "%s\r\n", book; lastbook = book; lastchapter = "" }
      if (cv[1] != lastchapter) { printf "%s\r\n", cv[1]; lastchapter = cv[1] }
      printf "%s. %s\r\n", cv[2], text
    }' > "$out.part" && mv "$out.part" "$out"
}

now_ns() { date +%s%N; }

median() { sort -n | awk '{ v[NR] = $1 } END { if (NR % 2) print v[(NR + 1) / 2]; else printf "%.3f\n", (v[NR / 2] + v[NR / 2 + 1]) / 2 }'; }

# name file goal: prints the median time of a conversion and its median ratio to cat.
bench_one() {
  local name="$1" file="$2" goal="$3" out="$cache/out-$1" times="" ratios=""
  "$host" bible convert "$file" --out "$out" --force > "$cache/$name.books" || { echo "$name: conversion failed"; return; }
  for _ in $(seq "$pairs"); do
    local a b c
    a=$(now_ns); cat "$file" > /dev/null; b=$(now_ns)
    "$host" bible convert "$file" --out "$out" --force > /dev/null; c=$(now_ns)
    times="$times$(( (c - b) / 1000 ))"$'\n'
    ratios="$ratios$(awk -v x=$((c - b)) -v y=$((b - a)) 'BEGIN { printf "%.1f", x / (y > 0 ? y : 1) }')"$'\n'
  done
  local ms ratio books
  ms=$(printf "%s" "$times" | median | awk '{ printf "%.1f", $1 / 1000 }')
  ratio=$(printf "%s" "$ratios" | median)
  books=$(sed -n 's/^books: //p' "$cache/$name.books")
  echo "${name}_books: $books books (goal 66)"
  echo "${name}_bytes: $(stat -c %s "$file") bytes (goal none)"
  echo "${name}_convert: $ms ms (goal $goal)"
  echo "${name}_convert_vs_cat: $ratio x (goal none)"
}

kjv=$(module_named KJV); web=$(module_named WEB)
[ -n "$kjv" ] && make_longtext "$kjv" "$cache/kjv.txt" && bench_one kjv "$cache/kjv.txt" "<= 150 ms"
[ -n "$web" ] && make_longtext "$web" "$cache/web.txt" && bench_one web "$cache/web.txt" "none"
echo "open_converted_bible: skipped (needs VXBible) (goal none)"
exit 0
