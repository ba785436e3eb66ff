"""Which files are converted, and how they are dealt out."""
from __future__ import annotations

import ctypes
import os
import posixpath
from typing import Callable, Iterable, Iterator

from .trees import TEMPORARY_PREFIX, Entry, Tree

VERSION_CONTROL = {".git", ".hg", ".svn", ".bzr", "CVS"}
_libc = ctypes.CDLL(None)


class Listing:
    """The files of a tree that ``jkc convert -r`` would take, folder by folder in the order of their names."""

    def __init__(self, tree: Tree, include: list[str], exclude: list[str],
                 passed_over: Iterable[str], tell: Callable[[str], None]) -> None:
        """Local files and folders that are passed over are those of the results. `tell` hears of folders that cannot be
        read."""
        self.tree, self.include, self.exclude, self.tell = tree, include, exclude, tell
        self.unread = 0  # folders
        # By their names in the tree, which has no symbolic links.
        self.passed_over = {os.path.relpath(os.path.realpath(path), os.path.realpath(tree.root)) for path in passed_over
                            if tree.is_local}

    def files(self, folder: str = "") -> Iterator[Entry]:
        try:
            entries = self.tree.entries(folder)
        except (OSError, ValueError) as error:
            self.tell(f"{folder or '.'}: {error}")
            self.unread += 1
            return
        for entry in entries:
            last = posixpath.basename(entry.name)
            if entry.name in self.passed_over or _matches(self.exclude, entry.name):
                continue
            if entry.is_folder and last not in VERSION_CONTROL:
                yield from self.files(entry.name)
            elif not entry.is_folder and not last.startswith(TEMPORARY_PREFIX):
                if not self.include or _matches(self.include, entry.name):
                    yield entry


def batches(files: Iterable[Entry], most_files: int, most_bytes: int) -> Iterator[list[str]]:
    """The names of files in lists that hold so many files and bytes at most; a larger file is alone."""
    names: list[str] = []
    size = 0
    for file in files:
        if names and (len(names) >= most_files or size + file.size > most_bytes):
            yield names
            names, size = [], 0
        names.append(file.name)
        size += file.size
    if names:
        yield names


def _matches(globs: list[str], name: str) -> bool:
    """As the program does: a pattern with a slash is for the whole path, another for the last part."""
    return any(_libc.fnmatch(os.fsencode(glob),
                             os.fsencode(name if "/" in glob else posixpath.basename(name)), 0) == 0 for glob in globs)
