"""What a worker does: it runs the program on a batch of files."""
from __future__ import annotations

import contextlib
import json
import os
import subprocess
import tempfile
import threading
from dataclasses import dataclass
from typing import Any, Dict

from .. import program
from .trees import Tree, open_tree

Line = Dict[str, Any]  # of the report, what became of one file


@dataclass(frozen=True)
class Job:
    """What is the same for all batches."""

    source: str
    destination: str
    policy: tuple[str, ...]  # options of jkc convert
    dry_run: bool = False
    copy_others: bool = False  # also those that are not converted


def convert_batch(job: Job, names: list[str]) -> list[Line]:
    """Converts files, and returns a line of the report for each, in the order of the names, when all results are in
    place. To do it a second time makes no difference."""
    source, destination = _trees(job)
    is_local = source.is_local and destination.is_local
    with contextlib.nullcontext("") if is_local else tempfile.TemporaryDirectory(prefix="jkc-archive-") as scratch:
        lines = {}
        folder = source.root if source.is_local else os.path.join(scratch, "in")
        results = destination.root if destination.is_local else os.path.join(scratch, "out")
        if not source.is_local:
            os.mkdir(folder)
            for name in names:
                try:
                    source.get(_safe(name), os.path.join(folder, name))
                except Exception as error:
                    lines[name] = failed(name, error)
        lines.update(_convert(job, [name for name in names if name not in lines], folder, results))
        for name, line in lines.items():
            try:
                _deliver(job, line, folder, results, destination)
            except Exception as error:
                lines[name] = failed(name, error)
    return [lines[name] for name in names]


def run_program(options: tuple[str, ...], names: list[str], folder: str, results: str) -> subprocess.CompletedProcess[bytes]:
    """Has the program convert files of one folder into another."""
    command = [program(), "convert", *options, "--report=json", "--quiet", "--null", "--files-from=-"]
    return subprocess.run([*command, "--output-dir", results], cwd=folder, capture_output=True,
                          input=b"".join(os.fsencode(name) + b"\0" for name in names))


def failed(name: str, reason: object) -> Line:
    return {"file": name, "outcome": "failed", "dry_run": False, "reason": str(reason), "loss_count": 0, "losses": []}


def _convert(job: Job, names: list[str], folder: str, results: str) -> dict[str, Line]:
    if not names:
        return {}
    done = run_program(job.policy + (("--dry-run",) if job.dry_run else ()), names, folder, results)
    if done.returncode == 2:
        raise ValueError(done.stderr.decode(errors="replace").strip())
    # Lines come in the order of the files. A file whose process was ended by a signal has none, nor have those behind
    # it where the program itself was.
    told = [json.loads(line) for line in done.stdout.split(b"\n")[:-1]]
    lines = {}
    for name in names:
        if told and told[0]["file"] == _as_told(name):
            lines[name] = {**told.pop(0), "file": name}
        else:
            lines[name] = failed(name, "its process was ended by a signal")
    return lines


def _as_told(name: str) -> str:
    """A name as the program's report has it."""
    return os.fsencode(name).decode(errors="replace") if name != "-" else "./-"


def _deliver(job: Job, line: Line, folder: str, results: str, destination: Tree) -> None:
    name, outcome = line["file"], line["outcome"]
    if job.dry_run:
        return
    if outcome in ("undecided", "refused") and job.copy_others:
        destination.put(os.path.join(folder, name), name)
        line["copied"] = True
    elif outcome == "converted" and not destination.is_local:
        destination.put(os.path.join(results, name), name)


def _safe(name: str) -> str:
    """A name that does not lead out of the tree, as names in an archive can."""
    if any(part in ("", ".", "..") for part in name.split("/")):
        raise ValueError("its name leads out of the folder")
    return name


_mine = threading.local()


def _trees(job: Job) -> tuple[Tree, Tree]:
    """Kept for the next batch, since opening an archive reads its index; threads do not share a file system."""
    if getattr(_mine, "job", None) != job:
        _mine.trees, _mine.job = (open_tree(job.source), open_tree(job.destination)), job
    return _mine.trees
