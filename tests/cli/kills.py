#!/usr/bin/env python3
"""Kills the program at random moments while it replaces files, in each way that it has for that.

usage: kills.py PROGRAM, with the number of kills in JKC_KILLS

Each file must be whole afterwards: as it was or as it was to become, with the old text under the backup's name where that
was asked for. A further run, which is left alone, must finish the work. The moments are from fixed random numbers, up
to the time that such a run takes.
"""
import os
import random
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path

PROGRAM = os.path.abspath(sys.argv[1])
KILLS = int(os.environ.get("JKC_KILLS", "36"))
FILES = [f"text{i}" for i in range(4)]
OLD = {name: "".join(f"{name} 日本語 {i}\n" for i in range(9000)).encode() for name in FILES}
NEW = {name: text.decode().encode("cp932") for name, text in OLD.items()}
EARLIER = b"what stood there before\n" * 9000

# Options, and the files that appear, with what is there before and what is to become of it.
REPLACED = {name: (OLD[name], NEW[name]) for name in FILES}
MODES = {
    "in place": (["--in-place"], REPLACED),
    "backup": (["--in-place=.bak"], REPLACED),
    "in place, two processes": (["--in-place", "-j", "2"], REPLACED),
    "output file": (["-o", "out"], {"out": (EARLIER, b"".join(NEW[name] for name in FILES))}),
    "new output file": (["-o", "new"], {"new": (None, b"".join(NEW[name] for name in FILES))}),
    "output folder": (["--output-dir", "tree"], {f"tree/{name}": (EARLIER, NEW[name]) for name in FILES}),
}


def content(path):
    return path.read_bytes() if path.exists() else None


class Run:
    """The program at work in a folder of its own."""

    def __init__(self, folder, options, wanted):
        self.folder, self.wanted = Path(folder), wanted
        self.backup = "--in-place=.bak" in options
        (self.folder / "tree").mkdir()
        for name in FILES:
            (self.folder / name).write_bytes(OLD[name])
        for name, (before, _) in wanted.items():
            if before is not None:
                (self.folder / name).write_bytes(before)
        self.command = [PROGRAM, "convert", "-q", "-f", "utf8", "-t", "sjis", *options, *FILES]

    def start(self):
        return subprocess.Popen(self.command, cwd=self.folder, start_new_session=True)

    def kill_after(self, seconds):
        process = self.start()
        time.sleep(seconds)
        try:
            os.killpg(process.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
        status = process.wait()
        for _ in range(2000):  # those that it had started; where nobody waits for them they stay, but do nothing
            try:
                os.killpg(process.pid, 0)
                time.sleep(0.001)
            except ProcessLookupError:
                break
        return status == -signal.SIGKILL

    def check(self, finished):
        """Answers how many files are as they were to become."""
        done = 0
        for name, (before, after) in self.wanted.items():
            found = content(self.folder / name)
            is_new = found == after
            done += is_new
            assert is_new or (found == before and not finished), f"{name} is neither its old text nor the new one"
            kept = content(self.folder / (name + ".bak"))
            if self.backup:
                assert kept == before or (kept is None and not is_new), f"the old text of {name} is lost"
        for name in set(FILES) - set(self.wanted):
            assert content(self.folder / name) == OLD[name], f"the source {name} has changed"
        return done

    def finish(self):
        for name in FILES:  # what is converted already would be read as what it is not any more
            if name in self.wanted and content(self.folder / name) == NEW[name]:
                self.command.remove(name)
        assert self.command[-1] not in FILES or self.start().wait() == 0
        self.check(finished=True)


def time_of_run(options, wanted):
    with tempfile.TemporaryDirectory() as folder:
        begin = time.monotonic()
        assert Run(folder, options, wanted).start().wait() == 0
        return time.monotonic() - begin


def main():
    numbers = random.Random(1)
    all_killed = 0
    for mode, (options, wanted) in MODES.items():
        whole = min(time_of_run(options, wanted) for _ in range(3))
        killed = partly = 0
        for _ in range(max(1, KILLS // len(MODES))):
            with tempfile.TemporaryDirectory() as folder:
                run = Run(folder, options, wanted)
                killed += run.kill_after(numbers.uniform(0, whole))
                partly += 0 < run.check(finished=False) < len(wanted)
                run.finish()
        print(f"{mode}: {killed} killed, {partly} of them between two files")
        all_killed += killed
    assert all_killed > 0, "nothing was at work when it was to be killed"


main()
