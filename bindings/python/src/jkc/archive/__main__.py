"""The command line: ``python -m jkc.archive SRC DST --to CODE``."""
from __future__ import annotations

import argparse
import contextlib
import os
import sys
import traceback
from typing import Any, Sequence

from .listing import Listing, batches
from .report import Counts, Report, dump
from .run import dask_workers, local_workers
from .task import Job, run_program
from .trees import open_tree

# Options of jkc convert that are handed to it: names, argument, help.
POLICY = (
    (("-t", "--to", "--to-code"), "CODE", "code type to write; 'jkc -l' shows them"),
    (("-f", "--from", "--from-code"), "CODE", "code type to expect: it wins where several fit"),
    (("--assume",), "CODE", "code type that the texts are in, whatever they show"),
    (("--by-line",), None, "convert lines in other code types as such"),
    (("--eol",), "KIND", "line ends: keep (default), lf, crlf or cr"),
    (("--compose",), None, "compose letters with their marks (Unicode sources)"),
    (("--on-loss",), "WHAT", "replace (default), omit, escape or stop"),
    (("--suppress",), None, "the same as --on-loss=omit"),
    (("--strict",), None, "refuse files that would lose something"),
    (("--allow-loss",), None, "as the program takes it; the source is kept here anyway"),
    (("--keep-time",), None, "give results the file's modification time (folders of this machine only)"),
)


class _HandOn(argparse.Action):
    def __call__(self, parser: argparse.ArgumentParser, namespace: argparse.Namespace, value: Any,
                 option: str | None = None) -> None:
        name = max(self.option_strings[:2], key=len)
        namespace.policy = namespace.policy + ((name,) if self.nargs == 0 else (f"{name}={value}",))


def _at_least_one(text: str) -> int:
    number = int(text)
    if number < 1:
        raise ValueError
    return number


def parser() -> argparse.ArgumentParser:
    made = argparse.ArgumentParser(
        prog="python3 -m jkc.archive", usage="%(prog)s [OPTION...] --to CODE SRC DST",
        allow_abbrev=False,
        description="Converts the text files of SRC with the program jkc, and writes them below DST. Both are folders or "
                    "URLs of fsspec. The same command goes on with a run that was interrupted.",
        epilog="Exit status: 0 all is converted; 1 a file is undecided, unknown or binary, or would lose something that "
               "it must not; 2 the command line cannot be understood; 3 a file failed or was not done.")
    made.add_argument("source", metavar="SRC")
    made.add_argument("destination", metavar="DST")
    policy = made.add_argument_group("what becomes of a file, as in jkc convert")
    for names, argument, text in POLICY:
        policy.add_argument(*names, action=_HandOn, nargs=None if argument else 0, metavar=argument, default=(),
                            dest="policy", help=text)
    made.add_argument("--include", metavar="GLOB", action="append", default=[], help="only files that match")
    made.add_argument("--exclude", metavar="GLOB", action="append", default=[],
                      help="neither files nor folders that match")
    made.add_argument("--copy-others", action="store_true", help="copy files that are not converted as they are")
    made.add_argument("-n", "--dry-run", action="store_true", help="write nothing, print the lines of the report")
    made.add_argument("--report", metavar="FILE", help="where the report is; DST.jsonl, where that is a folder")
    made.add_argument("-q", "--quiet", action="store_true", help="no summary")
    work = made.add_argument_group("work")
    where = work.add_mutually_exclusive_group()
    where.add_argument("-j", "--jobs", type=_at_least_one, default=os.cpu_count() or 1, metavar="N",
                       help="programs that work side by side here; as many as there are processors")
    where.add_argument("--scheduler", metavar="ADDRESS", help="have the workers of a Dask cluster do it")
    work.add_argument("--batch-files", type=_at_least_one, default=200, metavar="N",
                      help="most files that a program is given at once (%(default)s)")
    work.add_argument("--batch-bytes", type=_at_least_one, default=1 << 24, metavar="N",
                      help="most bytes that it is given, but for a single file (%(default)s)")
    return made


def main(arguments: Sequence[str] | None = None) -> int:
    """Returns the exit status."""
    command = parser()
    options = command.parse_args(arguments)
    try:
        return _run(options)
    except ValueError as error:
        command.error(str(error))  # ends with status 2
    except Exception:  # not to be taken for status 1
        traceback.print_exc()
        return 3


def _say(text: str) -> None:
    print(f"jkc.archive: {text}".encode(errors="backslashreplace").decode(), file=sys.stderr)


def _run(options: argparse.Namespace) -> int:
    source, destination = open_tree(options.source), open_tree(options.destination)
    job = Job(source.root if source.is_local else options.source,
              destination.root if destination.is_local else options.destination,
              options.policy, options.dry_run, options.copy_others)
    _check(job, source.is_local and destination.is_local)
    path = options.report or (f"{destination.root}.jsonl" if destination.is_local else None)
    if options.dry_run:
        return _convert(options, job, Listing(source, options.include, options.exclude, [], _say), None)
    if not path:
        raise ValueError("--report FILE is needed where DST is no folder of this machine")
    try:
        report = Report(path, job, destination)
    except BlockingIOError:
        raise ValueError(f"{path}: another run has it") from None
    except ValueError as error:
        raise ValueError(f"{path}: {error}") from None
    results = [report.path, destination.root] if destination.is_local else [report.path]
    with contextlib.closing(report):
        return _convert(options, job, Listing(source, options.include, options.exclude, results, _say), report)


def _check(job: Job, is_local: bool) -> None:
    """What the program has to say of its options, before there is work."""
    if job.source == job.destination:
        raise ValueError("SRC and DST are the same")
    if "--keep-time" in job.policy and not is_local:
        raise ValueError("--keep-time is for folders of this machine")
    asked = run_program(job.policy, [], os.curdir, job.destination)
    if asked.returncode == 2:
        raise ValueError(asked.stderr.decode(errors="replace").strip())


def _convert(options: argparse.Namespace, job: Job, listing: Listing, report: Report | None) -> int:
    counts = report.counts if report else Counts()
    done = report.done if report else set()
    files = (file for file in listing.files() if file.name not in done)
    todo = batches(files, options.batch_files, options.batch_bytes)
    told = set()
    word, status = "dry run" if options.dry_run else "summary", 0
    try:
        with dask_workers(options.scheduler) if options.scheduler else local_workers(options.jobs) as workers:
            for batch, lines in workers.convert(job, todo):
                if isinstance(lines, Exception):
                    counts.not_done += len(batch)
                    if repr(lines) not in told:  # the next batch may well fail for the same reason
                        told.add(repr(lines))
                        _say(f"{batch[0]} and {len(batch) - 1} more: {lines!r}")
                elif report:
                    report.add(lines)
                else:
                    for line in lines:
                        counts.add(line)
                        sys.stdout.buffer.write(dump(line))
    except KeyboardInterrupt:
        word, status = "interrupted", 130
    except OSError as error:  # no cluster, or a full disk
        _say(str(error))
        word, status = "stopped", 3
    counts.outcomes["failed"] += listing.unread
    if not options.quiet or status:
        _say(f"{word}: {counts.summary()}")
    return status or counts.status()


if __name__ == "__main__":
    sys.exit(main())
