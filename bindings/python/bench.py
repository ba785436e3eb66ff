#!/usr/bin/env python3
"""Measures the package beside what Python and others have, and prints tables.   bench.py [SECONDS]

Each measurement is the fastest of the runs that SECONDS (0.5) hold, three at least: CPU time, but for two threads the time
by the clock. The texts are those of bench/text, repeated to 1 MB in each encoding.
"""
from __future__ import annotations

import importlib
import mmap
import sys
import tempfile
import threading
import time
from pathlib import Path
from typing import Any, Callable

import jkc

TEXTS = Path(__file__).resolve().parents[2] / "bench" / "text"
SIZE = 1_000_000
SECONDS = float(sys.argv[1]) if len(sys.argv) > 1 else 0.5


def seconds(call: Callable[[], Any], clock: Callable[[], float] = time.thread_time) -> float:
    """Of the fastest of the runs."""
    runs: list[float] = []
    while len(runs) < 3 or sum(runs) < SECONDS:
        runs.append(once(call, clock))
    return min(runs)


def once(call: Callable[[], Any], clock: Callable[[], float] = time.thread_time) -> float:
    begin = clock()
    call()
    return clock() - begin


def text(name: str, encoding: str, size: int = SIZE, first_line: int = 0) -> bytes:
    """Whole lines of a text, from one of them on, without the characters that Python maps otherwise."""
    lines = (TEXTS / name).read_text(encoding="utf-8").replace("～", "").splitlines(keepends=True)
    data, i = bytearray(), first_line
    while len(data) < size:
        data += lines[i % len(lines)].encode(encoding, "ignore")
        i += 1
    return bytes(data)


def rate(data: bytes, time_taken: float) -> str:
    return f"{len(data) / time_taken / 1e6:,.0f}"


def decoding() -> None:
    print("| decode and encode 1 MB, in MB/s | `bytes.decode` | `jkc.decode` | times | codec `jkc-...` |"
          " `str.encode` | `jkc.encode` | times |")
    print("|---|---:|---:|---:|---:|---:|---:|---:|")
    for name in ("prose.txt", "markup.html", "ascii.txt"):
        for encoding in ("cp932", "euc_jp", "iso2022_jp", "utf-8", "utf-16-le"):
            data = text(name, encoding)
            string = data.decode(encoding)
            ours = "cp50221" if encoding == "iso2022_jp" else encoding
            codec = ours if ours == "cp50221" else "jkc-" + encoding
            assert jkc.decode(data, ours) == string == data.decode(codec), encoding
            theirs_decoding, decoding = seconds(lambda: data.decode(encoding)), seconds(lambda: jkc.decode(data, ours))
            theirs_encoding, encoding_ = seconds(lambda: string.encode(encoding)), seconds(lambda: jkc.encode(string, ours))
            print(f"| {name.partition('.')[0]}, {encoding} | {rate(data, theirs_decoding)} | {rate(data, decoding)} |"
                  f" {theirs_decoding / decoding:.1f} | {rate(data, seconds(lambda: data.decode(codec)))} |"
                  f" {rate(data, theirs_encoding)} | {rate(data, encoding_)} | {theirs_encoding / encoding_:.1f} |")


def detection() -> None:
    others = {}
    for name in ("charset_normalizer", "chardet"):
        try:
            others[name] = importlib.import_module(name)
        except ImportError:
            print(f"{name} is not there", file=sys.stderr)
    print("\n| detect, in ms | `jkc.detect` |" + "".join(f" {name} | times |" for name in others))
    print("|---|---:|" + "---:|---:|" * len(others))
    for size, label in ((SIZE, "1 MB"), (10_000, "10 kB"), (200, "200 B")):
        for encoding in ("cp932", "euc_jp", "iso2022_jp", "utf-8"):
            # charset_normalizer remembers what it has seen: each text is given to it once.
            texts = [text("prose.txt", encoding, size, first_line) for first_line in range(3)]
            ours = min(seconds(lambda: jkc.detect(data)) for data in texts)
            row = f"| {label} of prose, {encoding} | {ours * 1e3:.3f} |"
            for name, other in others.items():
                if name == "chardet" and size == SIZE:  # half a minute each
                    row += " | |"
                    continue
                theirs = min(once(lambda: other.detect(data)) for data in texts)
                row += f" {theirs * 1e3:,.1f} | {theirs / ours:,.0f} |"
            print(row)


def threads() -> None:
    data = text("prose.txt", "cp932") * 16
    print("\n| 16 MB of prose in cp932, in MB/s | 1 thread | 2 threads | times |")
    print("|---|---:|---:|---:|")
    for label, call in (
        ("`jkc.detect`", lambda: jkc.detect(data)),
        ("`jkc.convert` to UTF-8", lambda: jkc.convert(data, "utf-8", "cp932")),
        ("`jkc.decode`", lambda: jkc.decode(data, "cp932")),
        ("`bytes.decode`", lambda: data.decode("cp932")),
    ):
        def work(call: Callable[[], Any] = call) -> None:
            for _ in range(4):
                call()

        def both() -> None:
            pair = [threading.Thread(target=work) for _ in range(2)]
            for thread in pair:
                thread.start()
            for thread in pair:
                thread.join()

        one, two = seconds(work, time.perf_counter), seconds(both, time.perf_counter)
        print(f"| {label} | {rate(data * 4, one)} | {rate(data * 8, two)} | {2 * one / two:.2f} |")


def memory() -> None:
    with tempfile.TemporaryFile() as file:
        file.write(text("prose.txt", "cp932") * 64)
        file.flush()
        with mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ) as mapped:
            taken = seconds(lambda: jkc.detect(mapped))
            print(f"\nA mapped file of 64 MB is detected in {taken * 1e3:.1f} ms.")


if __name__ == "__main__":
    decoding()
    detection()
    threads()
    memory()
