#!/usr/bin/env python3
"""Measures jkc.archive: what a file and a gigabyte cost, with one and two workers, here and on a Dask cluster of this
machine; how long 10^6 files take at that speed; a run over files that are done.

usage: bench_archive.py [FILES MEGABYTES DONE]

Prints the figures of docs/archives.md. Each is the least of three runs, that take turns, without what a run over no file
takes. The files are in TMPDIR: in /dev/shm they cost no time of a disk.
"""
from __future__ import annotations

import contextlib
import json
import os
import random
import shutil
import subprocess
import sys
import tempfile
import time
from pathlib import Path
from typing import Callable, Iterator, NamedTuple

from jkc import program

HERE = Path(__file__).resolve().parent
# Without a character that Python writes with a code of NEC, which few other programs do.
TEXT = (HERE.parents[1] / "docs/ja/repair.md").read_text(encoding="utf-8").replace("髙", "高")
ROUNDS = 3
ARCHIVE = [sys.executable, "-m", "jkc.archive", "--to=UTF-8"]


def make_small(folder: Path, count: int) -> int:
    """Texts of 0.5 to 40 kB, 100 in a folder, half Shift_JIS and half EUC-JP. Returns the bytes in all."""
    rng = random.Random(1)
    size = 0
    for i in range(count):
        length = min(len(TEXT) * 3, max(250, int(rng.lognormvariate(7.3, 1))))
        start = rng.randrange(len(TEXT))
        data = (TEXT * 4)[start:start + length].encode(["cp932", "euc_jp"][i % 2], "replace")
        path = folder / str(i // 100) / f"{i}.txt"
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(data)
        size += len(data)
    return size


def make_large(folder: Path, megabytes: int) -> int:
    """Eight texts in Shift_JIS."""
    folder.mkdir()
    data = TEXT.encode("cp932", "replace")
    data *= (1 << 20) // len(data) + 1
    for i in range(8):
        with open(folder / f"{i}.txt", "wb") as file:
            for _ in range(megabytes // 8):
                file.write(data)
    return len(data) * (megabytes // 8) * 8


@contextlib.contextmanager
def cluster(workers: int) -> Iterator[str]:
    """The address of a cluster of processes of this machine."""
    from distributed import LocalCluster
    here = "127.0.0.1:0"
    with LocalCluster(n_workers=workers, threads_per_worker=1, processes=True, dashboard_address=here,
                      worker_dashboard_address=here, local_directory=tempfile.gettempdir()) as made:
        yield made.scheduler_address


class Cost(NamedTuple):
    seconds: float
    processor: float  # seconds of it, in all processes
    memory: int  # most bytes that the process or one of its programs had


def processor_of_workers() -> float:
    """Seconds that the workers of the clusters have had, with their programs."""
    import psutil
    return sum(sum(process.cpu_times()[:4]) for process in psutil.Process().children(recursive=True))


def run(command: list[str]) -> Cost:
    start, before = time.perf_counter(), processor_of_workers()
    child = subprocess.Popen(command, stderr=subprocess.PIPE)
    said = child.stderr.read()
    child.stderr.close()
    _, status, usage = os.wait4(child.pid, 0)
    if os.waitstatus_to_exitcode(status) not in (0, 1) or b"summary" not in said:  # some texts may be undecided
        raise SystemExit(f"{command}: {said.decode()}")
    return Cost(time.perf_counter() - start, usage.ru_utime + usage.ru_stime + processor_of_workers() - before,
                usage.ru_maxrss * 1024)


def measure(source: Path, ways: dict[str, list[str]], row: Callable[[str, float, float], None]) -> None:
    """Calls row() for each way, with the seconds that it took, and those of processors."""
    empty, results = source.with_name("empty"), source.with_name("results")
    empty.mkdir(exist_ok=True)
    costs = {}
    for _ in range(ROUNDS):
        for name, way in ways.items():
            for tree in (empty, source):
                shutil.rmtree(results, ignore_errors=True)
                Path(f"{results}.jsonl").unlink(missing_ok=True)
                os.sync()
                last = ["--output-dir", str(results)] if way[0] == program() else [str(results)]
                cost = run([*way, str(tree), *last])
                costs[name, tree] = [min(pair) for pair in zip(cost, costs.get((name, tree), cost))]
    for name in ways:
        row(name, *(full - start for full, start in zip(costs[name, source][:2], costs[name, empty])))
    print("over no file: " + ", ".join(f"{costs[name, empty][0]:.2f} s ({name})" for name in ways))


@contextlib.contextmanager
def all_ways() -> Iterator[dict[str, list[str]]]:
    with cluster(1) as one, cluster(2) as two:
        yield {**{f"`jkc convert -r -j {jobs}`": [program(), "convert", "-tUTF-8", "-r", f"-j{jobs}"] for jobs in (1, 2)},
               **{f"`--jobs {jobs}`": [*ARCHIVE, f"--jobs={jobs}"] for jobs in (1, 2, 8)},
               **{"Dask, 1 worker": [*ARCHIVE, "--scheduler", one], "Dask, 2 workers": [*ARCHIVE, "--scheduler", two]}}


def small_files(folder: Path, count: int) -> None:
    size = make_small(folder / "small", count)
    print(f"\n{count} files of {size / count:.0f} bytes in the mean\n\n"
          "| | a file | of processors | 10^6 files |\n|---|---|---|---|")

    def row(name: str, seconds: float, processor: float, count: int = count) -> None:
        print(f"| {name} | {1000 * seconds / count:.2f} ms | {1000 * processor / count:.2f} ms | "
              f"{1e6 * seconds / count / 60:.1f} min |", flush=True)

    with all_ways() as ways:
        measure(folder / "small", ways, row)
    few = count // 10
    make_small(folder / "few", few)
    measure(folder / "few", {f"`--jobs 1 --batch-files {batch}`": [*ARCHIVE, "--jobs=1", f"--batch-files={batch}"]
                             for batch in (1, 10, 100, 1000)}, lambda *costs: row(*costs, few))


def large_files(folder: Path, megabytes: int) -> None:
    size = make_large(folder / "large", megabytes)
    print(f"\n8 files of {size / 8e6:.0f} MB\n\n| | a gigabyte | of processors | MB/s |\n|---|---|---|---|")
    with all_ways() as ways:
        measure(folder / "large", ways, lambda name, seconds, processor: print(
            f"| {name} | {seconds * 1e9 / size:.1f} s | {processor * 1e9 / size:.1f} s | {size / seconds / 1e6:.0f} |"))


def nothing_left(folder: Path, count: int) -> None:
    """A run over a tree that is done: what listing it and reading the report cost. It comes first: a child is said to have
    had as much memory as its parent once had, which is more where distributed is imported."""
    source, results = folder / "many", folder / "done"
    for i in range(count):
        for tree in (source, results):
            path = f"{tree}/{i // 1000}/a text of some year {i}.txt"
            if i % 1000 == 0:
                os.makedirs(os.path.dirname(path))
            os.close(os.open(path, os.O_CREAT))
    with open(f"{results}.jsonl", "w", encoding="utf-8") as report:
        head = {"archive": str(source), "destination": str(results), "options": ["--to=UTF-8"], "copy_others": False}
        report.write(json.dumps(head, separators=(",", ":")) + "\n")
        for i in range(count):
            report.write(f'{{"file":"{i // 1000}/a text of some year {i}.txt","outcome":"converted","dry_run":false,'
                         '"from":"SJIS","to":"UTF8","loss_count":0,"losses":[]}\n')
    cost = run([*ARCHIVE, str(source), str(results)])
    print(f"\n{count} files that are done: {cost.seconds:.1f} s, of processors {cost.processor:.1f} s, {cost.memory / 1e6:.0f} MB of memory")


def main() -> None:
    count, megabytes, done = map(int, sys.argv[1:] or (20_000, 512, 1_000_000))
    with tempfile.TemporaryDirectory(prefix="jkc-bench-") as name:
        for part, size in ((nothing_left, done), (small_files, count), (large_files, megabytes)):
            if size:
                part(Path(name), size)


if __name__ == "__main__":
    main()
