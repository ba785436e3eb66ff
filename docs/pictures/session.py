#!/usr/bin/env python3
"""Draws a session in a terminal: what the program prints, in English and in Japanese.   session.py PREFIX [--check]

With --check nothing is written; the status is 1 where a picture shows something else than the program prints now.
"""
import html
import itertools
import pathlib
import shutil
import sys
import tempfile
import unicodedata

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parents[1] / "tests/docs"))
from console import EXAMPLES, japanese_locale, run  # noqa: E402

COMMANDS = [
    "jkc detect -r archive",
    "jkc convert -t UTF-8 --in-place=.bak --report -r archive 2>/dev/null",
    "sed -n 4,5p archive/letter.txt",
    "jkc convert -t UTF-8 --by-line archive/log.txt -o log.txt",
]
COLUMN, LINE, SIZE, MARGIN, BAR = 8.4, 21, 14, 16, 30
PROMPT = "#8fd18a"
COLORS = {"command": "#ffffff", "output": "#b6c0ca"}
FONTS = "ui-monospace, 'SFMono-Regular', 'DejaVu Sans Mono', 'Noto Sans Mono CJK JP', Consolas, 'MS Gothic', monospace"


def width(character):
    return 2 if unicodedata.east_asian_width(character) in "WFA" else 1


def pieces(line):
    """Pieces of characters of the same width, each with its column: fonts do not agree on how wide a wide one is."""
    column = 0
    for wide, group in itertools.groupby(line, width):
        text = "".join(group)
        if text.strip():
            yield column + len(text) - len(text.lstrip()), text.strip()
        column += wide * len(text)


def wrapped(line, columns):
    """The lines of a terminal that is so wide."""
    part, used = "", 0
    for character in line:
        if used + width(character) > columns:
            yield part
            part, used = "", 0
        part += character
        used += width(character)
    yield part


def draw(screen, columns):
    rows = []
    for number, (kind, column, line) in enumerate(screen):
        y = BAR + MARGIN + LINE * (number + 0.7)
        if kind == "command":
            rows.append(f'<text x="{MARGIN}" y="{y:.1f}" fill="{PROMPT}">$</text>')
        for start, text in pieces(line):
            length = COLUMN * sum(map(width, text))
            rows.append(f'<text x="{MARGIN + COLUMN * (column + start):.1f}" y="{y:.1f}" textLength="{length:.1f}" '
                        f'lengthAdjust="spacingAndGlyphs" fill="{COLORS[kind]}">{html.escape(text, quote=False)}</text>')
    wide, high = round(2 * MARGIN + COLUMN * columns), round(BAR + 2 * MARGIN + LINE * len(screen))
    dots = "".join(f'<circle cx="{18 + 18 * i}" cy="15" r="5" fill="{c}"/>'
                   for i, c in enumerate(("#e5665c", "#e3b341", "#57ab5a")))
    return (f'<svg xmlns="http://www.w3.org/2000/svg" width="{wide}" height="{high}" viewBox="0 0 {wide} {high}" '
            f'font-family="{FONTS}" font-size="{SIZE}">\n'
            f'<rect x="0.5" y="0.5" width="{wide - 1}" height="{high - 1}" rx="8" fill="#161b22" stroke="#3d4650"/>\n{dots}\n' + "\n".join(rows) + "\n</svg>\n")


def session(prefix, locale, columns=92):
    with tempfile.TemporaryDirectory() as folder:
        shutil.copytree(EXAMPLES, folder, dirs_exist_ok=True)
        printed = run(COMMANDS, prefix, folder, locale)
    screen = []
    for command, lines in zip(COMMANDS, printed):
        screen.append(("command", 2, command))
        screen += [("output", 0, part) for line in lines for part in wrapped(line, columns)]
    return draw(screen, columns)


def main():
    prefix = pathlib.Path(sys.argv[1]).resolve()
    with tempfile.TemporaryDirectory() as folder:
        locales = {"session.svg": {"LC_ALL": "C.UTF-8"}, "session.ja.svg": japanese_locale(folder)}
        if None in locales.values():
            sys.exit(77)
        stale = []
        for name, locale in locales.items():
            drawn = session(prefix, locale)
            if sys.argv[2:] != ["--check"]:
                (HERE / name).write_text(drawn)
            elif (HERE / name).read_text() != drawn:
                stale.append(name)
    if stale:
        sys.exit(f"the program prints something else than {', '.join(stale)}: run scripts/pictures")


main()
