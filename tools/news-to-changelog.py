#!/usr/bin/env python3
"""Writes NEWS.md as the changelog of the Debian package, in the form dpkg, apt and lintian read:
one entry per release, its paragraphs and points as they stand in NEWS.md, without markup.

usage: news-to-changelog.py NEWS.md OUT MAINTAINER
"""
import email.utils
import datetime
import re
import sys
import textwrap

HEADING = re.compile(r"^## (\S+) \((\d{4}-\d{2}-\d{2})\)$")


def plain(text):
    return re.sub(r"\*\*|\*|`", "", text)


def main(news, out, maintainer):
    entries = []
    for line in open(news, encoding="utf-8").read().splitlines():
        heading = HEADING.match(line)
        if heading:
            entries.append((heading.group(1), heading.group(2), []))
        elif entries and line.strip():
            paragraphs = entries[-1][2]
            if line.startswith("- ") or not paragraphs or paragraphs[-1] is None:
                paragraphs.append(line)
            else:
                paragraphs[-1] += " " + line.strip()
        elif entries and entries[-1][2]:
            entries[-1][2].append(None)
    if not entries:
        sys.exit(f"{news}: no release heading '## VERSION (YYYY-MM-DD)'")

    text = []
    for version, date, paragraphs in entries:
        text.append(f"sparkwright ({version}) unstable; urgency=medium\n\n")
        while paragraphs and paragraphs[-1] is None:
            paragraphs.pop()
        for paragraph in paragraphs:
            if paragraph is None:
                text.append("\n")
                continue
            point = paragraph.startswith("- ")
            words = plain(paragraph[2:] if point else paragraph)
            text.append(textwrap.fill(words, width=78, initial_indent="  * " if point else "  ",
                subsequent_indent="    " if point else "  ", break_on_hyphens=False) + "\n")
        when = datetime.datetime.strptime(date, "%Y-%m-%d").replace(tzinfo=datetime.timezone.utc)
        text.append(f"\n -- {maintainer}  {email.utils.format_datetime(when)}\n\n")
    open(out, "w", encoding="utf-8").write("".join(text).rstrip("\n") + "\n")


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    main(*sys.argv[1:])
