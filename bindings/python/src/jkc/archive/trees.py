"""Trees of files: folders of this machine, and what fsspec reads and writes."""
from __future__ import annotations

import contextlib
import os
import posixpath
import stat
from typing import Any, NamedTuple, Union

TEMPORARY_PREFIX = ".jkc-"  # the program's, too
PIECE = 1 << 20  # bytes that are copied at once


class Entry(NamedTuple):
    """A file or a folder."""

    name: str  # its path below the tree
    is_folder: bool
    size: int  # in bytes


class LocalTree:
    """A folder of this machine. Names that are no UTF-8 are kept (surrogateescape)."""

    is_local = True

    def __init__(self, root: str) -> None:
        self.root = os.path.abspath(root)

    def path(self, name: str) -> str:
        return os.path.join(self.root, name)

    def has(self, name: str) -> bool:
        return os.path.isfile(self.path(name))

    def entries(self, folder: str) -> list[Entry]:
        """The files and folders in a folder, in the order of their names; no symbolic links, no devices."""
        found = []
        with os.scandir(self.path(folder)) as listing:
            for item in listing:
                try:
                    status = item.stat(follow_symlinks=False)
                except FileNotFoundError:
                    continue  # gone meanwhile
                is_folder = stat.S_ISDIR(status.st_mode)
                if is_folder or stat.S_ISREG(status.st_mode):
                    found.append(Entry(posixpath.join(folder, item.name), is_folder, status.st_size))
        return sorted(found, key=lambda entry: os.fsencode(entry.name))

    def put(self, path: str, name: str) -> None:
        """Copies a file to a place in the tree, where it is as a whole or not at all."""
        target = self.path(name)
        os.makedirs(os.path.dirname(target), exist_ok=True)
        copy = os.path.join(os.path.dirname(target), TEMPORARY_PREFIX + os.urandom(8).hex())
        try:
            with open(path, "rb") as source, open(copy, "xb") as file:  # not mkstemp: the umask gives the mode
                while piece := source.read(PIECE):
                    file.write(piece)
                file.flush()
                os.fsync(file.fileno())
            os.replace(copy, target)
        except BaseException:
            with contextlib.suppress(FileNotFoundError):
                os.unlink(copy)
            raise


class RemoteTree:
    """What fsspec opens. Whether a file that is being written can be seen is up to that file system."""

    is_local = False

    def __init__(self, files: Any, root: str) -> None:
        self.files = files
        self.root = root.rstrip("/")
        self._listed: tuple[str, set[str]] = ("", set())

    def path(self, name: str) -> str:
        return f"{self.root}/{name}" if self.root or self.files.root_marker else name

    def has(self, name: str) -> bool:
        """Asks once for the files of a folder, if it is asked for them one after the other."""
        folder = posixpath.dirname(name) + "/"
        if self._listed[0] != folder:
            try:
                self._listed = folder, {entry.name for entry in self.entries(folder[:-1]) if not entry.is_folder}
            except FileNotFoundError:
                self._listed = folder, set()
        return name in self._listed[1]

    def entries(self, folder: str) -> list[Entry]:
        here = self.path(folder).rstrip("/")
        found = {}
        for item in self.files.ls(here, detail=True):
            path = item["name"].rstrip("/")
            # A store of objects lists the folder itself, where it has an object of that name.
            if item["type"] in ("file", "directory") and not item.get("islink") and path.strip("/") != here.strip("/"):
                name = posixpath.join(folder, path.rpartition("/")[2])
                found[name] = Entry(name, item["type"] == "directory", item["size"] or 0)
        return [found[name] for name in sorted(found)]

    def get(self, name: str, path: str) -> None:
        """Copies a file of the tree to a path of this machine."""
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with self.files.open(self.path(name), "rb") as source, open(path, "wb") as copy:
            # Not read beyond its end, where that of a tar archive has the next file.
            left = getattr(source, "size", None)
            while piece := source.read(PIECE if left is None else min(PIECE, left)):
                copy.write(piece)
                left = None if left is None else left - len(piece)
            if left:
                raise OSError(f"it ends {left} bytes early")

    def put(self, path: str, name: str) -> None:
        target = self.path(name)
        self.files.makedirs(posixpath.dirname(target), exist_ok=True)
        self.files.put_file(path, target)


Tree = Union[LocalTree, RemoteTree]


def open_tree(url: str) -> Tree:
    """The tree that a path or a URL of fsspec names (``memory://a``, ``zip://::/tmp/a.zip``)."""
    if "://" not in url and "::" not in url:
        return LocalTree(url)
    try:
        from fsspec.core import url_to_fs
        from fsspec.implementations.local import LocalFileSystem
    except ImportError:
        raise ValueError("it needs the package fsspec") from None
    files, root = url_to_fs(url)
    return LocalTree(root) if isinstance(files, LocalFileSystem) else RemoteTree(files, root)
