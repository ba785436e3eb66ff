"""A tree of texts whose conversion is known, and what must be true when a run over it has ended."""
import json
import os
import random
from pathlib import Path

KANA = "あいうえおかきくけこさしすせそたちつてとなにぬねのまみむめも、。日本語文字\n"
OTHERS = {"photo.jpg": (b"\xff\xd8\xff\xe0\0\0\1" * 9, "refused"), "log.txt": (
    "ログの行です\n".encode() * 9 + "別の行です\n".encode("cp932") * 9, "undecided")}


def make(root: Path, count: int) -> dict[bytes, tuple[bytes, str]]:
    """Writes so many texts in several encodings and folders, and two files that are none in one encoding. Returns for
    the name of each what becomes of it in UTF-8, and the outcome."""
    rng = random.Random(count)
    expected = {}
    for i in range(count):
        text = "".join(rng.choices(KANA, k=rng.randint(100, 900)))
        # The same names in several folders; one that is no UTF-8, and some that a shell would take for something else.
        name = [b"a/%d", b"b/%d", b"a/c/\x83\x65%d.txt", b"-%d *\n"][i % 4] % (i // 4)
        put(root, name, text.encode(["cp932", "euc_jp", "utf-8", "iso2022_jp"][i % 4]))
        expected[name] = text.encode(), "converted"
    for name, (data, outcome) in OTHERS.items():
        put(root, name.encode(), data)
        expected[name.encode()] = data, outcome
    return expected


def put(root: Path, name: bytes, data: bytes) -> None:
    path = os.path.join(os.fsencode(root), name)
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as file:
        file.write(data)


def files(root: Path) -> dict[bytes, bytes]:
    found = {}
    for folder, _, names in os.walk(os.fsencode(root)):
        for name in names:
            path = os.path.join(folder, name)
            with open(path, "rb") as file:
                found[os.path.relpath(path, os.fsencode(root))] = file.read()
    return found


def lines(report: Path) -> list[dict]:
    """Of the files, without the first."""
    return [json.loads(line) for line in report.read_bytes().splitlines()[1:]]


def check(root: Path, report: Path, expected: dict[bytes, tuple[bytes, str]]) -> None:
    """Nothing is lost, nothing is there twice, nothing else is left behind."""
    assert files(root) == {name: data for name, (data, outcome) in expected.items() if outcome == "converted"}
    told = sorted((os.fsencode(line["file"]), line["outcome"]) for line in lines(report))
    assert told == sorted((name, outcome) for name, (_, outcome) in expected.items())
