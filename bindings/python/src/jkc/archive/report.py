"""The report, by which an interrupted run goes on."""
from __future__ import annotations

import contextlib
import fcntl
import json
import os
from collections import Counter
from typing import IO

from .task import Job, Line
from .trees import Tree

ORDER = ("converted", "unchanged", "undecided", "refused", "failed")
EXIT_STATUS = {"undecided": 1, "refused": 1, "failed": 3}  # the program's


class Counts:
    """What became of the files."""

    def __init__(self) -> None:
        self.outcomes: Counter[str] = Counter()
        self.lossy = 0  # of those that are converted
        self.not_done = 0

    def add(self, line: Line) -> None:
        self.outcomes[line["outcome"]] += 1
        self.lossy += line["outcome"] == "converted" and line["loss_count"] > 0

    def status(self) -> int:
        return max([EXIT_STATUS.get(outcome, 0) for outcome, count in self.outcomes.items() if count] +
                   [3 if self.not_done else 0])

    def summary(self) -> str:
        count = sum(self.outcomes.values()) + self.not_done
        parts = [f"{self.outcomes[outcome]} {outcome}" for outcome in ORDER if self.outcomes[outcome]]
        if self.lossy:
            parts[0] += f" ({self.lossy} with losses)"
        if self.not_done:
            parts.append(f"{self.not_done} not done")
        return f"{count} file{'' if count == 1 else 's'}: {', '.join(parts) or 'nothing to do'}"


class Report:
    """A file with a JSON object a line: first what the run is, then the program's line for each file that is done.

    A file is done when its line is there and its result, if it has one. The last line of a run that was killed may lack
    its end; that is dropped, and so are lines of files that failed or whose result is gone: they are done again. A run
    has the report for itself, by a lock.
    """

    def __init__(self, path: str, job: Job, destination: Tree) -> None:
        """Raises BlockingIOError where another run has it, and ValueError where it is of another source, destination or
        policy, or no report."""
        self.path = os.path.abspath(path)
        self.counts = Counts()
        self.done: set[str] = set()
        self._head = dump({"archive": job.source, "destination": job.destination, "options": list(job.policy),
                           "copy_others": job.copy_others})
        os.makedirs(os.path.dirname(self.path), exist_ok=True)
        with contextlib.ExitStack() as files:
            self._file = self._open(files, self.path, "ab+")
            if not self._read(destination):
                self._make_anew(files)
            self._files = files.pop_all()

    def close(self) -> None:
        self._files.close()

    def add(self, lines: list[Line]) -> None:
        """They are on the disk when this returns."""
        self._file.write(b"".join(dump(line) for line in lines))
        self._file.flush()
        os.fsync(self._file.fileno())
        for line in lines:
            self.counts.add(line)

    def _read(self, destination: Tree) -> bool:
        """Whether all lines stay."""
        self._file.seek(0)
        head = self._file.readline()
        if head != self._head:
            if self._head.startswith(head):
                return False  # its first line was not finished
            raise ValueError("this is the report of another source, destination or policy, or none")
        whole = True
        for text in self._file:
            line = json.loads(text) if text.endswith(b"\n") else None
            if line is not None and _is_done(line, destination):
                self.done.add(line["file"])
                self.counts.add(line)
            else:
                whole = False
        return whole

    @staticmethod
    def _open(files: contextlib.ExitStack, path: str, mode: str) -> IO[bytes]:
        """Opens it, and takes its lock until `files` closes it."""
        file = files.enter_context(open(path, mode))
        fcntl.flock(file, fcntl.LOCK_EX | fcntl.LOCK_NB)
        return file

    def _make_anew(self, files: contextlib.ExitStack) -> None:
        """The old file stays open, so that who has opened it meanwhile does not get its lock."""
        copy = self._open(files, f"{self.path}.new", "wb")
        copy.write(self._head)
        self._file.seek(len(self._head))
        for text in self._file:
            if text.endswith(b"\n") and json.loads(text)["file"] in self.done:
                copy.write(text)
        copy.flush()
        os.fsync(copy.fileno())
        os.replace(copy.name, self.path)
        self._file = copy


def dump(line: Line) -> bytes:
    """A line of the report. A name that is no UTF-8 has its bytes as \\udcXX."""
    try:
        return (json.dumps(line, ensure_ascii=False, separators=(",", ":")) + "\n").encode()
    except UnicodeEncodeError:
        return (json.dumps(line, separators=(",", ":")) + "\n").encode()


def _is_done(line: Line, destination: Tree) -> bool:
    has_result = line["outcome"] == "converted" or line.get("copied", False)
    return line["outcome"] != "failed" and (not has_result or destination.has(line["file"]))
