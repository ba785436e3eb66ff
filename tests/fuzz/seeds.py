#!/usr/bin/env python3
"""Writes the seed corpus of the fuzz targets: seeds.py FOLDER

A seed is the sample texts and the inputs of the test cases, each behind the bytes by which a target chooses what to do
(see Choices in support.h): so that every pair of code types has some. The same on each run.
"""
import hashlib
import itertools
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
CHOICES = 12


def case_inputs(file):
    """The inputs of a file of cases: the third field of a line, hexadecimal, where 8140*3 is 8140 three times over."""
    for line in file.read_text(encoding="utf-8").splitlines():
        fields = line.split("|")
        if len(fields) != 3 or line.startswith(("#", ">")):
            continue
        words = re.findall(r"\b((?:[0-9A-F]{2})+)(?:\*(\d+))?(?=\s|$)", fields[2])
        text = b"".join(bytes.fromhex(digits) * min(int(times or 1), 40) for digits, times in words)
        if text:
            yield text


def texts():
    for file in sorted((ROOT / "examples/data").iterdir()):
        yield file.read_bytes()[:600]
    for file in sorted((ROOT / "tests/data").glob("*.txt")):
        yield from case_inputs(file)


def main():
    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    seen = set()
    for number, text in enumerate(itertools.chain(texts(), [b""])):
        for turn in range(2):
            choices = hashlib.sha256(f"{number} {turn}".encode()).digest()[:CHOICES]
            if text not in seen or turn:
                (folder / f"{number:04}-{turn}").write_bytes(choices + text[:2000])
        seen.add(text)
    print(len(list(folder.iterdir())), "seeds")


main()
