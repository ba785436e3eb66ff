"""Files as streams of text: open()."""
from __future__ import annotations

import builtins
import io
import os
import tempfile
from typing import Any, Optional, Union

from . import encodings
from ._convert import codec_name, detected_encoding
from ._detect import PIECE, Detector, feed_file

Path = Union[str, "os.PathLike[str]", int]


def open(  # noqa: A001: it is what the built-in one is
    file: Path,
    mode: str = "r",
    encoding: Optional[str] = None,
    errors: Optional[str] = None,
    newline: Optional[str] = None,
) -> io.TextIOWrapper:
    """Opens a file of text in any encoding, as the built-in open() does.

    :param file: its path, or a file descriptor.
    :param mode: r, w, x or a, and + for both.
    :param encoding: its encoding. None: it is detected when the file is opened, in constant memory; a file that is made or
        emptied is UTF-8. `encoding` of the stream tells which it is.
    :param errors: the name of an error handler; None: strict.
    :param newline: as for the built-in open().
    :raises DetectionError: where the encoding cannot be told.
    :raises LookupError: for an encoding that does not exist.
    :raises OSError: where the file cannot be opened.
    """
    if "b" in mode:
        raise ValueError("binary mode: use the built-in open()")
    name = codec_name(encodings.lookup(encoding)) if encoding is not None else None
    plain_mode = mode.replace("t", "")
    if name is None and plain_mode.startswith("a"):
        name = _name_of_existing(file)
    binary: Any = builtins.open(file, plain_mode + "b")
    try:
        if name is None and plain_mode[:1] in ("w", "x"):
            name = "utf-8"
        elif name is None:
            if not binary.seekable():
                binary = _kept(binary)
            begin = binary.tell()
            name = _name_in(binary)
            binary.seek(begin)
        return io.TextIOWrapper(binary, encoding=name, errors=errors, newline=newline)
    except BaseException:
        binary.close()
        raise


def _name_in(binary: Any) -> str:
    """The codec for what is left of a file."""
    detector = Detector()
    feed_file(detector, binary)
    found = detected_encoding(detector.close())
    # What is 7-bit so far may become UTF-8 when it is written to.
    return "utf-8" if found.python == "ascii" else codec_name(found)


def _name_of_existing(file: Path) -> Optional[str]:
    """The codec for a file that is to grow; UTF-8 where there is none yet."""
    try:
        with builtins.open(file, "rb", closefd=not isinstance(file, int)) as binary:
            return _name_in(binary)
    except FileNotFoundError:
        return "utf-8"


def _kept(binary: Any) -> Any:
    """What comes through a pipe, kept in a file so that it can be read twice."""
    with binary:
        kept = tempfile.TemporaryFile()
        while piece := binary.read(PIECE):
            kept.write(piece)
    kept.seek(0)
    return kept
